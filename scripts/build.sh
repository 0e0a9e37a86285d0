#!/usr/bin/env bash
# Configures and builds glyphwright into build/ (Release unless BUILD_TYPE is set).
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${BUILD_DIR:-build}
cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE="${BUILD_TYPE:-Release}" >/dev/null
cmake --build "$build_dir" -j2
