# Targets that read the sources or the test runs and write a report; each is there when its program is.

find_program(ZORBASE_DOXYGEN doxygen)
mark_as_advanced(ZORBASE_DOXYGEN)
if(ZORBASE_DOXYGEN)
  set(ZORBASE_DOCS_OUTPUT ${PROJECT_BINARY_DIR}/docs)
  configure_file(docs/Doxyfile.in ${ZORBASE_DOCS_OUTPUT}/Doxyfile @ONLY)
  add_custom_target(docs
    COMMAND ${ZORBASE_DOXYGEN} ${ZORBASE_DOCS_OUTPUT}/Doxyfile
    COMMAND ${CMAKE_COMMAND} -E echo "See ${ZORBASE_DOCS_OUTPUT}/html/index.html"
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)
  if(ZORBASE_TESTS)
    # It ends with an error for a declaration without words and for a link or piece of code that is not there.
    add_test(NAME docs/doxygen COMMAND ${ZORBASE_DOXYGEN} ${ZORBASE_DOCS_OUTPUT}/Doxyfile
      WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  endif()
endif()

find_program(ZORBASE_GCOVR gcovr)
mark_as_advanced(ZORBASE_GCOVR)
if(ZORBASE_COVERAGE AND ZORBASE_GCOVR)
  add_custom_target(coverage
    COMMAND ${ZORBASE_GCOVR} --root ${PROJECT_SOURCE_DIR} --filter ZORBase/ --filter tools/
      --exclude-throw-branches --exclude-unreachable-branches
      --html-details ${PROJECT_BINARY_DIR}/coverage.html --txt ${PROJECT_BINARY_DIR}
    COMMAND ${CMAKE_COMMAND} -E echo "See ${PROJECT_BINARY_DIR}/coverage.html"
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)
endif()

# What takes hours: every part of the evidence, each with builds of its own.
add_custom_target(evidence COMMAND scripts/evidence.sh WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} USES_TERMINAL VERBATIM)
