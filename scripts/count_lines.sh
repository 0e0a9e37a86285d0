#!/usr/bin/env bash
# Prints the size of the test suite against the code it tests: non-blank lines that are
# not only comments, in tests/ (C++ sources and headers, CMakeLists.txt, scripts) against
# platform/ core/ zgly/ preview/ xmlfiles/ sources/ bmpfont/ settings/ ui/ cli/.
# Left out: the generated code-page tables (core/codepage_tables.cpp), the fuzzer seeds
# (tests/fuzz-corpus/) and fixture data files (tests/**/*.txt reference images).
# Comments: whole lines of // ..., lines inside /* ... */, and # lines in CMake files.
set -euo pipefail
cd "$(dirname "$0")/.."

count() {
  # $@: files; prints the number of code lines in them
  awk '
    FNR == 1 { inblock = 0; cmake = (FILENAME ~ /CMakeLists\.txt$|\.cmake$|\.sh$/) }
    {
      line = $0
      gsub(/^[ \t]+|[ \t\r]+$/, "", line)
      if (inblock) {
        if (index(line, "*/") == 0) next
        line = substr(line, index(line, "*/") + 2); inblock = 0
        gsub(/^[ \t]+/, "", line)
      }
      while (substr(line, 1, 2) == "/*") {
        end = index(substr(line, 3), "*/")
        if (end == 0) { inblock = 1; line = ""; break }
        line = substr(line, end + 4); gsub(/^[ \t]+/, "", line)
      }
      if (line == "") next
      if (substr(line, 1, 2) == "//") next
      if (cmake && substr(line, 1, 1) == "#") next
      n++
    }
    END { print n + 0 }' "$@"
}

files_in() {
  find "$@" -type f \( -name '*.cpp' -o -name '*.h' -o -name '*.hpp' -o -name '*.cc' \
    -o -name 'CMakeLists.txt' -o -name '*.cmake' -o -name '*.sh' \) \
    -not -path 'tests/fuzz-corpus/*' -not -path 'core/codepage_tables.cpp' | sort
}

mapfile -t test_files < <(files_in tests)
mapfile -t code_files < <(files_in platform core zgly preview xmlfiles sources bmpfont settings ui cli)
tests=$(count "${test_files[@]}")
code=$(count "${code_files[@]}")
awk -v t="$tests" -v c="$code" 'BEGIN { printf "tests %d  code %d  ratio %.1f %%\n", t, c, 100 * t / c }'
