#!/usr/bin/env bash
# Runs every fuzz target for a time and prints a section on what came of it. Ends with 10 when a target found something or did not run; what
# was found is in build/fuzz/findings.
#   tests/fuzz/evidence.sh                     60 seconds for each target
#   tests/fuzz/evidence.sh 600 Curve Command   ten minutes for each of these
# What a run learned stays in build/fuzz/corpus for the next one; tests/fuzz/corpus is only read.
set -euo pipefail
cd "$(dirname "$0")/../.."

seconds=${1:-60}
targets=("${@:2}")
megabytes=2048   # no input may take more memory than this, the checks of the sanitizer included
timeout=10       # or more seconds than this
longest=4096     # bytes of an input

{
  scripts/install-packages.sh build test
  cmake --preset fuzz
  cmake --build --preset fuzz
} >&2
if [[ ${#targets[@]} -eq 0 ]]; then
  mapfile -t targets < <(find tests/fuzz/targets -name '*.cpp' -printf '%f\n' | sed 's/\.cpp$//' | sort)
fi

leaks=1
scripts/leak-check-works.sh || leaks=0
# Files are written so often that they are better kept in memory.
[[ ! -w /dev/shm ]] || export TMPDIR=/dev/shm
export ASAN_OPTIONS=detect_leaks=$leaks UBSAN_OPTIONS=print_stacktrace=1

build=build/fuzz
rm -rf "$build/findings" "$build/logs" "$build/failed"
mkdir -p "$build/findings" "$build/logs"

run_target() {
  local target=$1 mask=0
  mkdir -p "$build/corpus/$target"
  [[ $target != Command ]] || mask=3 # what the command prints
  "$build/tests/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout="$timeout" -rss_limit_mb="$megabytes" \
    -max_len="$longest" -detect_leaks="$leaks" -dict=tests/fuzz/numbers.dict -print_final_stats=1 -close_fd_mask="$mask" \
    -artifact_prefix="$build/findings/$target-" "$build/corpus/$target" "tests/fuzz/corpus/$target" \
    >"$build/logs/$target" 2>&1 && return
  echo "$target found something, or did not run: see $build/logs/$target" >&2
  touch "$build/failed"
}
export -f run_target
export build seconds timeout megabytes longest leaks
printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I{} bash -c 'run_target {}'

statistic() { sed -n "s/^stat::$2: *//p" "$build/logs/$1" | tail -n 1; }

covered() { grep -o 'cov: [0-9]*' "$build/logs/$1" | tail -n 1 | cut -d ' ' -f 2; }

printf '## Fuzzing\n\n`tests/fuzz/evidence.sh %s`: libFuzzer with the address and undefined-behaviour sanitizers' "$seconds"
[[ $leaks == 1 ]] && printf ', leaks included' || printf ' (no leak check: this machine forbids it)'
printf '.\nNo input may take %s s or %s MB. A target also checks what has to hold: what is written is read alike, what is done\n' \
  "$timeout" "$megabytes"
printf 'one by one is done together to the bit, a call that fails changes nothing. Seeds: `tests/fuzz/corpus`.\n\n'
printf '| target | seeds | inputs run | a second | edges reached | findings |\n|---|--:|--:|--:|--:|--:|\n'
for target in "${targets[@]}"; do
  printf '| %s | %d | %s | %s | %s | %d |\n' "$target" "$(find "tests/fuzz/corpus/$target" -type f | wc -l)" \
    "$(statistic "$target" number_of_executed_units)" "$(statistic "$target" average_exec_per_sec)" "$(covered "$target")" \
    "$(find "$build/findings" -name "$target-*" | wc -l)"
done
[[ ! -e $build/failed ]] || exit 10
