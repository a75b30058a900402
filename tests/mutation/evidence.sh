#!/usr/bin/env bash
# Mutation: tries the mutants that have no result yet, and prints a section of the page. Takes hours; what was interrupted goes on.
set -euo pipefail
cd "$(dirname "$0")/../.."

nice -n 19 tests/mutation/mutation.py run >&2
printf '## Mutation\n\n    tests/mutation/evidence.sh\n\n'
tests/mutation/mutation.py report
