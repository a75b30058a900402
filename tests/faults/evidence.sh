#!/usr/bin/env bash
# Lets allocations, writes and whole processes fail at every place, and prints a section on what came of it. A quick form of the same
# tests is among the ordinary ones. Builds in build/faults; fails when a test fails.
set -euo pipefail
cd "$(dirname "$0")/../.."

build=build/faults
rows=$PWD/$build/rows
{
  scripts/install-packages.sh build test
  cmake --preset dev -B "$build" -DZORBASE_EXAMPLES=OFF
  cmake --build "$build" --target fault_tests
  rm -f "$rows"
  ZORBASE_FAULTS=thorough ZORBASE_FAULT_REPORT=$rows "$build/tests/fault_tests"
} >&2

printf '## Faults\n\n`tests/faults/evidence.sh`: every allocation of a task fails, once alone and once with all behind it; the task is\n'
printf 'then done again on the same objects, and gives the same numbers. Writes fail where a file ends at a limit; processes end by\n'
printf 'such a write, or are killed while they save.\n\n'
printf 'Bad input: every entry that takes numbers gets NaN, both infinities, both zeros, denormal numbers, 1e154, whose square is near the\n'
printf 'largest double, and 1e308 and the largest double with either sign; every one that takes a count or an index gets 0, 1, -1, 46341,\n'
printf 'whose square overflows an int, 2^30 and the ends of int. Nothing at all: objects are asked before there is anything in them.\n\n'
printf '| what fails | times | outcome, every time |\n|---|--:|---|\n'
cat "$rows"
