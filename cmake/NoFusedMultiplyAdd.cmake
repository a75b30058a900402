# Fails when LIBRARY contains a fused multiply-add, as OBJDUMP disassembles it, but for those written by hand in functions that
# are called Fused, where they give the error of a product. Some compilers form one even with -ffp-contract=off where the target
# has it, and then results differ from machine to machine.
execute_process(COMMAND ${OBJDUMP} -d --no-show-raw-insn ${LIBRARY}
  OUTPUT_VARIABLE code RESULT_VARIABLE status ERROR_VARIABLE trouble)
if(NOT status EQUAL 0 OR NOT code MATCHES "\tret")
  message(FATAL_ERROR "${OBJDUMP} cannot read ${LIBRARY}: ${trouble}")
endif()
string(REGEX MATCHALL "\n[0-9a-f]+ <[^\n]*>:|\tvfn?m(add|sub)[0-9a-z]*" finds "${code}")
foreach(find IN LISTS finds)
  if(find MATCHES "<(.*)>:")
    set(function ${CMAKE_MATCH_1})
  elseif(NOT (function MATCHES "Fused" AND find MATCHES "\tvfnmadd231pd"))
    string(STRIP "${find}" find)
    message(FATAL_ERROR "${LIBRARY} contains ${find} in ${function}")
  endif()
endforeach()
