#!/usr/bin/env bash
# The floors of the code, and the test that keeps them: the one table of which
# folder may use which, checked against every #include of the product's
# folders and every glyphwright_* library their CMakeLists.txt links.
# Also: no operating-system header or call outside platform/ (whose headers
# stay free of them too), Qt only in ui/, fontconfig only in its catalog file.
# Prints every breach and fails when there is one.
set -euo pipefail
cd "$(dirname "$0")/.."

# folder: the folders it may include and link (besides itself).
declare -A ALLOWED=(
  [platform]=""
  [core]="platform"
  [zgly]="core platform"
  [preview]="zgly core platform"
  [xmlfiles]="zgly core platform"
  [sources]="zgly core platform"
  [bmpfont]="xmlfiles preview zgly core platform"
  [settings]="core platform"
  [cli]="bmpfont sources xmlfiles preview settings zgly core platform"
  [ui]="bmpfont sources xmlfiles preview settings zgly core platform"
)

failures=0
fail() {
  echo "layer breach: $*"
  failures=$((failures + 1))
}

allowed() {  # from to
  [[ $1 == "$2" ]] && return 0
  local f
  for f in ${ALLOWED[$1]}; do [[ $f == "$2" ]] && return 0; done
  return 1
}

sources_of() {
  find "$1" -type f \( -name '*.cpp' -o -name '*.h' -o -name '*.c' \) | sort
}

os_headers='^[[:space:]]*#[[:space:]]*include[[:space:]]*<(unistd\.h|sys/[^>]*|signal\.h|csignal|fcntl\.h|poll\.h|dirent\.h|termios\.h|pwd\.h|spawn\.h|windows\.h|winbase\.h|io\.h|direct\.h|emscripten[^>]*)>'
os_calls='(\b(fork|vfork|execv|execvp|waitpid|isatty|sigaction)[[:space:]]*\(|/proc/)'

for folder in "${!ALLOWED[@]}"; do
  [[ -d $folder ]] || { fail "$folder/ is in the table but missing"; continue; }
  while IFS= read -r file; do
    # Includes of other folders of the tree.
    while IFS=: read -r line to; do
      [[ -n ${ALLOWED[$to]+x} ]] || continue
      allowed "$folder" "$to" || fail "$file:$line includes $to/ ($folder/ may use: ${ALLOWED[$folder]:-nothing})"
    done < <({ grep -nE '^[[:space:]]*#[[:space:]]*include[[:space:]]*"[a-z_]+/' "$file" || true; } |
               sed -E 's/^([0-9]+):[^"]*"([a-z_]+)\/.*/\1:\2/')
    # The operating system only through platform/'s implementations.
    if [[ $folder != platform || $file == platform/*.h ]]; then
      while IFS= read -r hit; do
        fail "$file:${hit%%:*} uses the operating system outside platform/: ${hit#*:}"
      done < <({ grep -nE "$os_headers" "$file" || true; grep -nE "$os_calls" "$file" | grep -vE '^[0-9]+:[[:space:]]*//' || true; })
    fi
    if [[ $folder != ui ]] && grep -qE '^[[:space:]]*#[[:space:]]*include[[:space:]]*<Q' "$file"; then
      fail "$file includes Qt outside ui/"
    fi
    if [[ $file != sources/fontconfig_* ]] && grep -qE '#[[:space:]]*include[[:space:]]*<fontconfig/' "$file"; then
      fail "$file includes fontconfig outside sources/fontconfig_*"
    fi
  done < <(sources_of "$folder")

  # Libraries linked by the folder's CMakeLists.txt.
  cmake=$folder/CMakeLists.txt
  [[ -f $cmake ]] || continue
  for lib in $(tr '\n' ' ' < "$cmake" | { grep -oE 'target_link_libraries\([^)]*\)' || true; } |
                { grep -oE 'glyphwright_[a-z_]+' || true; } | sort -u); do
    to=${lib#glyphwright_}
    [[ -n ${ALLOWED[$to]+x} ]] || continue
    allowed "$folder" "$to" || fail "$cmake links $lib ($folder/ may use: ${ALLOWED[$folder]:-nothing})"
  done
done

if ((failures > 0)); then
  echo "$failures layer breach(es); the table is in scripts/check_layers.sh"
  exit 1
fi
echo "layers: every include and link follows the table"
