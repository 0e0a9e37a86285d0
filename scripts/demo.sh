#!/usr/bin/env bash
# Installs what is missing, builds, and runs the main job: DejaVu Sans at 16 px
# in 16 grey levels becomes a ZGLY font and a Latin1 glyph grid, the grid is read
# back, the font is re-encoded, and IPAGothic becomes a Shift_JIS font, upright
# and vertical; DejaVu Sans and IPAGothic are merged into one font holding the
# characters of a text file. Previews drawn from the ZGLY files alone show the results.
# Last, the example game recipe is built (twice: the second run makes nothing).
# Everything lands in out/.
set -euo pipefail
cd "$(dirname "$0")/.."
# The imaging library draws the zoomed grid cells.
bash scripts/setup.sh python3-pil
bash scripts/build.sh
cli=${BUILD_DIR:-build}/bin/glyphwright-cli
mkdir -p out

step() { printf '\n== %s\n' "$*"; }
# The head of a command's output; the whole is read first, so that a closed
# pipe cannot fail the command under pipefail.
head_of() { local what=$1; shift; local text; text=$("$@"); head "$what" <<<"$text"; }

step "DejaVu Sans, 16 px, 16 grey levels, with its own side bearings -> out/demo.zgly (UTF-16)"
"$cli" convert --from-font "DejaVu Sans" --size 16 --levels 16 --width margin --to-zgly out/demo.zgly
"$cli" info out/demo.zgly

step "out/demo.zgly -> out/demo.bmp (Latin1 glyph grid), and read back -> out/demo-from-grid.zgly"
"$cli" convert --from-zgly out/demo.zgly --to-bmp out/demo.bmp --to-order Latin1
"$cli" convert --from-bmp out/demo.bmp --from-order Latin1 --colors 16 --to-zgly out/demo-from-grid.zgly
head_of -c300 "$cli" info --json out/demo-from-grid.zgly; echo " ..."

step "out/demo.zgly re-encoded: UTF-8 copy, and a Shift_JIS copy (characters without a Shift_JIS form are left out with a warning)"
"$cli" convert --from-zgly out/demo.zgly --to-zgly out/demo-utf8.zgly --encoding utf-8
status=0
"$cli" convert --from-zgly out/demo.zgly --to-zgly out/demo-sjis.zgly --encoding shift_jis 2>out/demo-sjis-warnings.txt || status=$?
head -n 3 out/demo-sjis-warnings.txt
echo "($(grep -c '^Warning: ' out/demo-sjis-warnings.txt || true) warning lines in all, see out/demo-sjis-warnings.txt)"
[ "$status" -eq 0 ] || { echo "demo: the Shift_JIS conversion failed (exit $status)"; exit 1; }
head_of -n12 "$cli" info out/demo-sjis.zgly

step "IPAGothic, 16 px, 4 grey levels -> out/demo-ja.zgly (Shift_JIS)"
"$cli" convert --from-font IPAGothic --size 16 --levels 4 --to-zgly out/demo-ja.zgly --encoding shift_jis --quiet
head_of -n12 "$cli" info out/demo-ja.zgly

step "@IPAGothic (vertical), 16 px, 4 grey levels -> out/demo-ja-vertical.zgly (Shift_JIS)"
"$cli" convert --from-font @IPAGothic --size 16 --levels 4 --to-zgly out/demo-ja-vertical.zgly --encoding shift_jis --quiet
head_of -n4 "$cli" info out/demo-ja-vertical.zgly

step "Previews drawn from the ZGLY files alone -> out/demo-preview.png, out/demo-ja-preview.png (horizontal), out/demo-ja-vertical-preview.png"
"$cli" preview out/demo.zgly --zoom 2 --out out/demo-preview.png \
  --text 'The quick brown fox jumps over the lazy dog.\nSphinx of black quartz, judge my vow!\n0123456789 +-*/=()[] {}<>?!'
ja='いろはにほへと、ちりぬるを。\n日本語の縦書き「テスト」です。'
"$cli" preview out/demo-ja.zgly --zoom 2 --out out/demo-ja-preview.png --text "$ja"
"$cli" preview out/demo-ja-vertical.zgly --zoom 2 --out out/demo-ja-vertical-preview.png --text "$ja"
"$cli" preview out/demo.zgly --sheet --zoom 1 --out out/demo-sheet.png
ls -l out/*.png

step "DejaVu Sans + IPAGothic merged (Latin from the first, kana and kanji from the second), only the characters of a text file -> out/demo-merged.zgly"
cat >out/demo-strings.txt <<'TEXT'
New Game / Continue / Options
はじめから つづきから せってい
冒険を始めますか？
TEXT
"$cli" convert --from-font "DejaVu Sans" --size 16 --levels 16 --from-font IPAGothic --no-soft-aa \
  --chars-file out/demo-strings.txt --range 0x30-0x39 --to-zgly out/demo-merged.zgly
"$cli" preview out/demo-merged.zgly --zoom 2 --out out/demo-merged-preview.png \
  --text "$(cat out/demo-strings.txt)"

step "A game's fonts from one recipe (examples/game, copied to out/game): UI font (DejaVu Sans + IPAGothic, characters from the game's text), vertical captions, a grid-drawn pixel font"
rm -rf out/game && mkdir -p out/game && cp -r examples/game/art examples/game/text examples/game/glyphwright.toml out/game/
"$cli" build out/game/glyphwright.toml
echo "-- again, nothing changed:"
"$cli" build out/game/glyphwright.toml
echo "-- the Japanese text edited: only the fonts that read it are made again"
echo "新しい台詞。" >> out/game/text/ja.txt
"$cli" build out/game/glyphwright.toml
"$cli" preview out/game/fonts/ui.zgly --zoom 2 --out out/game-ui-preview.png \
  --text "$(head -n 2 out/game/text/en.txt | paste -sd' ')\\n$(head -n 3 out/game/text/ja.txt | paste -sd' ')"
"$cli" preview out/game/fonts/pixel.zgly --zoom 4 --out out/game-pixel-preview.png --text 'HP 120/120  MP 45/60'
ls -l out/game/fonts out/game-*.png


step "A glyph grid explained: DejaVu Sans, 12 px, 4 grey levels, three cells zoomed -> out/demo-cells.png (docs/grid-cells.png)"
printf '<letter-order version="1.0"><body><area width="3"/><order>Ag&#xE9;</order></body></letter-order>\n' >out/demo-cells.xlor
"$cli" convert --from-font "DejaVu Sans" --size 12 --levels 4 --to-bmp out/demo-cells.bmp --to-order out/demo-cells.xlor
# Debian's own Python carries the imaging library even where another python3 comes first.
py=/usr/bin/python3; [ -x "$py" ] || py=python3
"$py" scripts/grid_cells.py out/demo-cells.bmp 3 1 3 out/demo-cells.png

step "The four glyph width types: one word in each, advances marked -> out/width-types.png (docs/width-types.png)"
for w in glyph keep-space margin fixed; do
  "$cli" convert --from-font "DejaVu Sans" --size 16 --levels 16 --width "$w" --fixed-width 12 --chars 'Wide, fill.' \
    --to-zgly "out/width-$w.zgly" --quiet
  "$cli" preview "out/width-$w.zgly" --text 'Wide, fill.' --guides --zoom 4 --out "out/width-$w.png"
done
"$py" scripts/width_types.py out/width-types.png out/width-{glyph,keep-space,margin,fixed}.png

step "Soft antialiasing: the same kanji at 16 px in 16 levels with and without it -> out/kanji-soft-aa.png (docs/kanji-soft-aa.png)"
kanji='冒険の記録を保存しますか？'
"$cli" convert --from-font IPAGothic --size 16 --levels 16 --chars "$kanji" --to-zgly out/kanji-soft.zgly --quiet
"$cli" convert --from-font IPAGothic --size 16 --levels 16 --no-soft-aa --chars "$kanji" --to-zgly out/kanji-hard.zgly --quiet
"$cli" preview out/kanji-soft.zgly --text "$kanji" --zoom 3 --out out/kanji-soft.png
"$cli" preview out/kanji-hard.zgly --text "$kanji" --zoom 3 --out out/kanji-hard.png
"$py" - <<'PY'
from PIL import Image
a, b = Image.open("out/kanji-soft.png"), Image.open("out/kanji-hard.png")
out = Image.new("RGB", (max(a.width, b.width), a.height + b.height + 6), "white")
out.paste(a, (0, 0))
out.paste(b, (0, a.height + 6))
out.save("out/kanji-soft-aa.png", optimize=True)
PY

step "Grids as PNG: out/demo.zgly in 16x16 cells (smaller than its glyphs: clipped, with a warning) -> out/demo-16.png, read back"
"$cli" convert --from-zgly out/demo.zgly --to-bmp out/demo-16.png --to-order Latin1 --cell 16x16
"$cli" convert --from-bmp out/demo-16.png --from-order Latin1 --colors 16 --to-zgly out/demo-from-png.zgly
head_of -n4 "$cli" info out/demo-from-png.zgly

step "A blank Latin1 grid to draw in -> out/demo-template.png; read back unchanged, it holds no ink"
"$cli" template --order Latin1 --cell 12x16 --baseline 12 --colors 4 --out out/demo-template.png
"$cli" convert --from-bmp out/demo-template.png --from-order Latin1 --colors 4 --to-zgly out/demo-blank.zgly \
  && { echo "demo: a blank grid must not give a font"; exit 1; } || true


step "Done: $(ls out/demo*.zgly out/demo*.bmp out/demo*.png out/game-*.png | tr '\n' ' ')"
