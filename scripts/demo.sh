#!/usr/bin/env bash
# The main job from a fresh clone: installs the dependencies, builds, and shows
# what fbcfg says about the bundled sample controller and the tree with faults.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh >/dev/null
fbcfg=${BUILD_DIR:-build}/tools/fbcfg/fbcfg

run() {
    echo
    echo "\$ fbcfg $*"
    "$fbcfg" "$@" || echo "(exit status $?)"
}

run status
run check
run check --controller examples/controller-with-faults
