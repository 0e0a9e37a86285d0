#!/usr/bin/env bash
# Speed and size of the WebAssembly build (a measure, not a test): DejaVu Sans
# at 16 px, 16 levels, converted by the npm command line under Node and by the
# native command line, each as the median of alternating runs of the whole
# conversion less the program's start (a --version run); and the weight of the
# site. Targets: at most 2x the native time, at most 4 MiB.
#   scripts/bench_web.sh   (after scripts/build.sh and scripts/web.sh)
set -euo pipefail
cd "$(dirname "$0")/.."
native=$(realpath "${BUILD_DIR:-build}/bin/glyphwright-cli")
npm_cli=$(realpath out/npm/bin/glyphwright.js)
runs=${RUNS:-7}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf "$work/"
cd "$work"

ms() { # milliseconds of one run of the command
  local t0 t1
  t0=$(date +%s%N); "$@" >/dev/null 2>&1; t1=$(date +%s%N)
  echo $(((t1 - t0) / 1000000))
}
median() { sort -n | awk '{a[NR]=$1} END {print a[int((NR + 1) / 2)]}'; }

job=(convert --from-font DejaVuSans.ttf --size 16 --levels 16 --to-zgly out.zgly --quiet)
for _ in $(seq "$runs"); do
  echo "n $(ms "$native" "${job[@]}") $(ms "$native" --version)"
  echo "w $(ms node --no-experimental-fetch "$npm_cli" "${job[@]}") $(ms node "$npm_cli" --version)"
done > times.txt
native_ms=$(awk '$1 == "n" {print $2 - $3}' times.txt | median)
wasm_ms=$(awk '$1 == "w" {print $2 - $3}' times.txt | median)
cd - >/dev/null
site=$(cat out/web/*.html out/web/*.js out/web/*.css out/web/*.wasm | wc -c)
echo "DejaVu Sans 16 px, 16 levels, start excluded (median of $runs):"
echo "  native  ${native_ms} ms"
echo "  wasm    ${wasm_ms} ms under Node ($(awk -v a="$wasm_ms" -v b="$native_ms" 'BEGIN {printf "%.2f", (b > 0 ? a / b : 0)}')x, target <= 2x)"
echo "site out/web: $site bytes ($(awk -v s="$site" 'BEGIN {printf "%.2f", s / 1048576}') MiB, target <= 4 MiB)"
