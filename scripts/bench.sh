#!/usr/bin/env bash
# Builds the benchmarks in Release and runs them; arguments go to Google Benchmark, e.g. --benchmark_filter=EvalPoint
# With --report first, runs all of them and writes docs/performance.md and the table in README.md; that takes less than ten minutes
# on a quiet machine.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh build bench
cmake --preset release -B build/bench -DZORBASE_BENCH=ON -DZORBASE_TESTS=OFF -DZORBASE_TOOLS=OFF -DZORBASE_EXAMPLES=OFF >/dev/null
cmake --build build/bench
export OPENBLAS_NUM_THREADS=1
if [[ ${1:-} == --report ]]; then
  shift
  results=build/bench/results.json
  build/bench/bench/zorbase_bench --benchmark_repetitions=5 --benchmark_min_time=0.03 --benchmark_out="$results" "$@"
  python3 bench/report.py "$results" bench/goals.json docs/performance.md README.md
  echo "docs/performance.md is written, and the table in README.md with it"
else
  exec build/bench/bench/zorbase_bench "$@"
fi
