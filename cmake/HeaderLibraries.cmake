# velmo_find_header_library(PACKAGE TARGET FOLDER): finds a library that is headers alone, as the imported target TARGET.
# FOLDER is what its users include from.
#
# Such a library serves every system, but it lies among the headers of the system that builds, which a cross-compiler
# must not see. So a cross-build includes it through a folder that has nothing else.

macro(velmo_find_header_library package target folder)
  if(NOT CMAKE_CROSSCOMPILING)
    find_package(${package} REQUIRED)
  elseif(NOT TARGET ${target})
    find_path(VELMO_${package}_PARENT ${folder} PATHS /usr/include /usr/local/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    mark_as_advanced(VELMO_${package}_PARENT)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/include)
    file(CREATE_LINK ${VELMO_${package}_PARENT}/${folder} ${PROJECT_BINARY_DIR}/include/${folder} SYMBOLIC)
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/include)
  endif()
endmacro()
