#!/usr/bin/env bash
# Makes the inputs of cases.txt in DIR with the native command line.
#   tests/cross/prepare.sh DIR NATIVE_CLI
set -euo pipefail
dir=$1 cli=$2
mkdir -p "$dir"
cd "$dir"
cp /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf DejaVuSans.ttf
cp /usr/share/fonts/opentype/ipafont-gothic/ipag.ttf ipag.ttf
printf 'Hello, world!\nこんにちは、世界。\n漢字とカナ\n' > chars.txt
head -c 3000 DejaVuSans.ttf > broken.ttf
"$cli" convert --from-font DejaVuSans.ttf --size 16 --levels 4 --to-zgly dejavu.zgly --quiet
"$cli" convert --from-font ipag.ttf --size 16 --levels 4 --chars-file chars.txt --to-zgly ipag.zgly --quiet
"$cli" convert --from-zgly dejavu.zgly --to-bmp grid.bmp --to-order Latin1 --quiet
# A ZGLY file cut short inside its first block.
head -c 200 dejavu.zgly > broken.zgly
# An LC Font file of the 8x16 variant: 752 records of a big-endian Shift_JIS
# code and 16 one-byte rows, codes from 0x8140 on with a pattern per code.
python3 - <<'PY'
with open("font.dat", "wb") as f:
    for i in range(752):
        code = 0x8140 + i
        rows = bytes(((code * 7 + r * 13) & 0xFF) if 2 <= r < 14 else 0 for r in range(16))
        f.write(bytes([code >> 8, code & 0xFF]) + rows)
PY
