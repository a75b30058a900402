# What can be chosen when this project is built for its own sake.
option(BUILD_SHARED_LIBS "Build ZORBase as a shared library" ON)
option(ZORBASE_TOOLS "Build the zor command" ON)
option(ZORBASE_TESTS "Build the tests" ON)
option(ZORBASE_UNITY_TESTS "Compile the tests of a folder in one go, which takes a fifth of the time" ON)
option(ZORBASE_EXAMPLES "Build the examples" ON)
option(ZORBASE_BENCH "Build the benchmarks" OFF)
option(ZORBASE_WERROR "Treat warnings as errors" OFF)
option(ZORBASE_COVERAGE "Count which lines run" OFF)
set(ZORBASE_SANITIZE "" CACHE STRING "Sanitizers for everything, e.g. address,undefined")

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()
