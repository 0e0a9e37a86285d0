#!/usr/bin/env bash
# Installs what is missing, builds, and runs the main job: a small ZGLY font is
# made, converted into UTF-8 and Shift_JIS copies by the command line, and the
# three files are described.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh
bin=${BUILD_DIR:-build}/bin
cmake --build "${BUILD_DIR:-build}" -j2 --target zgly_roundtrip glyphwright-cli >/dev/null

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$bin/zgly_roundtrip" --make "$work/demo.zgly" --glyphs 300
echo "== demo.zgly (UTF-16, made by the benchmark's font maker)"
"$bin/glyphwright-cli" info "$work/demo.zgly"
echo
echo "== demo-utf8.zgly"
"$bin/glyphwright-cli" convert --from-zgly "$work/demo.zgly" --to-zgly "$work/demo-utf8.zgly" --encoding utf-8
"$bin/glyphwright-cli" info "$work/demo-utf8.zgly"
echo
echo "== demo-sjis.zgly (characters without a Shift_JIS form are left out with a warning)"
status=0
"$bin/glyphwright-cli" convert --from-zgly "$work/demo.zgly" --to-zgly "$work/demo-sjis.zgly" \
  --encoding shift_jis --rotation 90 2>"$work/warnings.txt" || status=$?
head -n 3 "$work/warnings.txt"
echo "($(grep -c '^Warning: ' "$work/warnings.txt" || true) warning lines in all)"
if [ "$status" -eq 0 ]; then
  "$bin/glyphwright-cli" info --json "$work/demo-sjis.zgly"
else
  echo "demo: the Shift_JIS conversion failed (exit $status)"
fi
