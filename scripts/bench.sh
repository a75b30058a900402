#!/usr/bin/env bash
# Builds the benchmarks in Release and runs them; arguments go to Google Benchmark, e.g. --benchmark_filter=EvalPoint
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh build bench
cmake --preset release -B build/bench -DZORBASE_BENCH=ON -DZORBASE_TESTS=OFF -DZORBASE_TOOLS=OFF -DZORBASE_EXAMPLES=OFF >/dev/null
cmake --build build/bench
exec build/bench/bench/zorbase_bench "$@"
