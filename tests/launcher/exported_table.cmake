# Checks that PROGRAM defines the message table as a global data symbol, among its symbols and among
# those that it exports.
set(symbol "_uquarndiffmrg_uquarndiffmrg_msg_table")
foreach(options IN ITEMS "" "-D")
  execute_process(COMMAND ${NM} ${options} ${PROGRAM}
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
  if(NOT symbols MATCHES "[0-9a-f]+ [BDR] ${symbol}\n")
    message(FATAL_ERROR "nm ${options}: ${symbol} is not defined in ${PROGRAM}")
  endif()
endforeach()
