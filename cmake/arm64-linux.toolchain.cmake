# Cross-compiles for 64-bit ARM under Linux, and runs what is built under an emulator of that processor.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(prefix aarch64-linux-gnu)
find_program(CMAKE_C_COMPILER NAMES ${prefix}-gcc REQUIRED)
find_program(CMAKE_CXX_COMPILER NAMES ${prefix}-g++ REQUIRED)

set(CMAKE_FIND_ROOT_PATH /usr/${prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(QEMU NAMES qemu-aarch64 qemu-aarch64-static)
mark_as_advanced(QEMU)
if(QEMU)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${QEMU} -L ${CMAKE_FIND_ROOT_PATH})
endif()
