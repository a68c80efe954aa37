#!/usr/bin/env bash
# From a fresh clone: installs the dependencies, builds, and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
ctest --test-dir "${BUILD_DIR:-build}" --output-on-failure -j2
