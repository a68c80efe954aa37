#!/usr/bin/env bash
# From a fresh clone: installs the dependencies, builds with warnings as errors,
# runs every test, and proves that the library alone builds without the simulator.
#   scripts/test.sh                              the suite, then the build without simulator
#   scripts/test.sh --sanitize address,undefined the suite under those sanitizers (build-asan/)
#   scripts/test.sh --sanitize thread            the suite under ThreadSanitizer (build-tsan/)
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh

sanitize=
case "${1:-}" in
"") ;;
--sanitize) sanitize=${2:?"--sanitize needs address,undefined or thread"} ;;
*) echo "test.sh: unknown argument '$1'; see the comment at the top of scripts/test.sh" >&2; exit 2 ;;
esac

if [ -n "$sanitize" ]; then
    case "$sanitize" in
    address,undefined | undefined,address | address | undefined) build=build-asan ;;
    thread) build=build-tsan ;;
    *) echo "test.sh: --sanitize takes address,undefined or thread, not '$sanitize'" >&2; exit 2 ;;
    esac
    build=${BUILD_DIR:-$build}
    # GCC 12's vptr check misreads calls through pointers to member functions.
    flags="-fsanitize=$sanitize -fno-omit-frame-pointer -fno-sanitize-recover=all -fno-sanitize=vptr"
    BUILD_DIR=$build BUILD_TYPE=Debug bash scripts/build.sh -DFIELDBUSCONFIG_WERROR=ON \
        -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=$sanitize" \
        -DCMAKE_SHARED_LINKER_FLAGS="-fsanitize=$sanitize"
    # Qt is not instrumented: what only Qt itself shows (its hand-offs between
    # threads, its platform plugin at exit) is suppressed, each entry with its reason.
    export TSAN_OPTIONS="suppressions=$PWD/scripts/tsan.supp halt_on_error=1 second_deadlock_stack=1"
    export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
    export LSAN_OPTIONS="suppressions=$PWD/scripts/lsan.supp print_suppressions=0"
    export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
    # The package check builds an outside consumer without the sanitizer runtime.
    ctest --test-dir "$build" --output-on-failure -j2 -E package_consumer
    exit 0
fi

bash scripts/build.sh -DFIELDBUSCONFIG_WERROR=ON
ctest --test-dir "${BUILD_DIR:-build}" --output-on-failure -j2

echo "== the library without the simulated platform =="
BUILD_DIR="${BUILD_DIR:-build}-nosim" bash scripts/build.sh \
    -DFIELDBUSCONFIG_WITH_SIM=OFF -DFIELDBUSCONFIG_WERROR=ON
