#!/usr/bin/env bash
# Builds everything with g++ and again with clang++ under the address and undefined-behaviour sanitizers, and passes all tests in
# both; warnings are errors. Enough by itself on a fresh Debian 12.
# With arguments, all tests in the presets named instead: scripts/test.sh clang tsan
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh build plot test docs
export CXX=g++
printf '\n=== form of the sources\n'
scripts/lint.sh --form
if command -v clang-tidy >/dev/null; then
  printf '\n=== mistakes in the library\n'
  scripts/lint.sh --library
else
  echo "clang-tidy is not installed; scripts/lint.sh installs it and looks for mistakes with it."
fi

presets=("$@")
[[ $# -gt 0 ]] || presets=(dev asan-ubsan)
for preset in "${presets[@]}"; do
  printf '\n=== %s\n' "$preset"
  if [[ $preset == asan-ubsan ]] && ! scripts/leak-check-works.sh; then
    echo "The leak check is not possible here; the sanitizers run without it."
    export ASAN_OPTIONS=detect_leaks=0
  fi
  cmake --workflow --preset "$preset"
done
