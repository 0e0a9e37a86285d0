#!/bin/sh
# Pictures of the desktop window, one per tab, under a virtual X server:
# out/main-*.png, out/messages.png, out/notice.png, and out/preview.png when
# PREVIEW_FONT names a ZGLY file; out/screen-*.png show the whole screen under
# a window manager (openbox, when installed): the path tip where the pointer
# rests, the message window beside and over the main window, and the preview.
# SCREEN sets the virtual screen (default 1280x900x24), e.g. a small 1024x600x24.
set -e
cd "$(dirname "$0")/.."
bash scripts/setup.sh xvfb openbox
BUILD_DIR=${BUILD_DIR:-build}
OUT_DIR=${OUT_DIR:-out}
# Configure only a new build directory; an existing one keeps its build type.
[ -f "$BUILD_DIR/CMakeCache.txt" ] || cmake -S . -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=${BUILD_TYPE:-Release} >/dev/null
cmake --build "$BUILD_DIR" -j2 --target glyphwright glyphwright_screenshots
settings=$(mktemp -d)/glyphwright.ini
mkdir -p "$OUT_DIR"
QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 ${SCREEN:-1280x900x24}" sh -c '
  if command -v openbox >/dev/null; then openbox & sleep 1; fi
  exec "$@"' screenshots \
  "$BUILD_DIR/bin/glyphwright_screenshots" "$OUT_DIR" "$settings" ${PREVIEW_FONT:+"$PREVIEW_FONT"}
rm -rf "$(dirname "$settings")"
ls "$OUT_DIR"/*.png
