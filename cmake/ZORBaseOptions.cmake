# What can be chosen when this project is built for its own sake.
option(BUILD_SHARED_LIBS "Build ZORBase as a shared library" ON)
option(ZORBASE_TOOLS "Build the zor command" ON)
option(ZORBASE_TESTS "Build the tests" ON)
option(ZORBASE_UNITY "Compile the sources of a folder in one go where it saves time: of the tests, and of the zor command" ON)
option(ZORBASE_EXAMPLES "Build the examples" ON)
option(ZORBASE_BENCH "Build the benchmarks" OFF)
option(ZORBASE_FUZZ "Build the fuzz targets, which takes clang++ and its libFuzzer" OFF)
option(ZORBASE_WERROR "Treat warnings as errors" OFF)
option(ZORBASE_COVERAGE "Count which lines run" OFF)
set(ZORBASE_TARGET "" CACHE STRING
  "The one instruction set of the kernels, baseline or avx2, to compare them; empty: chosen when a program starts")
set_property(CACHE ZORBASE_TARGET PROPERTY STRINGS "" baseline avx2)
set(ZORBASE_SANITIZE "" CACHE STRING "Sanitizers for everything, e.g. address,undefined")

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()
