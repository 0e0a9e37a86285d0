#!/usr/bin/env bash
# Installs what is missing, builds, and runs the main job: DejaVu Sans at 16 px
# in 16 grey levels becomes a ZGLY font and a Latin1 glyph grid, the grid is read
# back, the font is re-encoded, and IPAGothic becomes a Shift_JIS font.
# Everything lands in out/.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh
cli=${BUILD_DIR:-build}/bin/glyphwright-cli
mkdir -p out

step() { printf '\n== %s\n' "$*"; }

step "DejaVu Sans, 16 px, 16 grey levels -> out/demo.zgly (UTF-16)"
"$cli" convert --from-font "DejaVu Sans" --size 16 --levels 16 --to-zgly out/demo.zgly
"$cli" info out/demo.zgly

step "out/demo.zgly -> out/demo.bmp (Latin1 glyph grid), and read back -> out/demo-from-grid.zgly"
"$cli" convert --from-zgly out/demo.zgly --to-bmp out/demo.bmp --to-order Latin1
"$cli" convert --from-bmp out/demo.bmp --from-order Latin1 --colors 16 --to-zgly out/demo-from-grid.zgly
"$cli" info --json out/demo-from-grid.zgly | head -c 300; echo " ..."

step "out/demo.zgly re-encoded: UTF-8 copy, and a Shift_JIS copy (characters without a Shift_JIS form are left out with a warning)"
"$cli" convert --from-zgly out/demo.zgly --to-zgly out/demo-utf8.zgly --encoding utf-8
status=0
"$cli" convert --from-zgly out/demo.zgly --to-zgly out/demo-sjis.zgly --encoding shift_jis 2>out/demo-sjis-warnings.txt || status=$?
head -n 3 out/demo-sjis-warnings.txt
echo "($(grep -c '^Warning: ' out/demo-sjis-warnings.txt || true) warning lines in all, see out/demo-sjis-warnings.txt)"
[ "$status" -eq 0 ] || { echo "demo: the Shift_JIS conversion failed (exit $status)"; exit 1; }
"$cli" info out/demo-sjis.zgly | head -n 12

step "IPAGothic, 16 px, 4 grey levels -> out/demo-ja.zgly (Shift_JIS)"
"$cli" convert --from-font IPAGothic --size 16 --levels 4 --to-zgly out/demo-ja.zgly --encoding shift_jis --quiet
"$cli" info out/demo-ja.zgly | head -n 12

step "Done: $(ls out/*.zgly out/*.bmp | tr '\n' ' ')"
