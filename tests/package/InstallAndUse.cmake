# Installs the build tree BUILD below SCRATCH; builds the project beside this file against it with COMPILER and FLAGS, and runs it.
file(REMOVE_RECURSE ${SCRATCH})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status STREQUAL "0")
    message(FATAL_ERROR "${ARGN} ended with ${status}\n${output}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/installed)
run(${CMAKE_COMMAND} -G ${GENERATOR} -S ${CMAKE_CURRENT_LIST_DIR} -B ${SCRATCH}/build
  -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS} -DCMAKE_PREFIX_PATH=${SCRATCH}/installed)
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
run(${SCRATCH}/build/uses_zorbase)
