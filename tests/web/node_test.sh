#!/usr/bin/env bash
# The npm command line against the native one: the shared table of
# conversions byte for byte, then the packed tarball installed into an empty
# prefix and run from there.
#   tests/web/node_test.sh NATIVE_CLI NPM_FOLDER
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
native=$(realpath "$1") npm_dir=$(realpath "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

bash "$here/../cross/compare.sh" "$native" node --no-experimental-fetch "$npm_dir/bin/glyphwright.js"

# npm pack, installed with nothing else present (no registry is asked: the
# package has no dependencies).
(cd "$work" && npm pack --silent "$npm_dir" >/dev/null)
tarball=$(ls "$work"/glyphwright-*.tgz)
npm install --global --offline --no-audit --no-fund --silent --prefix "$work/prefix" "$tarball" >/dev/null
mkdir "$work/run" && cd "$work/run"
cp /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf .
"$work/prefix/bin/glyphwright" convert --from-font DejaVuSans.ttf --size 16 --levels 16 --chars "Hello, world" \
  --to-zgly npm.zgly --quiet
"$native" convert --from-font DejaVuSans.ttf --size 16 --levels 16 --chars "Hello, world" --to-zgly native.zgly --quiet
cmp npm.zgly native.zgly
# A face given by name: the clear refusal, exit code 1 as for any parameter error.
status=0
"$work/prefix/bin/glyphwright" convert --from-font "DejaVu Sans" --size 16 --to-zgly name.zgly 2>err.txt || status=$?
[ "$status" -eq 1 ] && grep -q "^Parameter Error:" err.txt && grep -q "font file" err.txt && [ ! -e name.zgly ] ||
  { echo "node_test: a face by name was not refused as expected (status $status):"; cat err.txt; exit 1; }
echo "node_test: npm package installed from $(basename "$tarball") converts like the native command line"
