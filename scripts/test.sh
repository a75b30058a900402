#!/usr/bin/env bash
# Builds the library, the command and the examples with clang++, then builds everything with g++ and passes all tests, warnings
# being errors in both. Enough by itself on a fresh Debian 12.
# With arguments, all tests in the presets named instead: scripts/test.sh clang asan-ubsan
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh build plot test
export CXX=g++

# The leak check stops its own program through ptrace, which a sandbox may forbid; the other checks need no permission.
leak_check_works() {
  local folder status=0
  folder=$(mktemp -d)
  echo 'int main() {}' >"$folder/probe.cpp"
  g++ -fsanitize=address "$folder/probe.cpp" -o "$folder/probe"
  "$folder/probe" >/dev/null 2>&1 || status=$?
  rm -r "$folder"
  return $status
}

presets=("$@")
if [[ $# -eq 0 ]]; then
  printf '\n=== clang, without the tests\n'
  cmake --preset clang -B build/clang-library -DZORBASE_TESTS=OFF
  cmake --build build/clang-library
  presets=(dev)
fi
for preset in "${presets[@]}"; do
  printf '\n=== %s\n' "$preset"
  if [[ $preset == asan-ubsan ]] && ! leak_check_works; then
    echo "The leak check is not possible here; the sanitizers run without it."
    export ASAN_OPTIONS=detect_leaks=0
  fi
  cmake --workflow --preset "$preset"
done
