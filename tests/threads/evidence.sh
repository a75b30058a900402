#!/usr/bin/env bash
# Threads: builds the tests of this folder with the thread sanitizer, runs them many times, and prints a section of the page.
set -euo pipefail
cd "$(dirname "$0")/../.."

readonly build=build/tsan repetitions=5
{
  cmake --preset tsan
  cmake --build "$build" --target thread_tests
} >&2

log=$(mktemp)
properties=$log.json
trap 'rm -f "$log" "$properties"' EXIT
status=0
"$build/tests/thread_tests" --gtest_output="json:$properties" >&2 || status=10
TSAN_OPTIONS="halt_on_error=0 exitcode=66" "$build/tests/thread_tests" --gtest_repeat=$repetitions --gtest_shuffle >"$log" 2>&1 || status=10
tail -n 40 "$log" >&2

count() { grep -c "$1" "$log" || true; }
cat <<PAGE
## Threads

Evaluations of shared objects, services on shared arguments, filters of each thread's own and the C interface, on eight threads
that begin at the same time: every result equals that of one thread bit for bit, and the thread sanitizer watches.

    tests/threads/evidence.sh

| what | figure |
|---|---:|
| different calls on shared objects | $(sed -n 's/.*"calls": "\([0-9]*\)".*/\1/p' "$properties") |
| tests passed, $repetitions repetitions in random order | $(count '^\[       OK \]') |
| tests failed | $(count '^\[  FAILED  \] .*ms)$') |
| reports of the thread sanitizer | $(count '^WARNING: ThreadSanitizer') |
PAGE
exit $status
