#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test through CTest; then the
# cross targets (WebAssembly, Windows) against the native command line.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh
cd "${BUILD_DIR:-build}"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2 "$@"
cd - >/dev/null

# The WebAssembly targets: the npm command line against the native one, then
# the web page in headless Chromium (Debian's Python, which has Selenium).
bash scripts/setup.sh chromium chromium-driver python3-selenium
bash scripts/web.sh
native="${BUILD_DIR:-build}/bin/glyphwright-cli"
bash tests/web/node_test.sh "$native" out/npm
/usr/bin/python3 tests/web/browser_test.py out/web "$native" out/web-page.png

# The Windows command line, cross-built, under Wine against the native one.
bash scripts/windows.sh
bash tests/windows/run.sh "${WINDOWS_BUILD_DIR:-build-windows}/bin/glyphwright-cli.exe" "$native"
