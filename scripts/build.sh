#!/usr/bin/env bash
# Configures and builds glyphwright into build/ (Release unless BUILD_TYPE is set).
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${BUILD_DIR:-build}
launcher=()
# A compiler cache, where the machine has one, makes rebuilds of other checkouts cheap.
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache); fi
cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE="${BUILD_TYPE:-Release}" "${launcher[@]}" "$@" >/dev/null
cmake --build "$build_dir" -j2
