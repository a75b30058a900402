# Fails when LIBRARY contains a fused multiply-add, as OBJDUMP disassembles it. Some compilers form one even with
# -ffp-contract=off where the target has it, and then results differ from machine to machine.
execute_process(COMMAND ${OBJDUMP} -d --no-show-raw-insn ${LIBRARY}
  OUTPUT_VARIABLE code RESULT_VARIABLE status ERROR_VARIABLE trouble)
if(NOT status EQUAL 0 OR NOT code MATCHES "\tret")
  message(FATAL_ERROR "${OBJDUMP} cannot read ${LIBRARY}: ${trouble}")
endif()
if(code MATCHES "\t(vfn?m(add|sub)[0-9a-z]*[^\n]*)")
  message(FATAL_ERROR "${LIBRARY} contains ${CMAKE_MATCH_1}")
endif()
