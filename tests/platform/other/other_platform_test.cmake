# Builds the launcher with LIBRARY in place of the open platform library, in FOLDER, and checks that
# a rejected command line is told through that library.
file(REMOVE_RECURSE ${FOLDER})
execute_process(
  COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${FOLDER}/build -G ${GENERATOR} ${OPTIONS}
          -DQUARNFOLD_PLATFORM_LIBRARIES=${LIBRARY}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(
  COMMAND ${CMAKE_COMMAND} --build ${FOLDER}/build --target uquarndiffmrg -j1
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
if(result)
  message(FATAL_ERROR "the build failed:\n${output}")
endif()

file(MAKE_DIRECTORY ${FOLDER}/scratch)
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env --unset=TOLM_SERVICE_LOG OTHER_PLATFORM_FOLDER=${FOLDER}/scratch
          ${FOLDER}/build/product/bin/uquarndiffmrg
  OUTPUT_VARIABLE output ERROR_VARIABLE error RESULT_VARIABLE status)

string(CONCAT expected
  "other ks_system_init\n"
  "uquarndiffmrg: other 6 qlx_5: At least two objects must be supplied to compare.\n"
  "uquarndiffmrg: other 6 qlx_1: Usage: uquarndiffmrg ")
string(FIND "${error}" "${expected}" position)
if(NOT position EQUAL 0)
  message(FATAL_ERROR "standard error:\n${error}")
endif()
if(NOT output STREQUAL "" OR NOT status EQUAL 255)
  message(FATAL_ERROR "status ${status}, standard output:\n${output}")
endif()
if(NOT IS_DIRECTORY ${FOLDER}/scratch/other_user.uquarndiffmrg)
  message(FATAL_ERROR "the other library's temporary directory was not used")
endif()
file(REMOVE_RECURSE ${FOLDER})
