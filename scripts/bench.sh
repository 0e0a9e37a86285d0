#!/usr/bin/env bash
# Builds Release into build-release/ and runs the benchmarks.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${BENCH_BUILD_DIR:-build-release}
cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE=Release -DGLYPHWRIGHT_BUILD_UI=OFF -DGLYPHWRIGHT_BUILD_TESTS=OFF >/dev/null
cmake --build "$build_dir" -j2 --target zgly_roundtrip >/dev/null
"$build_dir/bin/zgly_roundtrip" --glyphs "${GLYPHS:-10000}"
