#!/usr/bin/env bash
# Builds the Debian packages, installs them, uses them as a stranger would, and removes them again. It changes the system, so it
# needs root, and it refuses to begin where the packages are installed already.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build/packages
names=(libzorbase libzorbase-dev zorbase-tools zorbase-doc)

fail() {
  echo "test-packages.sh: $*" >&2
  exit 1
}
[[ $(id -u) -eq 0 ]] || fail "installing packages needs root"
for name in "${names[@]}"; do
  ! dpkg-query -W "$name" >/dev/null 2>&1 || fail "$name is installed already; remove it first"
done

scripts/install-packages.sh build docs packages
cmake --preset packages >/dev/null
cmake --build --preset packages
cmake --build --preset packages-docs
rm -rf "$build"/*.deb
(cd "$build" && cpack)

remove() { DEBIAN_FRONTEND=noninteractive apt-get purge -qq "${names[@]}" </dev/null >/dev/null; }
trap remove EXIT
DEBIAN_FRONTEND=noninteractive apt-get install -qq --no-install-recommends "$PWD/$build"/*.deb </dev/null >/dev/null
for name in "${names[@]}"; do
  printf '\n=== %s\n' "$name"
  dpkg-query -W -f='${Version} ${Architecture} ${Section}\nDepends: ${Depends}\n${Description}\n' "$name"
  [[ -s /usr/share/doc/$name/copyright ]] || fail "$name has no copyright file"
done

# A scratch folder outside of the repository, so that nothing but the packages is found.
scratch=$(mktemp -d)
trap 'remove; rm -r "$scratch"' EXIT
use=$PWD/tests/package
path=$PWD/data/e387.100mm.poses.txt
expected=15.000,0.000,0.000,0.000,0.000,1.000
cd "$scratch"
printf '0,0,0,0,0,1\n10,0,0,0,0,1\n20,0,0,0,0,1\n30,0,0,0,0,1\n' >part.txt

printf '\n=== find_package\n'
cmake -S "$use" -B cmake -G Ninja -DSHARED=ON >/dev/null
cmake --build cmake
for kind in shared static any; do
  [[ $("cmake/$kind/uses_$kind") == "$expected" ]] || fail "cmake/$kind/uses_$kind prints something else"
done

printf '\n=== pkg-config\n'
pkg-config --modversion zorbase
# shellcheck disable=SC2046  # the options are words
c++ -std=c++20 "$use/main.cpp" $(pkg-config --cflags --libs zorbase) -o with-pkg-config
[[ $(./with-pkg-config) == "$expected" ]] || fail "with-pkg-config prints something else"
# shellcheck disable=SC2046
c++ -std=c++20 "$use/main.cpp" -static $(pkg-config --static --cflags --libs zorbase) -o without-any-library
[[ $(./without-any-library) == "$expected" ]] || fail "without-any-library prints something else"

printf '\n=== zor\n'
zor resample "$path" --step 1 -o even.txt
zor info even.txt
man --warnings -l /usr/share/man/man1/zor.1.gz >/dev/null 2>warnings.txt
[[ ! -s warnings.txt ]] || fail "man complains: $(<warnings.txt)"
[[ -s /usr/share/doc/zorbase-doc/html/index.html ]] || fail "zorbase-doc holds no reference"

printf '\n=== removing\n'
remove
trap 'rm -r "$scratch"' EXIT
for name in "${names[@]}"; do
  ! dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null | grep -qx installed || fail "$name is still installed"
done
left=$(find /usr -iname '*zorbase*' -not -path "*/src/*" 2>/dev/null)
[[ -z $left ]] || fail "files are left: $left"
echo "All packages can be built, installed, used and removed"
