#!/usr/bin/env bash
# Builds Release into build-release/ and prints the speed report, also written
# to out/bench.md: the three target cases as whole processes by family name
# against the yardstick ../shared/bench/ftlimit.c (one thread and all cores,
# alternating rounds, peak memory), and their ratio against the pixel size,
# plotted to out/bench.png.
#   RUNS=N          alternating rounds per case (default 10, medians reported)
#   SWEEP_RUNS=N    rounds per size of the plot (default 3)
#   BENCH_DETAIL=1  then also every case of bench/cases.sh against the bare
#                   FreeType loop, lv_font_conv, the start-up and the window
#                   (out/bench-detail.md, out/bench-detail.png)
#   BENCH_PEER=0    in the detail, skip lv_font_conv (IPAGothic takes minutes)
#   BENCH_WINDOW=0  in the detail, skip the window's progress measurement
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${RUNS:-10}
build_dir=${BENCH_BUILD_DIR:-build-release}

# Tools only the benchmark needs; installed here, never by the tests.
need=()
command -v hyperfine >/dev/null || need+=(hyperfine)
[ -x /usr/bin/time ] || need+=(time)
command -v gnuplot >/dev/null || need+=(gnuplot-nox)
if [ ${#need[@]} -gt 0 ]; then
  [ "$(id -u)" -eq 0 ] || { echo "bench: missing ${need[*]} (run as root to install)" >&2; exit 1; }
  export DEBIAN_FRONTEND=noninteractive
  apt-get install -y -qq --no-install-recommends "${need[@]}" >/dev/null 2>&1 ||
    { apt-get update -qq >/dev/null; apt-get install -y -qq --no-install-recommends "${need[@]}" >/dev/null; }
fi

cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE=Release -DGLYPHWRIGHT_BUILD_TESTS=OFF >/dev/null
targets=(glyphwright-cli freetype_baseline bare_start zgly_roundtrip)
[ "${BENCH_WINDOW:-1}" = 0 ] || targets+=(window_progress)
cmake --build "$build_dir" -j2 --target "${targets[@]}" >/dev/null
# The yardstick lives beside the repository, outside it.
yardstick_src=../shared/bench/ftlimit.c
[ -f "$yardstick_src" ] || { echo "bench: $yardstick_src not found" >&2; exit 1; }
# shellcheck disable=SC2046
cc -O2 -o "$build_dir/bin/ftlimit" "$yardstick_src" $(pkg-config --cflags --libs freetype2)

BIN=$PWD/$build_dir/bin
OUT=$PWD/out/bench
rm -rf "$OUT"; mkdir -p "$OUT" out
source bench/cases.sh
machine="$(nproc) cores, $(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -1), load $(cut -d' ' -f1-3 /proc/loadavg)"
DEJAVU=$DEJAVU IPAG=$IPAG python3 bench/yardstick.py "$OUT" "$BIN/glyphwright-cli" "$BIN/ftlimit" "$runs" \
  "${SWEEP_RUNS:-3}" "$(date -u +%Y-%m-%d)" "$machine" | tee out/bench.md
gnuplot -e "data='$OUT/yardstick.tsv'; out='out/bench.png'; cores=$(nproc)" bench/yardstick.gp
echo "bench: plot in out/bench.png" >&2
[ "${BENCH_DETAIL:-0}" = 1 ] || exit 0

peer=""
if [ "${BENCH_PEER:-1}" != 0 ]; then
  if command -v npm >/dev/null; then
    [ -x bench/peer/node_modules/.bin/lv_font_conv ] || npm install --silent --prefix bench/peer lv_font_conv >/dev/null
    peer=$PWD/bench/peer/node_modules/.bin/lv_font_conv
  else
    echo "bench: npm not found, lv_font_conv skipped" >&2
  fi
fi

ORDERS=$PWD/data/xlor
make_filters

# Peak resident set of one run, in KiB.
peak_kb() { /usr/bin/time -f '%M' "$@" 2>&1 >/dev/null | tail -1; }
# The glyph count of a ZGLY file.
zgly_glyphs() { "$BIN/glyphwright-cli" info "$1" | sed -n 's/^Glyphs: \([0-9]*\).*/\1/p'; }

results=$OUT/results.tsv
: > "$results"
i=0
while IFS='|' read -r name args base peerargs; do
  i=$((i + 1))
  echo "bench: $name" >&2
  cmds=("$BIN/glyphwright-cli $args")
  [ -z "$base" ] || cmds+=("$BIN/freetype_baseline $base")
  hyperfine -N -w 1 -r "$runs" --export-json "$OUT/case$i.json" "${cmds[@]}" >/dev/null 2>&1
  eval "set -- $args"
  gw_kb=$(peak_kb "$BIN/glyphwright-cli" "$@")
  base_kb=""; glyphs=""
  if [ -n "$base" ]; then
    # shellcheck disable=SC2086
    base_kb=$(peak_kb "$BIN/freetype_baseline" $base)
    # shellcheck disable=SC2086
    glyphs=$("$BIN/freetype_baseline" $base | sed -n 's/^freetype_baseline: \([0-9]*\) glyphs.*/\1/p')
  fi
  zgly=$(sed -n 's/.*--to-zgly \([^ ]*\).*/\1/p' <<<"$args")
  output=$(sed -n 's/.*--to-\(zgly\|bmp\) \([^ ]*\).*/\2/p' <<<"$args")
  [ -n "$zgly" ] && glyphs=$(zgly_glyphs "$zgly")
  [ -n "$glyphs" ] || glyphs=$(zgly_glyphs "$OUT/ipag-4.zgly")
  out_bytes=$(stat -c %s "$output")
  peer_s=""; peer_kb=""
  if [ -n "$peer" ] && [ -n "$peerargs" ]; then
    font=$(awk '{print $1}' <<<"$base"); size=$(awk '{print $2}' <<<"$base")
    # One run: the peer takes seconds to minutes per case.
    # shellcheck disable=SC2086
    read -r peer_s peer_kb < <(/usr/bin/time -f '%e %M' "$peer" --font "$font" --size "$size" $peerargs \
      --format bin -r 0x0-0xFFFE -o "$OUT/peer$i.bin" 2>&1 >/dev/null | tail -1)
  fi
  printf '%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\n' "$name" "$OUT/case$i.json" "$glyphs" "$gw_kb" "$base_kb" "$peer_s" "$peer_kb" \
    "$out_bytes" >> "$results"
done < <(bench_cases)

# Start-up: the shared libraries the command line maps, and --version against
# a bare C program linked with FreeType.
echo "bench: start-up" >&2
libs=$(ldd "$BIN/glyphwright-cli" | grep -vc 'linux-vdso')
unwanted=$(ldd "$BIN/glyphwright-cli" | { grep -oiE 'lib(curl|gnutls|icu[a-z0-9]*|ldap|krb5|gssapi_krb5|xerces)[^ ]*' || true; } | tr '\n' ' ')
hyperfine -N -w 3 -r $((runs * 5)) --export-json "$OUT/startup.json" "$BIN/glyphwright-cli --version" \
  "$BIN/bare_start" >/dev/null 2>&1
printf '%s\t%s\t%s\n' "$libs" "$OUT/startup.json" "${unwanted% }" > "$OUT/startup.tsv"

# Cost per glyph against the pixel size, the plot's data.
echo "bench: sizes $SWEEP_SIZES" >&2
sweep=$OUT/sweep.tsv
: > "$sweep"
for px in $SWEEP_SIZES; do
  hyperfine -N -w 1 -r "${SWEEP_RUNS:-3}" --export-json "$OUT/size$px.json" \
    "$BIN/glyphwright-cli convert --quiet --from-font $IPAG --size $px --levels 16 --no-soft-aa --to-zgly $OUT/size$px.zgly" \
    "$BIN/freetype_baseline $IPAG $px gray 1" >/dev/null 2>&1
  base_glyphs=$("$BIN/freetype_baseline" "$IPAG" "$px" gray 1 | sed -n 's/^freetype_baseline: \([0-9]*\) glyphs.*/\1/p')
  printf '%s\t%s\t%s\t%s\n' "$px" "$OUT/size$px.json" "$(zgly_glyphs "$OUT/size$px.zgly")" "$base_glyphs" >> "$sweep"
  rm -f "$OUT/size$px.zgly"
done

window=""
if [ "${BENCH_WINDOW:-1}" != 0 ] && [ -x "$BIN/window_progress" ]; then
  echo "bench: window" >&2
  window=$(QT_QPA_PLATFORM=offscreen "$BIN/window_progress" "$IPAG" 16 4 "$OUT/window.zgly" "$runs" 2>/dev/null | tail -1)
fi

python3 bench/report.py "$results" "$(date -u +%Y-%m-%d)" "$machine" "$window" "$runs" "$OUT/startup.tsv" "$sweep" \
  "$OUT/plot.tsv" | tee out/bench-detail.md
gnuplot -e "data='$OUT/plot.tsv'; out='out/bench-detail.png'" bench/plot.gp
echo "bench: detail plot in out/bench-detail.png" >&2
