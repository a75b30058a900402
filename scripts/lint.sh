#!/usr/bin/env bash
# Checks the form of all sources (clang-format), and the library for mistakes (clang-tidy). With --fix, formats the sources; with
# --form, only checks their form.
set -euo pipefail
cd "$(dirname "$0")/.."

[[ ${1:-} == --form ]] || scripts/install-packages.sh build lint
mapfile -t sources < <(find ZORBase tools tests examples bench -name '*.h' -o -name '*.cpp' -o -name '*.c')
if [[ ${1:-} == --fix ]]; then
  clang-format -i "${sources[@]}"
else
  clang-format --dry-run -Werror "${sources[@]}"
fi
[[ ${1:-} != --form ]] || exit 0

cmake --preset clang -B build/lint -DZORBASE_TESTS=OFF -DZORBASE_EXAMPLES=OFF -DZORBASE_TOOLS=OFF >/dev/null
find ZORBase -name '*.cpp' -print0 | xargs -0 -n 2 -P "$(nproc)" clang-tidy -p build/lint --quiet 2>/dev/null
echo "No complaints"
