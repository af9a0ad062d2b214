# Cross-compiles for 64-bit Windows with mingw-w64.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# The variant with POSIX threads: the other one's library has no std::thread.
set(prefix x86_64-w64-mingw32)
find_program(CMAKE_C_COMPILER NAMES ${prefix}-gcc-posix ${prefix}-gcc REQUIRED)
find_program(CMAKE_CXX_COMPILER NAMES ${prefix}-g++-posix ${prefix}-g++ REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${prefix}-windres)
find_program(CMAKE_DLLTOOL NAMES ${prefix}-dlltool REQUIRED)

set(CMAKE_FIND_ROOT_PATH /usr/${prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Runs what is built, where wine is installed: in a Windows of its own, which the build folder keeps, trash included.
# The program is named directly because the system's script for it talks on standard error. Files have names of any
# character only in a locale that has all of them.
find_program(WINE NAMES wine64 wine PATHS /usr/lib/wine)
mark_as_advanced(WINE)
if(WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR
    ${CMAKE_COMMAND} -E env LC_ALL=C.UTF-8 WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml,winemenubuilder.exe=
    WINEPREFIX=${CMAKE_BINARY_DIR}/wine XDG_DATA_HOME=${CMAKE_BINARY_DIR}/wine ${WINE})
endif()
