#!/bin/sh
# Pictures of the desktop window, one per tab, under a virtual X server:
# out/main-*.png, out/messages.png, out/notice.png.
set -e
cd "$(dirname "$0")/.."
BUILD_DIR=${BUILD_DIR:-build}
OUT_DIR=${OUT_DIR:-out}
cmake -S . -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=${BUILD_TYPE:-Debug} >/dev/null
cmake --build "$BUILD_DIR" -j2 --target glyphwright glyphwright_screenshots
settings=$(mktemp -d)/glyphwright.ini
mkdir -p "$OUT_DIR"
QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1280x900x24" \
  "$BUILD_DIR/bin/glyphwright_screenshots" "$OUT_DIR" "$settings"
rm -rf "$(dirname "$settings")"
ls "$OUT_DIR"/*.png
