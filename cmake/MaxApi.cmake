# `max_api`: the host's API as the plug-in and the toolkit see it. By default the headers of host/include; with
# MAX_SDK_BASE_DIR the public SDK's own, as system headers so that their warnings stay theirs.

add_library(max_api INTERFACE)

if(MAX_SDK_BASE_DIR)
  set(support ${MAX_SDK_BASE_DIR}/c74support)
  if(NOT EXISTS ${support}/max-includes/ext.h OR NOT EXISTS ${support}/msp-includes/z_dsp.h)
    message(FATAL_ERROR "MAX_SDK_BASE_DIR has no c74support/max-includes and c74support/msp-includes: ${MAX_SDK_BASE_DIR}")
  endif()
  target_include_directories(max_api SYSTEM INTERFACE ${support}/max-includes ${support}/msp-includes)
  message(STATUS "Host API: the SDK in ${MAX_SDK_BASE_DIR}")
else()
  target_include_directories(max_api INTERFACE ${PROJECT_SOURCE_DIR}/host/include)
  message(STATUS "Host API: the headers of host/include")
endif()

# How a plug-in finds the host's functions. Linux: left undefined, the loading program has them. macOS: looked up in
# the host at load time. Windows: import libraries, the SDK's or our own from the host's lists of exported names.
if(WIN32)
  target_compile_definitions(max_api INTERFACE WIN_VERSION)
  if(MAX_SDK_BASE_DIR)
    target_link_libraries(max_api INTERFACE ${support}/max-includes/x64/MaxAPI.lib ${support}/msp-includes/x64/MaxAudio.lib)
  else()
    foreach(library MaxAPI MaxAudio)
      set(import_library ${PROJECT_BINARY_DIR}/lib${library}.dll.a)
      add_custom_command(
        OUTPUT ${import_library}
        COMMAND ${CMAKE_DLLTOOL} --input-def ${PROJECT_SOURCE_DIR}/host/exports/${library}.def --output-lib ${import_library}
        DEPENDS ${PROJECT_SOURCE_DIR}/host/exports/${library}.def
        COMMENT "Making the import library of ${library}")
      add_custom_target(${library}_import DEPENDS ${import_library})
      add_dependencies(max_api ${library}_import)
      target_link_libraries(max_api INTERFACE ${import_library})
    endforeach()
  endif()
elseif(APPLE)
  target_link_options(max_api INTERFACE -undefined dynamic_lookup)
endif()
