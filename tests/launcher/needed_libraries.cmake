# Checks that PROGRAM needs the C library, and the loader that comes with it, alone.
execute_process(COMMAND ${OBJDUMP} -p ${PROGRAM}
  OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "NEEDED +[^\n]+" needed "${headers}")
list(TRANSFORM needed REPLACE "NEEDED +" "")
list(FILTER needed EXCLUDE REGEX "^ld-linux")
if(NOT needed STREQUAL "libc.so.6")
  message(FATAL_ERROR "${PROGRAM} needs: ${needed}")
endif()
