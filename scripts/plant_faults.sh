#!/usr/bin/env bash
# Plants known faults one at a time into the working tree, rebuilds, runs the
# whole suite and says whether a test failed ("caught") or not ("MISSED").
# Every fault is reverted with git before the next one, also on Ctrl-C.
#   scripts/plant_faults.sh [NAME-PATTERN]     (the working tree must be clean
#   in the files the faults touch)
# A fault is one line: name | file | perl substitution (applied to that file once).
set -uo pipefail
cd "$(dirname "$0")/.."
BUILD=${BUILD_DIR:-build}
# The programs the tests run; benchmarks and the fuzzers are left out for speed.
TARGETS="glyphwright-cli test_core test_zgly test_preview test_bmpfont test_xmlfiles test_sources test_cli test_robustness"
grep -q '^test_ui:' <(cmake --build "$BUILD" --target help 2>/dev/null | sed 's/^\.\.\. //; s/ .*//; s/$/:/') && TARGETS="$TARGETS test_ui"
PATTERN=${1:-}

FAULTS=$(cat <<'LIST'
vertical-upright-mirrored | sources/letterer.cpp | s/b\.Pixels\[x \* b\.Pitch \+ \(w - 1 - r\)\]/b.Pixels[x * b.Pitch + r]/
grey-rounding | sources/vector_letterer.cpp | s/\(v \* 16 \+ 127\) \/ 255/(v * 16) \/ 255/
size-as-cell-height | cli/convert_options.cpp | s/s\.FontSize = d\.Size \? -\*d\.Size/s.FontSize = d.Size ? *d.Size/
margins-right-from-top | cli/convert_options.cpp | s/o\.MarginRight = v\.size\(\) == 4 \? v\[2\] : v\[0\]/o.MarginRight = v.size() == 4 ? v[2] : v[1]/
zoom-16-refused | cli/options.cpp | s/o\.Zoom > 16/o.Zoom > 15/
warning-limit-line-lost | cli/cli_progress.cpp | s/Warnings <= MaxListedWarnings\)/Warnings <= MaxListedWarnings + 1)/; s/if \(Warnings < MaxListedWarnings\)/if (Warnings <= MaxListedWarnings)/
info-rotation-raw | cli/info_command.cpp | s/i\.Rotation \* 90\);/i.Rotation);/
line-height-256 | zgly/zarnic_font_writer.cpp | s/LineHeight > 255/LineHeight > 256/
baseline-128 | zgly/zarnic_font_writer.cpp | s/Baseline\.Value > 127\)/Baseline.Value > 128)/
baseline-minus-129 | zgly/zarnic_font_writer.cpp | s/Baseline\.Value < -128\)/Baseline.Value < -129)/
left-space-edge | zgly/zarnic_font_writer.cpp | s/DefaultLeftSpace > 127\)/DefaultLeftSpace > 128)/
default-width-edge | zgly/zarnic_font_writer.cpp | s/DefaultWidth > cellWidth\)/DefaultWidth >= cellWidth)/
right-space-edge | zgly/zarnic_font_writer.cpp | s/high = 127 - width - left/high = 128 - width - left/
cell-width-256 | zgly/zarnic_font_writer.cpp | s/font\.CellWidth\.Value > MaxByte\)/font.CellWidth.Value >= MaxByte)/
bmp-file-size-field | bmpfont/bmp_file.cpp | s/BmpFileHeaderBytes \+ BmpInfoHeaderBytes \+ paletteBytes \+ image\.ImageSize/BmpFileHeaderBytes + BmpInfoHeaderBytes + image.ImageSize/
bmp-palette-index-0 | bmpfont/grid_warnings.cpp | s/index == 0 \? white : index/index/
two-whites-warning-dropped | bmpfont/bmp_font_reader.cpp | s/ReportWarning\(g_pPgCtrl, "2 or more white colors are found."\);/;/
permissions-lost | platform/posix/save_target.cpp | s/::fchmod\(Fd, old\.st_mode & 07777\);/;/
order-file-listed-twice | xmlfiles/glyph_order_files.cpp | s/if \(std::any_of\(list\.begin/if (false \&\& std::any_of(list.begin/
history-beyond-ten | ui/path_history.cpp | s/std::min<std::size_t>\(Items\.size\(\), Capacity\)/Items.size()/
shift-jis-name | core/codepage.cpp | s/return "Shift_JIS";/return "Shift-JIS";/
grid-palette-grey | bmpfont/bmp_font_layout.cpp | s/\(n - 1 - i\) \* 255 \/ \(n - 1\)/(n - i) * 255 \/ n/
x-bmp-pixel-offset | bmpfont/bmp_file.cpp | s/Put32\(fileHeader \+ 10, BmpFileHeaderBytes \+ BmpInfoHeaderBytes \+ paletteBytes\)/Put32(fileHeader + 10, BmpFileHeaderBytes + BmpInfoHeaderBytes + paletteBytes - 4)/
x-zgly-file-size-field | zgly/font_block_file.cpp | s/PutU32\(header \+ 8, WriteOffset\)/PutU32(header + 8, WriteOffset - 4)/
x-zgly-version-written | zgly/font_block_file.cpp | s/PutU16\(header \+ 6, Version\)/PutU16(header + 6, 0x0100)/
x-cmap-next-offset | zgly/zarnic_font_writer.cpp | s/i \+ 1 < cmap\.size\(\) \? cmap\[i \+ 1\] : 0/i + 1 < cmap.size() ? cmap[i] : 0/
x-msg-font-size | sources/win_font_reader.cpp | s/Invalid Font Size\(%d\)/Invalid font size(%d)/
x-msg-lc-path | sources/lc_font_reader.cpp | s/LC Font file path required/LC font file path required/
x-msg-no-baseline | bmpfont/bmp_font_reader.cpp | s/BMP has no baseline info\./BMP has no baseline information./
x-msg-no-white | bmpfont/bmp_font_reader.cpp | s/Color white not found in BMP\./White not found in BMP./
x-encoding-choices-swapped | cli/convert_options.cpp | s/\{"utf-8", "utf-16", "shift_jis", "cp1252"\}/{"utf-8", "utf-16", "cp1252", "shift_jis"}/
x-quiet-ignored | cli/convert_options.cpp | s/o\.Quiet = true/o.Quiet = false/
x-default-width-type | cli/options.h | s/int WidthType = 1;/int WidthType = 0;/
x-order-not-limiting | core/font_filter.cpp | s/if \(!Letters\.empty\(\)\) PassAll = false;/;/
x-grid-centring | bmpfont/grid_placement.cpp | s/std::max\(g\.LeftSpace, 0\)\) \/ 2;/std::max(g.LeftSpace, 0)) \/ 2 + 1;/
x-lc-half-turn | sources/lc_font_reader.cpp | s/if \(Vertical\) RotateClockwise/if (Vertical) RotateCounterClockwise/
y-bmp-4bit-nibbles | bmpfont/bmp_image.cpp | s/\? \(row\[x \/ 2\] >> 4\) : \(row\[x \/ 2\] & 0x0F\)/? (row[x \/ 2] \& 0x0F) : (row[x \/ 2] >> 4)/
y-bit-read-split | core/bit_stream.cpp | s/return \(high << rest\) \| low;/return (high << (rest + 1)) | low;/
LIST
)

touched=$(echo "$FAULTS" | awk -F' \\| ' '{print $2}' | sort -u)
restore() { git checkout -q -- $touched; }
trap 'restore; exit 130' INT TERM PIPE HUP
if ! git diff --quiet -- $touched; then echo "uncommitted changes in the files faults touch; stopping" >&2; exit 2; fi

caught=0; missed=0; skipped=0
while IFS='|' read -r name file subst; do
    name=$(echo "$name" | xargs); file=$(echo "$file" | xargs); subst=$(echo "$subst" | sed 's/^ *//; s/ *$//')
    [[ -n "$PATTERN" && "$name" != *$PATTERN* ]] && continue
    # Each substitution of a fault must change the file, else the fault is only half planted.
    unapplied=""
    while IFS= read -r part; do
        before=$(md5sum < "$file")
        perl -0pi -e "$part" "$file"
        [[ "$(md5sum < "$file")" == "$before" ]] && unapplied="$unapplied $part"
    done < <(echo "$subst" | perl -pe 's/; (?=s\/)/\n/g')
    if [[ -n "$unapplied" ]]; then
        echo "SKIPPED  $name (did not apply:$unapplied)"; skipped=$((skipped + 1)); restore; continue
    fi
    if ! cmake --build "$BUILD" -j2 --target $TARGETS >/tmp/plant_faults_build.log 2>&1; then
        echo "SKIPPED  $name (does not build)"; skipped=$((skipped + 1)); restore; continue
    fi
    if (cd "$BUILD" && QT_QPA_PLATFORM=offscreen ctest -j2 >/tmp/plant_faults_ctest.log 2>&1); then
        echo "MISSED   $name"; missed=$((missed + 1))
    else
        failed=$(grep -E '^\s+[0-9]+ - ' /tmp/plant_faults_ctest.log | awk '{print $3}' | tr '\n' ' ')
        echo "caught   $name  ($failed)"; caught=$((caught + 1))
    fi
    restore
done <<< "$FAULTS"
cmake --build "$BUILD" -j2 --target $TARGETS >/dev/null 2>&1
echo "caught $caught, missed $missed, skipped $skipped"
[[ $missed -eq 0 ]]
