#!/usr/bin/env bash
# The Windows command line under Wine against the native one:
#   tests/windows/run.sh WINDOWS_EXE NATIVE_CLI
# One Wine prefix in a temporary folder for the whole run (its first start
# takes a while). Prints one line per check and "N passed, N failed".
set -uo pipefail
bash "$(dirname "$0")/../../scripts/setup.sh" wine64 || exit 1
here=$(cd "$(dirname "$0")" && pwd)
exe=$(realpath "$1")
native=$(realpath "$2")
work=$(mktemp -d)
export WINEPREFIX=$work/prefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" LC_ALL=C.UTF-8
unset DISPLAY WAYLAND_DISPLAY
wine=/usr/lib/wine/wine64
cleanup() {
  /usr/lib/wine/wineserver -k 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT

# The .exe as a command that any script can run like the native one.
cat > "$work/glyphwright-cli" <<SH
#!/bin/sh
exec "$wine" "$exe" "\$@"
SH
chmod +x "$work/glyphwright-cli"
win=$work/glyphwright-cli

"$wine" wineboot --init >/dev/null 2>&1
/usr/lib/wine/wineserver -w

passed=0 failed=0
check() { # name, condition result
  if [ "$2" -eq 0 ]; then echo "same     $1"; passed=$((passed + 1)); else echo "DIFFERS  $1"; failed=$((failed + 1)); fi
}

# Runs one command line with both programs in folders of their own holding the
# same inputs; the same status, messages (line ends aside) and output files.
same_run() { # name, output file or -, arguments...
  local name=$1 output=$2; shift 2
  local d
  for side in native windows; do
    d=$work/runs/$name/$side
    mkdir -p "$d"
    cp -r "$work/inputs/." "$d/"
    local cli=$native; [ "$side" = windows ] && cli=$win
    (cd "$d" && "$cli" "$@" >stdout 2>stderr </dev/null; echo $? >status)
    tr -d '\r' <"$d/stdout" >"$d/stdout.txt"
    tr -d '\r' <"$d/stderr" >"$d/stderr.txt"
  done
  local a=$work/runs/$name/native b=$work/runs/$name/windows problem=0
  for f in status stdout.txt stderr.txt; do cmp -s "$a/$f" "$b/$f" || problem=1; done
  if [ "$output" != "-" ]; then cmp -s "$a/$output" "$b/$output" 2>/dev/null || problem=1; fi
  check "$name" $problem
  [ $problem -eq 0 ] || diff "$a/stderr.txt" "$b/stderr.txt" | head -5 | sed 's/^/         /'
}

# (a) the shared table of conversions
bash "$here/../cross/compare.sh" "$native" "$win"
[ $? -eq 0 ] && passed=$((passed + 1)) || failed=$((failed + 1))

mkdir -p "$work/inputs"
cp /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf "$work/inputs/"

# (c) a folder and files with Japanese names and spaces, in and out
jp="日本語 フォルダ"
mkdir -p "$work/inputs/$jp"
cp /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf "$work/inputs/$jp/フォント 1.ttf"
same_run japanese-path "$jp/出力 1.zgly" convert --from-font "$jp/フォント 1.ttf" --size 12 --range 0x20-0x7E \
  --to-zgly "$jp/出力 1.zgly" --quiet
same_run japanese-info - info "$jp/missing 無い.zgly"

# An output that is read only: refused with the message, its content kept.
echo "keep me" > "$work/inputs/locked.zgly"
chmod 444 "$work/inputs/locked.zgly"
same_run read-only locked.zgly convert --from-font DejaVuSans.ttf --size 12 --to-zgly locked.zgly
same_run missing-folder - convert --from-font DejaVuSans.ttf --size 12 --to-zgly nowhere/out.zgly
same_run usage-error - convert --from-font DejaVuSans.ttf --size 12
same_run version - --version
same_run list-orders - list-orders

# (b) installed fonts. Wine lists the host's fonts in the registry (so DejaVu
# Sans and IPAGothic are found there); a family only a copy in the prefix's
# Fonts folder has shows that the folder is read: DejaVu Sans renamed.
python3 - "$work/inputs/WineFolder.ttf" <<'PY'
import sys
data = open("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", "rb").read()
for old, new in (("DejaVu Sans", "Wine Folder"),):
    data = data.replace(old.encode(), new.encode()).replace(old.encode("utf-16-be"), new.encode("utf-16-be"))
open(sys.argv[1], "wb").write(data)
PY
fonts=$WINEPREFIX/drive_c/windows/Fonts
mkdir -p "$fonts"
cp "$work/inputs/WineFolder.ttf" "$fonts/"
"$win" list-fonts > "$work/fonts.txt" 2>&1
tr -d "\r" < "$work/fonts.txt" > "$work/fonts-lf.txt"
grep -q "^Wine Folder	scalable		Book$" "$work/fonts-lf.txt" &&
  grep -q "^IPAGothic	scalable	@IPAGothic	Regular$" "$work/fonts-lf.txt"
check list-fonts $?
# By family name on Windows, by the same file's path natively.
(cd "$work/inputs" && "$native" convert --from-font WineFolder.ttf --size 16 --levels 16 --to-zgly native.zgly --quiet &&
  "$win" convert --from-font "wine folder" --size 16 --levels 16 --to-zgly windows.zgly --quiet &&
  cmp -s native.zgly windows.zgly)
check family-in-fonts-folder $?
rm -rf "$work/inputs"
mkdir -p "$work/inputs"
cp -r "$here/../../examples/game/." "$work/inputs/"
rm -rf "$work/inputs/fonts"
same_run family-in-registry out.zgly convert --from-font "DejaVu Sans" --size 16 --levels 16 --to-zgly out.zgly --quiet
same_run build-recipe - build --jobs 2 --quiet
for f in "$work/runs/build-recipe/native/fonts/"*; do
  cmp -s "$f" "$work/runs/build-recipe/windows/fonts/$(basename "$f")"
  check "build-recipe $(basename "$f")" $?
done

# Ctrl-C stops a build (Wine turns SIGINT into the console's Ctrl-C): the
# running conversion is cancelled through the event its parent hands down,
# the old output stays, no temporary file is left, messages and status as on Linux.
interrupted_build() { # side, command
  local d=$work/cancel/$1 pid bg i status
  mkdir -p "$d"
  cp /usr/share/fonts/opentype/ipafont-gothic/ipag.ttf "$d/"
  for i in 1 2 3 4; do
    printf '[[font]]\nname = "big%s"\nto-zgly = "big%s.zgly"\n[[font.source]]\nfont = "ipag.ttf"\nsize = 140\nlevels = 16\n' $i $i
  done > "$d/glyphwright.toml"
  echo old > "$d/big1.zgly"
  (cd "$d" && exec "$2" build --jobs 1 >stdout 2>stderr </dev/null) &
  bg=$! pid=$!
  # Once its first conversion has started (both name the output in the
  # temporary folder), Ctrl-C goes to the build; the Windows build runs in a
  # process of its own that Wine starts.
  for i in $(seq 300); do
    pgrep -f -- "^glyphwright-cli convert .*${work##*/}.cancel.$1.big1\.zgly" >/dev/null && break
    sleep 0.1
  done
  [ "$1" = windows ] && pid=$(pgrep -f -- "^$exe build --jobs 1")
  kill -INT "$pid"
  wait "$bg"
  status=$?
  (cd "$d" && echo "status $status" && tr -d '\r' <stderr && ls -A) >"$work/cancel/$1.txt"
}
interrupted_build native "$native"
interrupted_build windows "$win"
cmp -s "$work/cancel/native.txt" "$work/cancel/windows.txt" && grep -q "4 cancelled" "$work/cancel/windows.txt" &&
  [ "$(cat "$work/cancel/windows/big1.zgly")" = old ]
check ctrl-c-build $?

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
