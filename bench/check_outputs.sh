#!/usr/bin/env bash
# Runs every benchmark case once into a directory, or compares two such runs:
# speed work must leave every output byte-identical.
#   bench/check_outputs.sh make DIR [BIN]   (BIN defaults to build-release/bin)
#   bench/check_outputs.sh compare DIR1 DIR2
set -euo pipefail
cd "$(dirname "$0")/.."
case "${1:-}" in
make)
  OUT=$(realpath -m "$2"); BIN=${3:-build-release/bin}; ORDERS=$PWD/data/xlor
  mkdir -p "$OUT"
  source bench/cases.sh
  make_filters
  while IFS='|' read -r name args _; do
    eval "set -- $args"
    "$BIN/glyphwright-cli" "$@" || { echo "failed: $name" >&2; exit 1; }
  done < <(bench_cases)
  ;;
compare)
  status=0
  for f in "$2"/*.zgly "$2"/*.bmp; do
    if cmp -s "$f" "$3/$(basename "$f")"; then echo "same     $(basename "$f")"
    else echo "DIFFERS  $(basename "$f")"; status=1; fi
  done
  exit $status
  ;;
*) echo "usage: $0 make DIR [BIN] | compare DIR1 DIR2" >&2; exit 2 ;;
esac
