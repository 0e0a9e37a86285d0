#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test through CTest; then
# cross-builds the Windows command line and runs its tests under Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
bash scripts/setup.sh
bash scripts/build.sh
cd "${BUILD_DIR:-build}"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2 "$@"
cd "$root"
bash scripts/windows.sh
bash tests/windows/run.sh "${WINDOWS_BUILD_DIR:-build-windows}/bin/glyphwright-cli.exe" \
  "${BUILD_DIR:-build}/bin/glyphwright-cli"
