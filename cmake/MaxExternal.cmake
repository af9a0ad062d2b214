# velmo_add_external(TARGET CLASS SOURCES...): a plug-in for the host, named CLASS with the platform's suffix and put
# into the externals of package/ in the build folder of the project that calls it, which may be another one than this.
# It exports its entry points and nothing else, so that no copy of a library in it meets another plug-in's or the
# host's.

set(VELMO_PACKAGE_DIR ${PROJECT_BINARY_DIR}/package)

if(WIN32)
  set(suffix .mxe64)
elseif(APPLE)
  set(suffix .mxo)
else()
  set(suffix .mxl_${CMAKE_SYSTEM_PROCESSOR})
endif()
set(VELMO_EXTERNAL_SUFFIX ${suffix} CACHE INTERNAL "What the names of plug-in files end in")

function(velmo_add_external target class)
  add_library(${target} MODULE ${ARGN})
  velmo_target(${target})
  target_link_libraries(${target} PRIVATE max_api)
  set_target_properties(${target} PROPERTIES
    PREFIX ""
    OUTPUT_NAME ${class}
    SUFFIX ${VELMO_EXTERNAL_SUFFIX}
    LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/package/externals)
  if(APPLE)
    velmo_make_bundle(${target} ${class})
  elseif(WIN32)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/external_dll_main.cpp)
  else()
    set(exports ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/external_exports.map)
    target_link_options(${target} PRIVATE -Wl,--version-script=${exports})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${exports})
    # What the object itself calls, posting from the audio thread above all, is found when the plug-in is loaded. What
    # the toolkit calls is found when it is needed, so that a host may lack some of it.
    target_compile_options(${target} PRIVATE -fno-plt)
  endif()
endfunction()

# macOS: a bundle folder with the property list and the type file that the host looks for.
function(velmo_make_bundle target class)
  set(VELMO_EXTERNAL_CLASS ${class})
  string(REGEX REPLACE "[^A-Za-z0-9.-]" "" VELMO_EXTERNAL_IDENTIFIER "org.velmodsp.${class}")
  set(properties ${CMAKE_CURRENT_BINARY_DIR}/${target}.plist)
  configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/Info.plist.in ${properties} @ONLY)
  set_target_properties(${target} PROPERTIES
    BUNDLE ON
    BUNDLE_EXTENSION mxo
    MACOSX_BUNDLE_INFO_PLIST ${properties})
  target_link_options(${target} PRIVATE -Wl,-exported_symbol,_main -Wl,-exported_symbol,_ext_main)
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/PkgInfo "iLaX????")
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy_if_different
            ${CMAKE_CURRENT_BINARY_DIR}/PkgInfo "$<TARGET_BUNDLE_CONTENT_DIR:${target}>/PkgInfo"
    COMMAND codesign --force --sign - "$<TARGET_BUNDLE_DIR:${target}>"
    VERBATIM)
endfunction()
