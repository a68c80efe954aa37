#!/usr/bin/env bash
# Builds the benchmarks in Release into build-bench/, runs them and prints a table.
#   scripts/bench.sh [--quick] [FILTER]   FILTER: a regular expression of benchmark names
# The full run takes about five minutes on two cores; --quick, about one.
set -euo pipefail
cd "$(dirname "$0")/.."

repetitions=7
extra=()
if [ "${1:-}" = "--quick" ]; then
    repetitions=3
    extra=(--benchmark_min_time=0.1)
    shift
fi
if [ $# -gt 0 ]; then
    extra+=("--benchmark_filter=$1")
fi

bash scripts/install-deps.sh bench
cmake -S . -B build-bench -DCMAKE_BUILD_TYPE=Release -DFIELDBUSCONFIG_BUILD_BENCHMARKS=ON \
    -DFIELDBUSCONFIG_BUILD_TESTS=OFF -DFIELDBUSCONFIG_BUILD_TOOLS=OFF >/dev/null
cmake --build build-bench -j2
build-bench/bench/fbc_bench --benchmark_repetitions="$repetitions" \
    --benchmark_report_aggregates_only=true \
    --benchmark_out=build-bench/bench.json --benchmark_out_format=json "${extra[@]}"
echo
python3 bench/report.py build-bench/bench.json
