#!/usr/bin/env bash
# Builds the libFuzzer targets (clang, ASan + UBSan) in build-fuzz/ and runs them.
#   scripts/fuzz.sh TARGET SECONDS   run one target (e.g. bmp_loader) for SECONDS
#   scripts/fuzz.sh all SECONDS      run every target in turn, SECONDS each
#   scripts/fuzz.sh list             name the targets
# Each target's corpus grows in build-fuzz/corpus/<target>, seeded from the
# generated seeds and tests/fuzz-corpus/<target>/; a finding is written to
# build-fuzz/findings/<target>/ and fails the script.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
bash scripts/setup.sh
build=$root/build-fuzz
targets=(bmp_loader grid_picture grid_reader order_loader filter_loader zgly_reader zgly_info lc_reader settings_ini
  recipe chars_file settings_replay)

usage() { sed -n '2,8p' "$0" | sed 's/^# \{0,1\}//'; exit 2; }
[[ $# -ge 1 ]] || usage
if [[ $1 == list ]]; then printf '%s\n' "${targets[@]}"; exit 0; fi
[[ $# -eq 2 && $2 =~ ^[0-9]+$ ]] || usage
if [[ $1 == all ]]; then
  run=("${targets[@]}")
else
  [[ " ${targets[*]} " == *" $1 "* ]] || { echo "unknown target: $1 (see: $0 list)" >&2; exit 2; }
  run=("$1")
fi
seconds=$2

# clang and its fuzzer runtime are needed only here; install them when missing.
probe=$(mktemp -d)
trap 'rm -rf "$probe"' EXIT
echo 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }' >"$probe/p.cpp"
if ! clang++ -fsanitize=fuzzer,address,undefined "$probe/p.cpp" -o "$probe/p" 2>/dev/null; then
  echo "Installing clang and its fuzzer runtime..."
  sudo=""; [[ $(id -u) -ne 0 ]] && sudo=sudo
  # A fresh machine may not have read the package lists yet.
  $sudo apt-get update -qq >/dev/null
  $sudo apt-get install -y -qq clang libclang-rt-dev >/dev/null 2>&1 ||
    $sudo apt-get install -y -qq clang libclang-rt-14-dev >/dev/null
fi

CC=clang CXX=clang++ cmake -S . -B "$build" -DGLYPHWRIGHT_FUZZ=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -g" -DCMAKE_C_FLAGS_RELWITHDEBINFO="-O1 -g" >/dev/null
cmake --build "$build" -j2 --target fuzz_make_seeds "${run[@]/#/fuzz_}"

rm -rf "$build/seeds"
"$build/bin/fuzz_make_seeds" "$build/seeds" "$root/data/xlor"

export ASAN_OPTIONS="detect_leaks=1:allocator_may_return_null=0:strict_string_checks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$root/scripts/lsan.supp:print_suppressions=0"
status=0
summary=()
for t in "${run[@]}"; do
  corpus=$build/corpus/$t findings=$build/findings/$t log=$build/logs/$t.log
  mkdir -p "$corpus" "$findings" "$build/logs"
  for src in "$build/seeds/$t" "$root/tests/fuzz-corpus/$t"; do
    [[ -d $src ]] && cp -n "$src"/* "$corpus"/ 2>/dev/null || true
  done
  dict=()
  [[ -f tests/fuzz-corpus/$t.dict ]] && dict=(-dict="$root/tests/fuzz-corpus/$t.dict")
  echo "== $t: ${seconds}s, corpus $(ls "$corpus" | wc -l) files"
  before=$(ls "$findings" | wc -l)
  set +e
  "$build/bin/fuzz_$t" "$corpus" "${dict[@]}" -max_total_time="$seconds" -rss_limit_mb=2048 -timeout=10 \
    -max_len=16384 -print_final_stats=1 -artifact_prefix="$findings/" >"$log" 2>&1
  rc=$?
  set -e
  execs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' | tail -1)
  last=$(grep -E '^#[0-9]+' "$log" | tail -1)
  cov=$(grep -o 'cov: [0-9]*' <<<"$last" | grep -o '[0-9]*' || true)
  ft=$(grep -o 'ft: [0-9]*' <<<"$last" | grep -o '[0-9]*' || true)
  new=$(( $(ls "$findings" | wc -l) - before ))
  line="$t: ${execs:-?} executions, cov ${cov:-?}, ft ${ft:-?}, corpus $(ls "$corpus" | wc -l), findings $new"
  if [[ $rc -ne 0 || $new -ne 0 ]]; then
    status=1
    line="$line (exit $rc; see $log and $findings/)"
    grep -m1 -A12 -E '^==[0-9]+==ERROR|runtime error|deadly signal' "$log" || true
  fi
  echo "$line"
  summary+=("$line")
done
echo "== summary"
printf '%s\n' "${summary[@]}"
exit $status
