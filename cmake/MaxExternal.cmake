# velmo_add_external(TARGET CLASS SOURCES...): a plug-in for the host, named CLASS with the platform's suffix and put
# into the package's externals folder.

set(VELMO_PACKAGE_DIR ${PROJECT_BINARY_DIR}/package)

if(WIN32)
  set(VELMO_EXTERNAL_SUFFIX .mxe64)
elseif(APPLE)
  set(VELMO_EXTERNAL_SUFFIX .mxo)
else()
  set(VELMO_EXTERNAL_SUFFIX .mxl_${CMAKE_SYSTEM_PROCESSOR})
endif()

function(velmo_add_external target class)
  add_library(${target} MODULE ${ARGN})
  velmo_target(${target})
  target_link_libraries(${target} PRIVATE max_api)
  set_target_properties(${target} PROPERTIES
    PREFIX ""
    OUTPUT_NAME ${class}
    SUFFIX ${VELMO_EXTERNAL_SUFFIX}
    LIBRARY_OUTPUT_DIRECTORY ${VELMO_PACKAGE_DIR}/externals)
endfunction()
