# `velmo_hardening`: what makes faults harder to exploit, as an interface target that every target of the project gets with
# `velmo_settings`. What the binaries have of it is tested (tests/external/HardeningTest.cpp, WindowsHardening.cmake).

add_library(velmo_hardening INTERFACE)

# A return address that was written over ends the program. At the link, too: mingw's run-time for it is a library.
target_compile_options(velmo_hardening INTERFACE -fstack-protector-strong)
target_link_options(velmo_hardening INTERFACE -fstack-protector-strong)

# Functions of the C library are told the sizes of what they write to. Sanitizers watch over those functions themselves,
# and without optimisation no size is known. Level 3 takes sizes that are computed; g++ knows it since version 12.
set(level 3)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 12)
  set(level 2)
endif()
if(NOT VELMO_SANITIZE)
  set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  target_compile_options(velmo_hardening INTERFACE
    $<${optimised}:-U_FORTIFY_SOURCE> $<${optimised}:-D_FORTIFY_SOURCE=${level}>)
endif()

if(CMAKE_SYSTEM_NAME STREQUAL Linux)
  # Big frames touch their stack page by page, so that none of them steps over the guard page. Jumps through pointers
  # land where functions begin.
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL x86_64)
    target_compile_options(velmo_hardening INTERFACE -fstack-clash-protection -fcf-protection)
  elseif(CMAKE_SYSTEM_PROCESSOR STREQUAL aarch64)
    target_compile_options(velmo_hardening INTERFACE
      $<$<CXX_COMPILER_ID:GNU>:-fstack-clash-protection> -mbranch-protection=standard)
  endif()
  # The tables of addresses cannot be written to once the loader has filled them in; see velmo_bind_at_load.
  target_link_options(velmo_hardening INTERFACE -Wl,-z,relro -Wl,-z,noexecstack)
elseif(MINGW)
  # Loaded anywhere in 64 bits of addresses; no data is executed.
  target_link_options(velmo_hardening INTERFACE -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat)
endif()

# Programs are loaded anywhere, as libraries are.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# Has every function of others that `target` calls looked up when it is loaded, as Windows and macOS do anyway. Then all
# tables of addresses are read-only from there on, and no thread ever waits for a look-up.
function(velmo_bind_at_load target)
  if(CMAKE_SYSTEM_NAME STREQUAL Linux)
    target_link_options(${target} PRIVATE -Wl,-z,now)
  endif()
endfunction()
