# Compares what LIBRARY exports, as NM lists it, with the file LIST; with UPDATE, writes that file instead. A line is a
# demangled name. Left out is what a compiler keeps or not, depending on how it optimises, because whoever uses it has it from
# the header: constants of classes, and weak constructors, destructors and assignments.
execute_process(COMMAND ${NM} --dynamic --defined-only --demangle ${LIBRARY}
  OUTPUT_VARIABLE symbols RESULT_VARIABLE status ERROR_VARIABLE trouble)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${NM} cannot read ${LIBRARY}: ${trouble}")
endif()
string(REPLACE "> >" ">>" symbols "${symbols}")
string(REPLACE "> >" ">>" symbols "${symbols}")
string(STRIP "${symbols}" symbols)
string(REPLACE "\n" ";" symbols "${symbols}")
list(FILTER symbols EXCLUDE REGEX "::k[A-Z][A-Za-z0-9]*$")
list(FILTER symbols EXCLUDE REGEX " W ZORBase::.*::(~?T[A-Z][A-Za-z0-9]*|operator=)\\(")
list(TRANSFORM symbols REPLACE "^[0-9a-f]+ [A-Za-z] " "")
list(REMOVE_DUPLICATES symbols)
list(SORT symbols)

if(UPDATE)
  list(JOIN symbols "\n" text)
  file(WRITE ${LIST} "${text}\n")
  return()
endif()
file(STRINGS ${LIST} listed)
set(added ${symbols})
list(REMOVE_ITEM added ${listed})
set(gone ${listed})
list(REMOVE_ITEM gone ${symbols})
if(added OR gone)
  list(JOIN added "\n  + " added)
  list(JOIN gone "\n  - " gone)
  message(FATAL_ERROR "The library does not export what ${LIST} lists (+ exported, not listed; - listed, not exported)"
    "\n  + ${added}\n  - ${gone}\nTo accept this, build the target update-exported-symbols and look at the difference.")
endif()
