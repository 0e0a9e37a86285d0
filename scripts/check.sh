#!/usr/bin/env bash
# Builds the whole test suite with AddressSanitizer and UndefinedBehaviorSanitizer
# in its own build directory (build-asan/) and runs it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
san="-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_CXX_FLAGS="$san" -DCMAKE_C_FLAGS="$san" \
  -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" >/dev/null
cmake --build build-asan -j2
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0:strict_string_checks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$PWD/scripts/lsan.supp:print_suppressions=0"
export QT_QPA_PLATFORM=offscreen
cd build-asan
ctest --output-on-failure -j2 "$@"
