#!/usr/bin/env bash
# Builds every fuzz target with clang, libFuzzer, AddressSanitizer and
# UndefinedBehaviorSanitizer into build-fuzz/, and runs each for SECONDS
# (default 60) on a corpus seeded from the sample controller and the test data.
# An input that fails is copied to tests/data/fuzz-regressions/<target>/, which
# the test suite replays.
#   scripts/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
shift || true
bash scripts/install-deps.sh fuzz

# Absolute: the targets change their working directory.
build=$PWD/build-fuzz
sanitizers="-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
CC=clang-14 CXX=clang++-14 cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DFIELDBUSCONFIG_BUILD_FUZZERS=ON -DFIELDBUSCONFIG_BUILD_TESTS=OFF \
    -DFIELDBUSCONFIG_BUILD_BENCHMARKS=OFF -DFIELDBUSCONFIG_BUILD_TOOLS=OFF \
    -DCMAKE_CXX_FLAGS="$sanitizers -fsanitize=fuzzer-no-link" >/dev/null
cmake --build "$build" -j2 >/dev/null

# Seeds per target: files of the sample controller and the tests of that kind.
controller=examples/controller/application/fidbus
declare -A seeds=(
    [signal_mapping]="$controller/signal_mapping.cfg tests/data/signalmapping tests/data/import/present_signal_mapping.cfg"
    [group_io]="$controller/user_groupio.cfg tests/data/groupio"
    [backup_import]="tests/data/import/modules_backup.cfg tests/data/backup"
    [fieldbus_list]="$controller/fieldbus.xml tests/data/fieldbuslist"
    [fieldbus_config]="$controller/fieldbus_config.xml tests/data/fieldbusconfig"
    [function_files]="$controller/functionInfo.xml $controller/funclist tests/data/functionlists"
    [app_parameters]="examples/controller/pendant"
    [user_descriptions]="$controller/user_description.xml tests/data/descriptions"
    [pfs_descriptions]="$controller/pfs_description.xml"
    [slave_device]="examples/controller/fa/fbslave.cfgx tests/data/slavedevice/fbslave.cfgx"
    [pv_io]="tests/data/slavedevice/pv_io.xml tests/data/import/pv_monitor.xml"
    [controller_scan]="examples/controller/fa/controller_config.cfg"
)
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=("${!seeds[@]}")

export ASAN_OPTIONS=detect_leaks=0:allocator_may_return_null=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export QT_QPA_PLATFORM=offscreen
failed=0
printf '%-18s %12s %10s %s\n' target executions exec/s outcome
for target in $(printf '%s\n' "${targets[@]}" | sort); do
    corpus="$build/corpus/$target"
    mkdir -p "$corpus" "$build/artifacts/$target"
    for seed in ${seeds[$target]}; do
        if [ -d "$seed" ]; then cp "$seed"/* "$corpus"/ 2>/dev/null || true; else cp "$seed" "$corpus"/; fi
    done
    log="$build/$target.log"
    if "$build/fuzz/fuzz_$target" "$corpus" -max_total_time="$seconds" -timeout=20 \
        -rss_limit_mb=2560 -max_len=1048576 -print_final_stats=1 \
        -artifact_prefix="$build/artifacts/$target/" >"$log" 2>&1; then
        outcome=clean
    else
        outcome="FAILED (see $log)"
        failed=1
        mkdir -p "tests/data/fuzz-regressions/$target"
        cp "$build/artifacts/$target"/* "tests/data/fuzz-regressions/$target/" 2>/dev/null || true
    fi
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
    printf '%-18s %12s %10s %s\n' "$target" "${runs:-?}" "${rate:-?}" "$outcome"
done
exit $failed
