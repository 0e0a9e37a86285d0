#!/usr/bin/env bash
# Runs every case of cases.txt with the native command line and with another
# build of it, and compares the output files byte for byte, the messages
# (line ends aside) and the exit codes.
#   tests/cross/compare.sh NATIVE_CLI OTHER_COMMAND...   (commands by absolute path)
# Prints one line per case and "N passed, N failed" at the end; exits 1 on any
# difference.
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
native=$(realpath "$1"); shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
bash "$here/prepare.sh" "$work/inputs" "$native" || { echo "compare: preparing the inputs failed" >&2; exit 1; }

run_case() { # folder, arguments, command...
  local folder=$1 args=$2; shift 2
  mkdir -p "$folder"
  cp "$work/inputs/"* "$folder/"
  # shellcheck disable=SC2086
  (cd "$folder" && "$@" $args >stdout 2>stderr </dev/null; echo $? >status)
  tr -d '\r' <"$folder/stdout" >"$folder/stdout.txt"
  tr -d '\r' <"$folder/stderr" >"$folder/stderr.txt"
}

passed=0 failed=0
while IFS='|' read -r name args output; do
  name=$(echo "$name" | xargs); output=$(echo "$output" | xargs)
  [ -z "$name" ] || [ "${name:0:1}" = "#" ] && continue
  run_case "$work/native/$name" "$args" "$native"
  run_case "$work/other/$name" "$args" "$@"
  problem=""
  for f in status stdout.txt stderr.txt; do
    cmp -s "$work/native/$name/$f" "$work/other/$name/$f" || problem+=" $f"
  done
  if [ "$output" != "-" ]; then
    if [ ! -f "$work/native/$name/$output" ]; then problem+=" (native wrote no $output)"
    elif ! cmp -s "$work/native/$name/$output" "$work/other/$name/$output"; then problem+=" $output"; fi
  elif [ -e "$work/other/$name/out.zgly" ]; then problem+=" (wrote out.zgly)"; fi
  if [ -z "$problem" ]; then
    echo "same     $name"; passed=$((passed + 1))
  else
    echo "DIFFERS  $name:$problem"; failed=$((failed + 1))
    for f in status stderr.txt; do
      diff "$work/native/$name/$f" "$work/other/$name/$f" | head -5 | sed 's/^/         /'
    done
  fi
done < "$here/cases.txt"
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
