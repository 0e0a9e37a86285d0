# The benchmark cases, shared by scripts/bench.sh and bench/check_outputs.sh.
# Source it with BIN (the build's bin directory), OUT (a scratch directory) and
# ORDERS (the glyph order directory) set. Each case is one line of
# "name|glyphwright arguments|baseline arguments|peer arguments"; the arguments
# are split as a shell would split them (a family name is quoted), and paths
# must not hold spaces.
DEJAVU=${DEJAVU:-$(fc-match -f '%{file}' 'DejaVu Sans:style=Book')}
IPAG=${IPAG:-$(fc-match -f '%{file}' 'IPAGothic')}

# Filters of the first N characters a font maps (case 4), made by the
# baseline program itself so that both sides see the same characters.
make_filters() {
  for n in 1000 4000 11000; do
    "$BIN/freetype_baseline" --filter "$IPAG" "$n" > "$OUT/ipag-$n.xllt"
  done
}

# Every case in the order the table lists them.
bench_cases() {
  local cv="convert --quiet"
  cat <<CASES
1. DejaVu Sans 16 px, 16 levels -> ZGLY UTF-16|$cv --from-font $DEJAVU --size 16 --levels 16 --no-soft-aa --to-zgly $OUT/dejavu-16.zgly|$DEJAVU 16 gray 1|--bpp 4
1. DejaVu Sans 16 px, 16 levels, by family name -> ZGLY UTF-16|$cv --from-font 'DejaVu Sans' --size 16 --levels 16 --no-soft-aa --to-zgly $OUT/dejavu-16-name.zgly|$DEJAVU 16 gray 1|
1. DejaVu Sans 16 px, 2 levels -> ZGLY UTF-16|$cv --from-font $DEJAVU --size 16 --levels 2 --to-zgly $OUT/dejavu-2.zgly|$DEJAVU 16 mono 1|--bpp 1
1. DejaVu Sans 16 px, 16 levels, soft AA -> ZGLY UTF-16|$cv --from-font $DEJAVU --size 16 --levels 16 --to-zgly $OUT/dejavu-16-soft.zgly|$DEJAVU 32 gray 1|
2. IPAGothic 16 px, 4 levels -> ZGLY UTF-16|$cv --from-font $IPAG --size 16 --levels 4 --no-soft-aa --to-zgly $OUT/ipag-4.zgly|$IPAG 16 gray 1|--bpp 2
2. IPAGothic 16 px, 4 levels, by family name -> ZGLY UTF-16|$cv --from-font IPAGothic --size 16 --levels 4 --no-soft-aa --to-zgly $OUT/ipag-4-name.zgly|$IPAG 16 gray 1|
2. IPAGothic 16 px, 4 levels -> ZGLY Shift_JIS|$cv --from-font $IPAG --size 16 --levels 4 --no-soft-aa --to-zgly $OUT/ipag-4-sjis.zgly --encoding shift_jis|$IPAG 16 gray 1|
3. IPAGothic ZGLY -> ZGLY Shift_JIS, rotation 90|$cv --from-zgly $OUT/ipag-4.zgly --to-zgly $OUT/ipag-4-sjis-90.zgly --encoding shift_jis --rotation 90||
3. IPAGothic ZGLY -> glyph-grid BMP (JIS X 0208)|$cv --from-zgly $OUT/ipag-4.zgly --to-bmp $OUT/ipag-4-grid.bmp --to-order $ORDERS/JIS-X-0208.xlor||
3. IPAGothic glyph-grid BMP -> ZGLY|$cv --from-bmp $OUT/ipag-4-grid.bmp --from-order $ORDERS/JIS-X-0208.xlor --colors 4 --to-zgly $OUT/ipag-4-grid.zgly||
4. IPAGothic, filter of 1 000 characters|$cv --from-font $IPAG --size 16 --levels 4 --no-soft-aa --filter $OUT/ipag-1000.xllt --to-zgly $OUT/ipag-4-f1000.zgly|$IPAG 16 gray 1 1000|
4. IPAGothic, filter of 4 000 characters|$cv --from-font $IPAG --size 16 --levels 4 --no-soft-aa --filter $OUT/ipag-4000.xllt --to-zgly $OUT/ipag-4-f4000.zgly|$IPAG 16 gray 1 4000|
4. IPAGothic, filter of 11 000 characters|$cv --from-font $IPAG --size 16 --levels 4 --no-soft-aa --filter $OUT/ipag-11000.xllt --to-zgly $OUT/ipag-4-f11000.zgly|$IPAG 16 gray 1 11000|
5. IPAGothic 96 px, 16 levels -> ZGLY UTF-16|$cv --from-font $IPAG --size 96 --levels 16 --no-soft-aa --to-zgly $OUT/ipag-96.zgly|$IPAG 96 gray 1|
5. IPAGothic 96 px, 16 levels, soft AA -> ZGLY UTF-16|$cv --from-font $IPAG --size 96 --levels 16 --to-zgly $OUT/ipag-96-soft.zgly|$IPAG 192 gray 1|
CASES
}

# The sizes of the plot: IPAGothic at 16 levels without soft anti-aliasing,
# glyphwright and the bare loop at each size.
SWEEP_SIZES=${SWEEP_SIZES:-16 24 32 48 64 96}
