#!/usr/bin/env bash
# Installs the build into a scratch prefix and runs the installed command line
# from another folder, as a packaged user would: it must find the shipped glyph
# orders and filters under PREFIX/share/glyphwright, and the man pages are there
# compressed. Prints "N passed, N failed".
#   tests/install/check_install.sh BUILD_DIR
set -uo pipefail
build=$(realpath "$1")
prefix=$(mktemp -d)
work=$(mktemp -d)
trap 'rm -rf "$prefix" "$work"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null || { echo "install failed"; exit 1; }
cli=$prefix/bin/glyphwright-cli
cd "$work"
passed=0 failed=0
expect() { # name, condition command...
  local name=$1; shift
  if "$@"; then passed=$((passed + 1)); else echo "FAILED: $name"; failed=$((failed + 1)); fi
}

orders=$("$cli" list-orders | cut -f1 | tr '\n' ' ')
expect "list-orders lists the shipped orders" [ "$orders" = "ASCII.xlor CP1252.xlor JIS-X-0208.xlor Kana.xlor Latin1.xlor " ]
expect "template with a shipped order" "$cli" template --order Kana --cell 12x14 --baseline 11 --out blank.png
expect "template wrote a PNG" [ "$(head -c 4 blank.png | tail -c 3)" = "PNG" ]
expect "convert with a shipped order and filter" "$cli" convert --quiet \
  --from-font /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf --size 12 \
  --filter "$prefix/share/glyphwright/filters/ASCII.xllt" --to-bmp grid.bmp --to-order ASCII
expect "the grid reads back as 95 glyphs" [ "$("$cli" convert --from-bmp grid.bmp --from-order ASCII \
  --to-zgly back.zgly 2>&1 | grep -o '[0-9]* glyphs')" = "95 glyphs" ]
for page in glyphwright-cli glyphwright; do
  [ -e "$prefix/bin/$page" ] || continue
  expect "man page $page compressed" gzip -t "$prefix/share/man/man1/$page.1.gz"
done
expect "copyright file" grep -q '^License: MIT' "$prefix/share/doc/glyphwright/copyright"
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
