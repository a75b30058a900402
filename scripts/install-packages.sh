#!/usr/bin/env bash
# Installs the Debian packages of the groups named; asks apt only for those that are missing, so that it works offline when
# everything is there.
#   build     what the library, the zor command and the examples are built with
#   plot      what zor draws pictures with
#   test      the second compiler, test frameworks, and locales with a decimal comma
#   lint, bench, docs, coverage   what scripts/lint.sh and the targets of these names use
#   evidence  what scripts/evidence.sh needs besides
#   packages  what scripts/test-packages.sh builds and tries Debian packages with
set -euo pipefail

declare -A packages=(
  [build]="g++ cmake ninja-build libcli11-dev libfmt-dev nlohmann-json3-dev"
  [plot]="gnuplot-nox"
  [test]="clang clang-format libclang-rt-dev libgtest-dev libgmock-dev librapidcheck-dev libeigen3-dev locales-all pkgconf groff-base fp-compiler"
  [lint]="clang clang-format clang-tidy"
  [bench]="libbenchmark-dev libeigen3-dev nlohmann-json3-dev libsisl-dev libgsl-dev python3-scipy libfftw3-dev libkissfft-dev libliquid-dev libglm-dev libopenblas-dev liblapacke-dev"
  [docs]="doxygen"
  [packages]="dpkg-dev file man-db pkgconf"
  [evidence]="qemu-user python3-mpmath"
  [coverage]="gcovr"
)

is_installed() { [[ $(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]; }

missing=()
for group in "$@"; do
  if [[ -z ${packages[$group]:-} ]]; then
    echo "install-packages.sh: no group '$group'; there are: ${!packages[*]}" >&2
    exit 2
  fi
  for package in ${packages[$group]}; do
    is_installed "$package" || missing+=("$package")
  done
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

if ! command -v apt-get >/dev/null; then
  echo "install-packages.sh: no apt-get here. Install what these Debian packages hold and build with cmake: ${missing[*]}" >&2
  exit 1
fi
as_root=()
[[ $(id -u) -eq 0 ]] || as_root=(sudo)
echo "Installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq </dev/null
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -qq --no-install-recommends "${missing[@]}" </dev/null >/dev/null
