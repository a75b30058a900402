#!/usr/bin/env bash
# Allocation: builds and runs the tests of this folder, and prints a section of the page.
set -euo pipefail
cd "$(dirname "$0")/../.."

readonly build=build/dev
{
  cmake --preset dev
  cmake --build "$build" --target allocation_tests
} >&2

properties=$(mktemp)
trap 'rm -f "$properties"' EXIT
status=0
"$build/tests/allocation_tests" --gtest_output="json:$properties" >&2 || status=10

property() { sed -n "s/.*\"$1\": \"\\{0,1\\}\\([0-9]*\\).*/\\1/p" "$properties" | head -n 1; }
cat <<PAGE
## No hidden allocation

The calls of a control loop, in C++ and in C, on objects that are built, each over 40 arguments. A counting operator new and
counting lock functions watch. What they count is tried on calls that do allocate and lock. A call that throws fails its test.

    tests/allocation/evidence.sh

| what | figure |
|---|---:|
| different evaluations of curves, tables, surfaces, transforms and blends | $(property evaluations) |
| different calls of filters that take samples | $(property samples) |
| tests that failed | $(property failures) |
PAGE
exit $status
