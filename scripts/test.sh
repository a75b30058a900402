#!/usr/bin/env bash
# Builds everything and passes all tests: with clang++, with g++ under the address and undefined-behaviour sanitizers, and
# with g++ as it is used every day, warnings being errors in all three. Enough by itself on a fresh Debian 12.
# With arguments, only the presets named: scripts/test.sh dev
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
[[ $# -gt 0 ]] || presets=(clang asan-ubsan dev)
for preset in "${presets[@]}"; do
  printf '\n=== %s\n' "$preset"
  if [[ $preset == asan-ubsan ]] && ! leak_check_works; then
    echo "The leak check is not possible here; the sanitizers run without it."
    export ASAN_OPTIONS=detect_leaks=0
  fi
  cmake --workflow --preset "$preset"
done
