#!/usr/bin/env bash
# The README as a newcomer sees it: rendered to HTML by Debian's cmark-gfm and
# photographed by headless Chromium into out/readme.png.
#   scripts/readme_preview.sh
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh cmark-gfm chromium
page=$(mktemp -d)
trap 'rm -rf "$page"' EXIT
{
  echo '<!doctype html><html><head><meta charset="utf-8"><style>'
  echo 'body{font-family:sans-serif;max-width:900px;margin:24px auto;line-height:1.45;color:#1f2328}'
  echo 'img{max-width:100%} table{border-collapse:collapse} td,th{border:1px solid #d0d7de;padding:4px 8px}'
  echo 'pre{background:#f6f8fa;padding:10px;overflow:auto} code{background:#f6f8fa}</style></head><body>'
  cmark-gfm -e table README.md
  echo '</body></html>'
} >"$page/index.html"
cp -r docs "$page/"
mkdir -p out
chromium --headless=new --no-sandbox --disable-gpu --hide-scrollbars --window-size=1000,3000 \
  --screenshot="$PWD/out/readme.png" "file://$page/index.html" 2>/dev/null
echo "out/readme.png"
