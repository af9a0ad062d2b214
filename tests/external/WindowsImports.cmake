# Checks a plug-in for Windows: cmake -D OBJDUMP=... -D PLUGIN=FILE -P WindowsImports.cmake
#
# It may import from the host's two libraries and from what every Windows has. A run-time library of the compiler would
# not be found on users' machines, and the plug-in would not load.

cmake_minimum_required(VERSION 3.25)

set(allowed "^(MaxAPI|MaxAudio|KERNEL32|msvcrt|ADVAPI32|SHELL32|USER32|ole32)\\.dll$")
set(expected_exports ext_main main)

execute_process(COMMAND ${OBJDUMP} -p ${PLUGIN} OUTPUT_VARIABLE description COMMAND_ERROR_IS_FATAL ANY)

string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${description}")
list(TRANSFORM imports REPLACE "DLL Name: " "")
foreach(library IN ITEMS MaxAPI.dll MaxAudio.dll)
  if(NOT library IN_LIST imports)
    message(SEND_ERROR "${PLUGIN} does not import ${library}")
  endif()
endforeach()
list(FILTER imports EXCLUDE REGEX "${allowed}")
if(imports)
  message(SEND_ERROR "${PLUGIN} imports what users may not have: ${imports}")
endif()

string(REGEX REPLACE ".*\\[Ordinal/Name Pointer\\] Table\n" "" exports "${description}")
string(REGEX MATCHALL "\t\\[ *[0-9]+\\] [^\n]+" exports "${exports}")
list(TRANSFORM exports REPLACE ".*\\] " "")
if(NOT exports STREQUAL expected_exports)
  message(SEND_ERROR "${PLUGIN} exports ${exports}, not its entry points alone")
endif()
