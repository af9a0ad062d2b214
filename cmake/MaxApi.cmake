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

if(WIN32)
  target_compile_definitions(max_api INTERFACE WIN_VERSION)
endif()
