#!/usr/bin/env bash
# Plants known faults one at a time into the working tree, rebuilds, runs the
# whole suite and says whether a test failed ("caught") or not ("MISSED").
# Every fault is reverted with git before the next one, also on Ctrl-C.
#   scripts/plant_faults.sh [NAME-PATTERN]   (a glob: 'r3-', '@(zoom-16-refused|r3-utf8-*)')
# The working tree must be clean in the files the faults touch.
# A fault is one line: name | file | perl substitution (applied to that file once).
set -uo pipefail
shopt -s extglob
cd "$(dirname "$0")/.."
BUILD=${BUILD_DIR:-build}
# The programs the tests run; benchmarks and the fuzzers are left out for speed.
TARGETS="glyphwright-cli test_core test_zgly test_preview test_bmpfont test_xmlfiles test_sources test_cli test_robustness"
# The window and what an install takes (the installed program's test runs it), where built.
known=$(cmake --build "$BUILD" --target help 2>/dev/null | sed 's/^\.\.\. //; s/ .*//; s/$/:/')
for t in test_ui glyphwright glyphwright_package_docs glyphwright_xlor glyphwright_filters; do
    grep -q "^$t:" <<< "$known" && TARGETS="$TARGETS $t"
done
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
permissions-lost | platform/posix/save_target.cpp | s/::fchmod\(fd, old\.st_mode & 07777\);/;/
order-file-listed-twice | xmlfiles/glyph_order_files.cpp | s/if \(std::any_of\(list\.begin/if (false \&\& std::any_of(list.begin/
history-beyond-ten | ui/path_history.cpp | s/std::min<std::size_t>\(Items\.size\(\), Capacity\)/Items.size()/
shift-jis-name | core/codepage.cpp | s/return "Shift_JIS";/return "Shift-JIS";/
grid-palette-grey | bmpfont/bmp_font_layout.cpp | s/\(n - 1 - i\) \* 255 \/ \(n - 1\)/(n - i) * 255 \/ n/
x-bmp-pixel-offset | bmpfont/bmp_file.cpp | s/PutU32\(fileHeader \+ 10, BmpFileHeaderBytes \+ BmpInfoHeaderBytes \+ paletteBytes\)/PutU32(fileHeader + 10, BmpFileHeaderBytes + BmpInfoHeaderBytes + paletteBytes - 4)/
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
r3-strike-sizes-joined | sources/font_source_checks.cpp | s/\(text\.empty\(\) \? "" : ", "\) \+ std::to_string\(s\)/(text.empty() ? "" : ",") + std::to_string(s)/
r3-face-number-edge | sources/font_source_checks.cpp | s/if \(faceNumber >= faces\)/if (faceNumber > faces)/
r3-face-count-message | sources/font_source_checks.cpp | s/FormatString\("faces #0 ～ #%d", faces - 1\)/FormatString("faces #0 ～ #%d", faces)/
r3-axis-max-edge | sources/font_source_checks.cpp | s/setting\.Value > axis->Max\)/setting.Value >= axis->Max)/
r3-axis-value-zeros | sources/font_source_checks.cpp | s/text\.erase\(text\.find_last_not_of\('0'\) \+ 1\);/;/
r3-size-range-max | sources/font_source_checks.cpp | s/if \(size > MaxZglyCell\)\n/if (size > MaxZglyCell + 1)\n/
r3-size-range-advice | sources/font_source_checks.cpp | s/-size, 1, low\);/-size, 1, high);/
r3-jis0201-yen | sources/bitmap_charset.cpp | s/if \(u == 0x00A5\) return 0x5C;/if (u == 0x00A5) return 0;/
r3-jis0208-cell | sources/bitmap_charset.cpp | s/\(cell \+ 0x20\)\)/(cell + 0x21))/
r3-jis0208-trail-split | sources/bitmap_charset.cpp | s/if \(trail >= 0x9F\)/if (trail > 0x9F)/
r3-cp1252-bdf-refused | sources/bitmap_charset.cpp | s/encoding == "cp1252"\)/encoding == "1252")/
r3-levels-warning-number | sources/win_font_reader.cpp | s/request\.FaceName, 1 << Bpp\);/request.FaceName, Bpp);/
r3-luminance-ignored | sources/win_font_reader.cpp | s/colours->Luminance = LuminanceCoverage;/colours->Luminance = false;/
r3-luma-red-blue | sources/colour_letterer.cpp | s/px\[2\] \* 299 \+ px\[1\] \* 587 \+ px\[0\] \* 114/px[0] * 299 + px[1] * 587 + px[2] * 114/
r3-colour-level-rounding | sources/colour_letterer.cpp | s/\(v \* MaxLevel\(\) \+ 127\) \/ 255/(v * MaxLevel()) \/ 255/
r3-colour-cell-height-as-em | sources/colour_letterer.cpp | s/size > 0 \? Face->Height\(\) : Face->Ppem26/size > 0 ? Face->Ppem26 \/ 64.0 : Face->Ppem26/
r3-parallel-chunk-end | sources/parallel_lettering.cpp | s/for \(uint32_t code = index \* ChunkCodes; code < end; \+\+code\) \{\n(\s*)if \(Stop/for (uint32_t code = index * ChunkCodes; code + 1 < end; ++code) {\n$1if (Stop/
r3-parallel-filter-ignored | sources/parallel_lettering.cpp | s/if \(Filter\.IsExcluded\(static_cast<uint16_t>\(code\)\)\) continue;/;/
r3-threads-256 | cli/convert_options.cpp | s/o\.Threads > 256\)/o.Threads > 255)/
r3-axis-tag-length | cli/convert_options.cpp | s/tag\.size\(\) > 4/tag.size() > 3/
r3-coverage-inverted | cli/convert_options.cpp | s/\{"alpha", "luminance"\}\) == 1/{"alpha", "luminance"}) == 0/
r3-width-type-not-inherited | cli/convert_options.cpp | s/if \(firstFont && !d\.Seen\.count\("--width"\)\) s\.WidthType = firstFont->WidthType;/;/
r3-fixed-width-not-inherited | cli/convert_options.cpp | s/if \(firstFont && !d\.Seen\.count\("--fixed-width"\)\) s\.FixedWidth = firstFont->FixedWidth;/;/
r3-build-threads-not-shared | cli/build_command.cpp | s/std::max\(1, cores \/ running\)/std::max(1, cores)/
r3-recipe-threads-uncapped | cli/build_command.cpp | s/n > share\) value = /n > share + 1024) value = /
r3-threads-in-settings-hash | cli/build_command.cpp | s/if \(i != threads && i != threads \+ 1\) text/if (i != threads) text/
r3-check-exit-status | cli/check_command.cpp | s/return coverage\.Lacking\.empty\(\) \? 0 : 1;/return 0;/
r3-check-column-after-newline | cli/check_command.cpp | s/\+\+line;\n(\s*)column = 0;/++line;\n$1column = 1;/
r3-check-count-repeats | cli/check_command.cpp | s/static_cast<int>\(coverage\.Seen\.size\(\)\)\);/static_cast<int>(coverage.Checked));/
r3-check-bom-reported | cli/check_command.cpp | s/cp == 0xFEFF && line == 1 && column == 0/cp == 0xFEFF && line == 1 && column == 1/
r3-check-encoding-ignored | cli/check_command.cpp | s/options\.TextEncoding, what\)/TextEncodingAuto, what)/
r3-info-chars-json-key | cli/check_command.cpp | s/",\\"chars\\":\["/",\\"characters\\":["/
r3-list-fonts-axis-default | cli/list_commands.cpp | s/AxisValueText\(a\.Default\)/AxisValueText(a.Min)/
r3-list-fonts-face-paths | cli/list_commands.cpp | s/faces \+= \(faces\.empty\(\) \? "" : ","\) \+ f;/faces += f;/
r3-utf16be-bom | core/text_decoding.cpp | s/return FromUtf16\(bytes, 2, true, what\);/return FromUtf16(bytes, 2, false, what);/
r3-utf16-surrogate-low | core/text_decoding.cpp | s/\(low - 0xDC00\)/(low - 0xDBFF)/
r3-decode-error-offset | core/text_decoding.cpp | s/if \(c == NoChar\) Invalid\(what, name, at\);/if (c == NoChar) Invalid(what, name, at + 1);/
r3-utf8-overlong | core/utf8.cpp | s/if \(cp < min \|\| cp > 0x10FFFF/if (cp > 0x10FFFF/
r3-utf8-top-edge | core/utf8.cpp | s/cp > 0x10FFFF \|\|/cp > 0x110000 ||/
r3-above-ffff-warned-each | xmlfiles/char_selection.cpp | s/Warned\.insert\(cp\)\.second/(Warned.insert(cp), true)/
r3-empty-selection-and | xmlfiles/char_selection.cpp | s/i \+ 1 == names\.size\(\) \? " and " : ", "/i + 1 == names.size() ? ", " : ", "/
r3-empty-text-file-unwarned | xmlfiles/char_selection.cpp | s/if \(chars\.AddText\(text, what\) == 0\)/if (chars.AddText(text, what) == 1)/
r3-txt-extension-case | xmlfiles/char_selection.cpp | s/c >= 'A' && c <= 'Z' \? c - 'A' \+ 'a' : c/c/
r3-chars-file-bom-kept | xmlfiles/char_selection.cpp | s/if \(text\.substr\(0, 3\) == "\\xEF\\xBB\\xBF"\) at = 3;/;/
r3-bmp-colors-used-field | bmpfont/bmp_header.cpp | s/GetU32\(info \+ 32\)/GetU32(info + 36)/
r3-alt-char-not-recoded | zgly/zarnic_font_writer.cpp | s/uint16_t code = UnicodeToFileCode\(Encoding, a\);/uint16_t code = a;/
r3-new-file-mode | platform/posix/save_target.cpp | s/::fchmod\(fd, 0666 & ~mask\);/::fchmod(fd, 0600 \& ~mask);/
r3-hard-link-broken | platform/posix/save_target.cpp | s/old\.st_nlink > 1\)/old.st_nlink > 2)/
r3-fresh-temp-removed | platform/posix/save_target.cpp | s/now - written > StaleAge/now - written > -StaleAge/
r3-hangup-as-terminate | platform/posix/cancel_signals.cpp | s/case SIGHUP: return CancelSignal::HangUp;/case SIGHUP: return CancelSignal::Terminate;/
r3-cancel-exit-not-signal | platform/posix/cancel_signals.cpp | s/std::raise\(number\);/;/
r3-child-folder-ignored | platform/posix/child_process.cpp | s/if \(::chdir\(folder\.c_str\(\)\) != 0\) ::_exit\(127\);/;/
r3-pc-choice-case | cli/convert_options.cpp | s/if \(SameIgnoringCase\(text, choices\[i\]\)\) return/if (text == choices[i]) return/
r3-pc-suggestion-reach | cli/suggestions.cpp | s/static_cast<int>\(letters\) \/ 4\)/static_cast<int>(letters) \/ 8)/
r3-pc-suggestion-swap | cli/suggestions.cpp | s/row\[j\] = std::min\(row\[j\], before\[j - 2\] \+ 1\);/;/
r3-pc-output-extension-case | cli/option_words.cpp | s/SameIgnoringCase\(path\.substr\(path\.size\(\) - ext\.size\(\)\), ext\)/path.substr(path.size() - ext.size()) == ext/
r3-pc-cancel-message | cli/main.cpp | s/existed \? " was left as it was\." : " was not created\."/existed ? " was not created." : " was left as it was."/
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
