#!/usr/bin/env bash
# Makes the reference renderings of installed fonts that test_cli compares with:
# one ZGLY file per case, converted by the built glyphwright-cli from a few letters
# and stored as hex in tests/cli/render-refs/NAME.hex with the command line it came
# from. FreeType's rasteriser decides these bytes, so each file names the FreeType
# it was made with; after a FreeType upgrade, look at the differences (preview the
# old and new files) before making them again.
#   scripts/make_render_refs.sh            (after scripts/build.sh)
set -euo pipefail
cd "$(dirname "$0")/.."
CLI=${BUILD_DIR:-build}/bin/glyphwright-cli
OUT=tests/cli/render-refs
FREETYPE=$(dpkg-query -W -f='${Version}' libfreetype6 2>/dev/null || pkg-config --modversion freetype2)
mkdir -p "$OUT"
rm -f "$OUT"/*.hex
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# name | letters | options, separated by ';' (a face name may hold spaces)
CASES=$(cat <<'LIST'
dejavu-2|Ag|--from-font;DejaVu Sans;--size;16;--levels;2
dejavu-4|Ag|--from-font;DejaVu Sans;--size;16;--levels;4
dejavu-8|Ag|--from-font;DejaVu Sans;--size;16;--levels;8
dejavu-16|Ag|--from-font;DejaVu Sans;--size;16;--levels;16
dejavu-16-no-soft-aa|Ag|--from-font;DejaVu Sans;--size;16;--levels;16;--no-soft-aa
dejavu-cell-height|Ag|--from-font;DejaVu Sans;--cell-height;16;--levels;4
dejavu-defaults|Ag.|--from-font;DejaVu Sans;--size;12
dejavu-glyph|Ag.|--from-font;DejaVu Sans;--size;12;--width;glyph
dejavu-keep-space|Ag.|--from-font;DejaVu Sans;--size;12;--width;keep-space
dejavu-margin|Ag.|--from-font;DejaVu Sans;--size;12;--width;margin
dejavu-fixed|Ag.|--from-font;DejaVu Sans;--size;12;--width;fixed;--fixed-width;9
ipagothic-2|Aあ「|--from-font;IPAGothic;--size;16;--levels;2
ipagothic-4|Aあ「|--from-font;IPAGothic;--size;16;--levels;4
ipagothic-8|Aあ「|--from-font;IPAGothic;--size;16;--levels;8
ipagothic-16|Aあ「|--from-font;IPAGothic;--size;16;--levels;16
ipagothic-vertical-2|Aあ「ー|--from-font;@IPAGothic;--size;16;--levels;2
ipagothic-vertical-4|Aあ「ー|--from-font;@IPAGothic;--size;16;--levels;4
ipagothic-vertical-8|Aあ「ー|--from-font;@IPAGothic;--size;16;--levels;8
ipagothic-vertical-16|Aあ「ー|--from-font;@IPAGothic;--size;16;--levels;16
LIST
)

while IFS='|' read -r name letters options; do
    printf '<letter-list version="1.0"><body><letter>%s</letter></body></letter-list>' "$letters" >"$work/f.xllt"
    IFS=';' read -r -a args <<<"$options"
    "$CLI" convert "${args[@]}" --filter "$work/f.xllt" --to-zgly "$work/out.zgly" --quiet
    {
        echo "# made by scripts/make_render_refs.sh with FreeType $FREETYPE"
        echo "letters: $letters"
        echo "options: $options"
        od -An -v -tx1 -w32 "$work/out.zgly" | tr -d ' '
    } >"$OUT/$name.hex"
done <<<"$CASES"
echo "made $(ls "$OUT" | wc -l) files in $OUT (FreeType $FREETYPE)"
