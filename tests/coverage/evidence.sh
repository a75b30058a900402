#!/usr/bin/env bash
# Coverage: builds the library and its tests so that they count which lines and branches run, runs them, and prints a section of
# the page. Ends with 10 for a line or branch that no test takes and left-out.txt does not explain, and below 95 % of the branches.
set -euo pipefail
cd "$(dirname "$0")/../.."

readonly build=build/coverage-of-library
programs=(common_tests geometry_tests algorithm_tests capi_tests fault_tests thread_tests allocation_tests)
{
  # NDEBUG: in release builds the tests try their longest inputs, too.
  cmake --preset coverage -B "$build" -D ZORBASE_TOOLS=OFF -D ZORBASE_EXAMPLES=OFF -D CMAKE_CXX_FLAGS_DEBUG="-O0 -g1 -DNDEBUG"
  cmake --build "$build" --target "${programs[@]}"
  find "$build" -name '*.gcda' -delete
  # Code that counts is slow; the one test that looks at the clock has no place here.
  for program in "${programs[@]}"; do "$build/tests/$program" --gtest_brief=1 --gtest_filter=-*WithinASecond*; done
} >&2

tests/coverage/report.py "$build"
