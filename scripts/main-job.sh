#!/usr/bin/env bash
# Builds the library and zor, then does the main job on the sample path: look at the measured poses, fit a curve through
# them, step along it by arc length, write the poses and draw a picture. Enough by itself on a fresh Debian 12.
# Results go to build/main-job/result.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh build plot
cmake --preset release -B build/main-job -DZORBASE_TESTS=OFF -DZORBASE_EXAMPLES=OFF >/dev/null
cmake --build build/main-job

path=data/swept-plane.poses.txt
result=build/main-job/result
mkdir -p "$result"
PATH=$PWD/build/main-job/tools/zor:$PATH
run() {
  printf '\n$ %s\n' "$*"
  "$@"
}
run zor info "$path"
run zor fit "$path"
# Where long rows meet short turns, as here, the centripetal path swings out least.
run zor resample "$path" --method centripetal --step 1 -o "$result/swept-plane.1mm.poses.txt" --plot "$result/swept-plane.png"
run wc -l "$path" "$result/swept-plane.1mm.poses.txt"
run head -n 3 "$result/swept-plane.1mm.poses.txt"
printf '\nThe picture is %s\n' "$result/swept-plane.png"
