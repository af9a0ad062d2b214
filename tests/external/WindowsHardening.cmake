# Checks what hardens a program or library for Windows: cmake -D OBJDUMP=... -D FILE=... -P WindowsHardening.cmake
#
# It can be loaded anywhere in 64 bits of addresses, executes no data, and notices when a return address was written over.

cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${OBJDUMP} -p ${FILE} OUTPUT_VARIABLE description COMMAND_ERROR_IS_FATAL ANY)
foreach(characteristic IN ITEMS HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT)
  if(NOT description MATCHES "\t${characteristic}[\r\n]")
    message(SEND_ERROR "${FILE} lacks ${characteristic}")
  endif()
endforeach()

execute_process(COMMAND ${OBJDUMP} -h ${FILE} OUTPUT_VARIABLE sections COMMAND_ERROR_IS_FATAL ANY)
if(NOT sections MATCHES " \\.reloc ")
  message(SEND_ERROR "${FILE} has no relocations: it cannot be loaded anywhere")
endif()

# Functions that have nothing on the stack to guard are all that the host's two libraries are made of.
if(NOT FILE MATCHES "/Max(API|Audio)\\.dll$")
  execute_process(COMMAND ${OBJDUMP} -t ${FILE} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
  if(NOT symbols MATCHES " __stack_chk_fail[\r\n]")
    message(SEND_ERROR "${FILE} does not guard its stack")
  endif()
endif()
