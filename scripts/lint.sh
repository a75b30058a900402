#!/usr/bin/env bash
# Checks the form of all sources (clang-format), and the library and the command for mistakes (clang-tidy). With --fix, formats the
# sources; with --form, only checks their form; with --library, only looks for mistakes in the library.
set -euo pipefail
cd "$(dirname "$0")/.."

what=${1:-all}
[[ $what == --form || $what == --library ]] || scripts/install-packages.sh build lint

form() {
  local sources
  mapfile -t sources < <(find ZORBase tools tests examples bench -name '*.h' -o -name '*.cpp' -o -name '*.c')
  clang-format "$@" "${sources[@]}"
}

# Looks at a group of sources, compiled with these flags. Sources that use one name for two things cannot stand in one group: then
# each is looked at by itself, which only takes longer.
tidy_group() {
  local group=$1 report source
  shift
  if report=$(clang-tidy --quiet "$group" -- "$@" 2>/dev/null); then return; fi
  if ! grep -q clang-diagnostic-error <<<"$report"; then
    printf '%s\n' "$report"
    return 1
  fi
  while read -r source; do
    clang-tidy --quiet "$source" -- "$@" 2>/dev/null || return 1
  done < <(sed 's/#include "\(.*\)"/\1/' "$group")
}
export -f tidy_group

# Looks for mistakes in a folder, in so many groups of sources. Most of the time goes into the headers from elsewhere, which are
# read once for each group. Neighbours are dealt to different groups, as they are the ones that use the same names: those in one
# folder (cat), or those whose file names end alike (rev). By the name UnifiedSource clang knows that it is to follow the paths
# through what such a file includes, too.
tidy() {
  local folder=$1 groups=$2 order=$3 work=build/lint/$1 sources i
  shift 3
  mapfile -t sources < <(find "$folder" -name '*.cpp' | "$order" | LC_ALL=C sort | "$order")
  mkdir -p "$work"
  rm -f "$work"/UnifiedSource*.cpp
  for i in "${!sources[@]}"; do
    printf '#include "%s"\n' "$PWD/${sources[i]}" >>"$work/UnifiedSource$((i % groups)).cpp"
  done
  # shellcheck disable=SC2016  # expanded by the inner shell
  printf '%s\0' "$work"/UnifiedSource*.cpp |
    xargs -0 -I '{}' -P "$(nproc)" bash -c 'tidy_group "$@"' tidy_group '{}' "$@"
}

if [[ $what == --fix ]]; then
  form -i
elif [[ $what != --library ]]; then
  form --dry-run -Werror
fi
[[ $what != --form ]] || exit 0

# The build tree is there for the header with the version.
cmake --preset clang -B build/lint -DZORBASE_TESTS=OFF -DZORBASE_EXAMPLES=OFF -DZORBASE_TOOLS=OFF >/dev/null
flags=(-std=c++20 -I. -Ibuild/lint/include -DZORBASE_BUILDING)
tidy ZORBase 8 cat "${flags[@]}"
[[ $what == --library ]] || tidy tools 13 rev "${flags[@]}" -Itools
echo "No complaints"
