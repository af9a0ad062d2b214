# MaxAPI.dll and MaxAudio.dll, with the exports that host/exports lists, and the programs behind them.

# velmo_read_exports(RESULT LIBRARY): the functions of the host that LIBRARY exports. Entries marked PRIVATE are the
# library's own.
function(velmo_read_exports result library)
  set(list ${PROJECT_SOURCE_DIR}/host/exports/${library}.def)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
  file(STRINGS ${list} names REGEX "^ +[A-Za-z0-9_]+$")
  list(TRANSFORM names STRIP)
  set(${result} ${names} PARENT_SCOPE)
endfunction()

set(all_functions "")
foreach(library MaxAPI MaxAudio)
  velmo_read_exports(functions ${library})
  list(APPEND all_functions ${functions})
  list(TRANSFORM functions REPLACE "(.+)" "FUNCTION(\\1)\n")
  list(JOIN functions "" functions)
  file(CONFIGURE OUTPUT ${library}.inc CONTENT "${functions}" @ONLY)

  add_library(${library} SHARED windows/ApiLibrary.cpp ../host/exports/${library}.def)
  velmo_target(${library})
  target_compile_definitions(${library} PRIVATE VELMOHOST_FUNCTIONS="${CMAKE_CURRENT_BINARY_DIR}/${library}.inc")
  set_target_properties(${library} PROPERTIES PREFIX "" RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
endforeach()
list(JOIN all_functions "\n    " all_functions)
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/host/program.def CONTENT "EXPORTS\n    ${all_functions}\n" @ONLY)

# Lets `target`, a program that embeds the host, export its functions to the two libraries, and puts it beside them,
# where Windows looks for them when a plug-in is loaded.
function(velmo_use_host_libraries target)
  target_sources(${target} PRIVATE ${PROJECT_BINARY_DIR}/host/program.def)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
  add_dependencies(${target} MaxAPI MaxAudio)
endfunction()
