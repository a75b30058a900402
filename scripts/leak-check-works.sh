#!/usr/bin/env bash
# Succeeds where the leak check of the address sanitizer is possible: it stops its own program through ptrace, which a sandbox may
# forbid. The other checks need no permission.
set -euo pipefail

folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
echo 'int main() {}' >"$folder/probe.cpp"
clang++ -fsanitize=address "$folder/probe.cpp" -o "$folder/probe"
"$folder/probe" >/dev/null 2>&1
