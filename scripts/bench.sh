#!/usr/bin/env bash
# Builds the benchmarks and fbcfg in Release into build-bench/, runs the benchmarks and
# prints a table, then times fbcfg's commands on a small and a large controller.
#   scripts/bench.sh [--quick] [FILTER]   FILTER: a regular expression of benchmark names
#                                         (the fbcfg table runs only without one)
#   scripts/bench.sh --fbcfg              only the fbcfg table (bench/tool_scaling.py)
# The full run takes about six minutes on two cores; --quick, about two.
set -euo pipefail
cd "$(dirname "$0")/.."

repetitions=7
extra=()
benchmarks=1
tool=1
case "${1:-}" in
--quick)
    repetitions=3
    extra=(--benchmark_min_time=0.1)
    shift
    ;;
--fbcfg)
    benchmarks=
    shift
    ;;
esac
if [ $# -gt 0 ]; then
    extra+=("--benchmark_filter=$1")
    tool=
fi

bash scripts/install-deps.sh bench
cmake -S . -B build-bench -DCMAKE_BUILD_TYPE=Release -DFIELDBUSCONFIG_BUILD_BENCHMARKS=ON \
    -DFIELDBUSCONFIG_BUILD_TESTS=OFF -DFIELDBUSCONFIG_BUILD_TOOLS=ON \
    -DFIELDBUSCONFIG_BUILD_EXAMPLES=OFF >/dev/null
cmake --build build-bench -j2
if [ -n "$benchmarks" ]; then
    build-bench/bench/fbc_bench --benchmark_repetitions="$repetitions" \
        --benchmark_report_aggregates_only=true \
        --benchmark_out=build-bench/bench.json --benchmark_out_format=json "${extra[@]}"
    echo
    python3 bench/report.py build-bench/bench.json
fi
if [ -n "$tool" ]; then
    echo
    python3 bench/tool_scaling.py build-bench/tools/fbcfg/fbcfg
fi
