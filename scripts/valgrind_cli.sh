#!/usr/bin/env bash
# Runs command-line conversions of IPAGothic under valgrind: to ZGLY, to a
# glyph grid, the info command, and a run cancelled with Ctrl-C (SIGINT).
# Fails on any invalid access or leak (fontconfig's own set-up leak aside).
# Usage: scripts/valgrind_cli.sh [BUILD_DIR]   (default build/, built here)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=${1:-build}
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Debug >/dev/null
cmake --build "$build" -j2 --target glyphwright-cli >/dev/null
cli=$root/$build/bin/glyphwright-cli
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
vg=(valgrind --leak-check=full --show-leak-kinds=definite,indirect,possible
  --errors-for-leak-kinds=definite,indirect,possible --error-exitcode=99
  --suppressions="$root/scripts/valgrind.supp")
status=0
check() {  # name, expected exit, command...
  local name=$1 want=$2; shift 2
  set +e; "${vg[@]}" --log-file="$out/$name.log" "$@" >/dev/null 2>&1; local rc=$?; set -e
  local summary; summary=$(grep -o 'ERROR SUMMARY: [0-9]* errors' "$out/$name.log" | tail -1)
  echo "$name: exit $rc (want $want), $summary"
  if [[ $rc -ne $want ]]; then status=1; { grep -A20 -E 'Invalid|uninitialised|lost in loss record' "$out/$name.log" || true; } | head -60; fi
}
check zgly 0 "$cli" convert --from-font IPAGothic --size 16 --to-zgly "$out/ipa.zgly" --quiet
check grid 0 "$cli" convert --from-font IPAGothic --size 16 --to-bmp "$out/ipa.bmp" --to-order JIS-X-0208 --quiet
check info 0 "$cli" info "$out/ipa.zgly"
# Cancelled: SIGINT a few seconds into the run; no output file, no temporary file.
"${vg[@]}" --log-file="$out/cancel.log" "$cli" convert --from-font IPAGothic --size 16 \
  --to-zgly "$out/cancel.zgly" >/dev/null 2>&1 &
pid=$!
sleep 6
kill -INT "$pid" 2>/dev/null || true
set +e; wait "$pid"; rc=$?; set -e
left=$(ls -A "$out" | grep -c 'cancel\.zgly' || true)
echo "cancel: exit $rc (want 130), $(grep -o 'ERROR SUMMARY: [0-9]* errors' "$out/cancel.log" | tail -1), files left: $left"
if [[ $rc -ne 130 || $left -ne 0 ]]; then status=1; { grep -A20 -E 'Invalid|uninitialised|lost in loss record' "$out/cancel.log" || true; } | head -60; fi
exit $status
