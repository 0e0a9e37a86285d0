#!/usr/bin/env bash
# Cross-builds the command line for 64-bit Windows with Debian's mingw-w64 and
# writes out/windows/glyphwright-<version>-win64.zip: glyphwright-cli.exe with
# its shipped orders and filters beside it, the README and the licences of the
# libraries linked into it.
#
# FreeType, HarfBuzz, libpng, expat and brotli are built from Debian's source packages
# into the cache (scripts/deps.sh), each keyed by its version and the compiler,
# so that a second run builds only glyphwright itself. zlib is Debian's
# libz-mingw-w64-dev. Everything is linked statically: the .exe needs no DLL.
#
#   scripts/windows.sh            build and zip
#   WINDOWS_BUILD_DIR=...         the cross build folder (default build-windows)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
bash scripts/setup.sh g++-mingw-w64-x86-64 libz-mingw-w64-dev dpkg-dev zip
# shellcheck source=scripts/deps.sh
source scripts/deps.sh

triple=x86_64-w64-mingw32
toolchain=$root/cmake/mingw-w64-x86_64.cmake
compiler="$($triple-gcc-posix -dumpfullversion) mingw-w64 $(dpkg-query -W -f='${Version}' mingw-w64-x86-64-dev)"
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi

prefixes=()
# build_dep PKG SUBFOLDER CMAKE-ARGS...: builds Debian's PKG once per version
# and compiler into the cache; adds its prefix to the list. $after_configure,
# when set, runs in the build folder between configuring and building;
# $after_install in the installed prefix.
build_dep() {
  local pkg=$1 sub=$2; shift 2
  local src version prefix key work found
  src=$(deps_source "$pkg")
  version=$(deps_version "$pkg")
  prefix=$deps_cache/mingw/$pkg-$version
  key="$version | $compiler | $*"
  if ! deps_stamp_ok "$prefix" "$key"; then
    echo "windows: building $pkg $version for $triple" >&2
    work=$deps_cache/mingw/build/$pkg
    rm -rf "$prefix" "$work"
    mkdir -p "$work"
    found=$(IFS=';'; echo "${prefixes[*]:-}")
    cmake -S "$src/$sub" -B "$work" -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
      -DGLYPHWRIGHT_MINGW_PREFIXES="$found" -DCMAKE_PREFIX_PATH="$found" \
      -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF \
      "${launcher[@]}" "$@" >"$work.log" 2>&1 || { cat "$work.log" >&2; return 1; }
    if [ -n "${after_configure:-}" ]; then (cd "$work" && eval "$after_configure"); fi
    { cmake --build "$work" -j2 && cmake --install "$work"; } >>"$work.log" 2>&1 \
      || { tail -40 "$work.log" >&2; return 1; }
    if [ -n "${after_install:-}" ]; then (cd "$prefix" && eval "$after_install"); fi
    rm -rf "$work" "$work.log"
    deps_stamp "$prefix" "$key"
  fi
  prefixes+=("$prefix")
}

# Brotli (WOFF2 fonts) always builds DLLs too; its static archives take the
# plain names, so that FreeType links them.
after_install='rm -f bin/*.dll lib/*.dll.a && for l in common dec enc; do mv lib/libbrotli$l-static.a lib/libbrotli$l.a; done' \
  build_dep brotli . -DBROTLI_DISABLE_TESTS=ON
build_dep libpng1.6 . -DPNG_SHARED=OFF -DPNG_STATIC=ON -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF
# As Debian builds it for Linux: zlib, PNG and brotli, no bzip2, no HarfBuzz.
build_dep freetype . -DFT_REQUIRE_ZLIB=ON -DFT_REQUIRE_PNG=ON -DFT_REQUIRE_BROTLI=ON -DFT_DISABLE_BZIP2=ON \
  -DFT_DISABLE_HARFBUZZ=ON
build_dep harfbuzz . -DHB_HAVE_FREETYPE=ON -DHB_HAVE_GLIB=OFF -DHB_HAVE_ICU=OFF \
  -DHB_HAVE_GOBJECT=OFF -DHB_BUILD_SUBSET=OFF -DHB_BUILD_UTILS=OFF
# Its CMake build defines XML_DTD empty, which Debian's patched source tests
# with "#if XML_DTD == 1".
after_configure='sed -i "s/^#define XML_DTD$/#define XML_DTD 1/" expat_config.h' \
  build_dep expat expat -DEXPAT_SHARED_LIBS=OFF -DEXPAT_BUILD_TOOLS=OFF -DEXPAT_BUILD_EXAMPLES=OFF \
  -DEXPAT_BUILD_TESTS=OFF -DEXPAT_BUILD_DOCS=OFF -DEXPAT_BUILD_PKGCONFIG=ON

# toml++ is headers only: Debian's headers, seen through a prefix of their own
# so that the cross build never looks into the host's /usr/include.
toml_version=$(dpkg-query -W -f='${Version}' libtomlplusplus-dev)
toml=$deps_cache/mingw/tomlplusplus-$toml_version
if ! deps_stamp_ok "$toml" "$toml_version"; then
  rm -rf "$toml"
  mkdir -p "$toml/include" "$toml/lib/cmake/tomlplusplus"
  cp -r /usr/include/toml++ "$toml/include/"
  cat > "$toml/lib/cmake/tomlplusplus/tomlplusplusConfig.cmake" <<'EOF'
add_library(tomlplusplus::tomlplusplus INTERFACE IMPORTED)
set_target_properties(tomlplusplus::tomlplusplus PROPERTIES
  INTERFACE_INCLUDE_DIRECTORIES "${CMAKE_CURRENT_LIST_DIR}/../../../include")
EOF
  deps_stamp "$toml" "$toml_version"
fi
prefixes+=("$toml")

# The project itself: the command line only, no window, no tests, fonts from
# the Windows font folders instead of fontconfig.
build=${WINDOWS_BUILD_DIR:-build-windows}
pkgconfig=/usr/$triple/lib/pkgconfig
for p in "${prefixes[@]}"; do
  for d in "$p/lib/pkgconfig" "$p/share/pkgconfig"; do [ -d "$d" ] && pkgconfig+="${pkgconfig:+:}$d"; done
done
# Static archives link in dependency order: the libraries FreeType and libpng
# need come once more at the end of the line.
libs="-lharfbuzz -lfreetype -lpng16 -lbrotlidec -lbrotlicommon -lz"
found=$(IFS=';'; echo "${prefixes[*]}")
PKG_CONFIG_LIBDIR=$pkgconfig PKG_CONFIG_PATH="" cmake -S . -B "$build" \
  -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DGLYPHWRIGHT_MINGW_PREFIXES="$found" \
  -DCMAKE_PREFIX_PATH="$found" -DCMAKE_BUILD_TYPE=Release \
  -DGLYPHWRIGHT_BUILD_UI=OFF -DGLYPHWRIGHT_BUILD_TESTS=OFF -DGLYPHWRIGHT_FONTCONFIG=OFF \
  -DCMAKE_CXX_FLAGS="-DXML_STATIC" -DCMAKE_C_FLAGS="-DXML_STATIC" \
  -DCMAKE_EXE_LINKER_FLAGS="-static -static-libgcc -static-libstdc++ $(printf -- '-L%s/lib ' "${prefixes[@]}")" \
  -DCMAKE_CXX_STANDARD_LIBRARIES="$libs" \
  "${launcher[@]}" >/dev/null
cmake --build "$build" -j2 --target glyphwright-cli glyphwright_xlor glyphwright_filters

# The zip: the program with its data where it looks for it, beside itself.
version=$(sed -n 's/^project(glyphwright VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
name=glyphwright-$version-win64
stage=$root/out/windows/$name
rm -rf "$stage" "$root/out/windows/$name.zip"
mkdir -p "$stage/licenses"
cp "$build/bin/glyphwright-cli.exe" "$stage/"
$triple-strip "$stage/glyphwright-cli.exe"
cp -r "$build/bin/xlor" "$build/bin/filters" "$stage/"
cp README.md LICENSE "$stage/"
# The manual the README links to.
mkdir -p "$stage/docs"
cp docs/*.md docs/*.png "$stage/docs/"
for pkg in freetype harfbuzz libpng1.6 expat brotli; do
  cp "$(deps_source "$pkg")/debian/copyright" "$stage/licenses/$pkg.txt"
done
cp /usr/share/doc/libz-mingw-w64-dev/copyright "$stage/licenses/zlib.txt"
cp /usr/share/doc/libtomlplusplus-dev/copyright "$stage/licenses/tomlplusplus.txt"
# The C and C++ run-time libraries of mingw-w64 and GCC linked into the .exe.
cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$stage/licenses/mingw-w64.txt"
cp /usr/share/doc/gcc-mingw-w64-base/copyright "$stage/licenses/gcc-runtime.txt"
(cd "$root/out/windows" && zip -qr9 "$name.zip" "$name")
echo "windows: out/windows/$name.zip ($(stat -c %s "$root/out/windows/$name.zip") bytes)"
