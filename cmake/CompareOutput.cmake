# Runs PROGRAM with its one ARGUMENT; fails unless it ends well and prints the text of the file EXPECTED.
execute_process(COMMAND ${PROGRAM} ${ARGUMENT} RESULT_VARIABLE status OUTPUT_VARIABLE printed ERROR_VARIABLE errors)
file(READ ${EXPECTED} expected)
if(NOT status STREQUAL "0")
  message(FATAL_ERROR "${PROGRAM} ended with ${status}\n${printed}${errors}")
endif()
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "${PROGRAM} printed\n${printed}\nand not, as in ${EXPECTED},\n${expected}")
endif()
