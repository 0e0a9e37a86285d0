#!/usr/bin/env bash
# Remakes the pictures the README and docs/ show, from the demo and the window's
# screenshots, and checks that each stays small (PNG, at most 200 KiB).
#   scripts/pictures.sh
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/demo.sh >/dev/null
bash scripts/screenshot.sh >/dev/null
# docs/NAME.png <- out/FILE.png
pictures=(
  merged-preview:demo-merged-preview
  game-ui-preview:game-ui-preview
  game-pixel-preview:game-pixel-preview
  grid-cells:demo-cells
  width-types:width-types
  kanji-soft-aa:kanji-soft-aa
  vertical-preview:demo-ja-vertical-preview
  window:main-out-zgly
)
# The web page's picture is made by the browser test of scripts/test.sh; it is
# taken when it is there.
optional=(web-converter:web-page)
status=0
copy() {
  local name=${1%%:*} file=${1#*:}
  cp "out/$file.png" "docs/$name.png"
  local size
  size=$(stat -c %s "docs/$name.png")
  if [ "$size" -gt $((200 * 1024)) ]; then
    echo "pictures: docs/$name.png is $((size / 1024)) KiB, more than 200" >&2
    status=1
  fi
  echo "docs/$name.png ($((size / 1024)) KiB)"
}
for p in "${pictures[@]}"; do copy "$p"; done
for p in "${optional[@]}"; do [ -f "out/${p#*:}.png" ] && copy "$p"; done
exit $status
