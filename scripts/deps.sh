# Fetching and caching the third-party libraries the cross targets (WebAssembly,
# Windows) build from Debian's own source packages. Source this file; it defines:
#
#   deps_cache                 the cache folder (outside the repository)
#   deps_source PKG            fetch and unpack Debian's source package PKG once;
#                              prints the unpacked source folder
#   deps_version PKG           the version deps_source unpacked (a cache key)
#   deps_stamp_ok DIR KEY      true when DIR was built for KEY (versions + flags)
#   deps_stamp DIR KEY         mark DIR as built for KEY
#
# Nothing is downloaded from anywhere but Debian's archive, and the system's own
# apt sources are left as they are: a private apt configuration that only knows
# deb-src lines is used for the one call that needs them.

deps_cache=${GLYPHWRIGHT_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/glyphwright}

_deps_apt_opts() {
  local apt="$deps_cache/apt"
  echo "-o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts=$apt/parts" \
    "-o Dir::State::Lists=$apt/lists -o Dir::Cache=$apt/cache -o APT::Sandbox::User=root"
}

# Makes the private deb-src configuration and its package lists, once a day.
_deps_apt_ready() {
  local apt="$deps_cache/apt"
  mkdir -p "$apt/parts" "$apt/lists/partial" "$apt/cache/archives/partial"
  if [ ! -s "$apt/parts/debian.sources" ]; then
    local f
    for f in /etc/apt/sources.list.d/*.sources; do
      [ -e "$f" ] || continue
      sed 's/^Types:.*/Types: deb-src/' "$f"
      echo
    done > "$apt/parts/debian.sources"
    if [ ! -s "$apt/parts/debian.sources" ] && [ -s /etc/apt/sources.list ]; then
      grep '^deb ' /etc/apt/sources.list | sed 's/^deb /deb-src /' > "$apt/parts/debian.list"
      rm -f "$apt/parts/debian.sources"
    fi
  fi
  if [ -z "$(find "$apt/lists" -maxdepth 1 -name '*Sources*' -mtime -1 2>/dev/null | head -1)" ]; then
    # shellcheck disable=SC2046
    apt-get $(_deps_apt_opts) update -qq >/dev/null
  fi
}

# Every version of PKG the archive lists, newest first.
_deps_versions() {
  _deps_apt_ready
  # shellcheck disable=SC2046
  apt-cache $(_deps_apt_opts) showsrc "$1" | awk '/^Version:/ {print $2}' | sort -rV | uniq
}

# The version deps_source unpacked (or would fetch first).
deps_version() {
  local d
  d=$(deps_source "$1") || return 1
  basename "$(dirname "$d")" | sed "s/^$1_//"
}

deps_source() {
  local pkg=$1 version dir
  # A version already unpacked is used as it is.
  for dir in "$deps_cache/src/${pkg}_"*; do
    if [ -f "$dir/.unpacked" ]; then
      find "$dir" -mindepth 1 -maxdepth 1 -type d | head -1
      return 0
    fi
  done
  # The newest listed version first; a mirror may lack a security update's
  # source, so an older one of the same release is the fallback.
  for version in $(_deps_versions "$pkg"); do
    dir="$deps_cache/src/${pkg}_$version"
    rm -rf "$dir"
    mkdir -p "$dir"
    # shellcheck disable=SC2046
    if (cd "$dir" && apt-get $(_deps_apt_opts) source -qq "$pkg=$version" >/dev/null 2>&1); then
      touch "$dir/.unpacked"
      find "$dir" -mindepth 1 -maxdepth 1 -type d | head -1
      return 0
    fi
    rm -rf "$dir"
  done
  echo "deps: could not fetch the source package $pkg" >&2
  return 1
}

deps_stamp_ok() { [ -f "$1/.built" ] && [ "$(cat "$1/.built")" = "$2" ]; }
deps_stamp() { mkdir -p "$1" && printf '%s' "$2" > "$1/.built"; }
