#!/usr/bin/env bash
# Builds with AddressSanitizer and UndefinedBehaviorSanitizer into build-asan/
# and runs the tests there (the outside package check is left to scripts/test.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
BUILD_DIR=build-asan BUILD_TYPE=Debug bash scripts/build.sh \
    -DFIELDBUSCONFIG_BUILD_BENCHMARKS=OFF \
    -DCMAKE_CXX_FLAGS="-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined"
ctest --test-dir build-asan --output-on-failure -j2 -E package_consumer
