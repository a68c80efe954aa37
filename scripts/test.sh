#!/usr/bin/env bash
# From a fresh clone: installs the dependencies, builds with warnings as errors,
# runs every test, and proves that the library alone builds without the simulator.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh -DFIELDBUSCONFIG_WERROR=ON
ctest --test-dir "${BUILD_DIR:-build}" --output-on-failure -j2

echo "== the library without the simulated platform =="
BUILD_DIR="${BUILD_DIR:-build}-nosim" bash scripts/build.sh \
    -DFIELDBUSCONFIG_WITH_SIM=OFF -DFIELDBUSCONFIG_WERROR=ON
