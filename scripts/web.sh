#!/usr/bin/env bash
# Builds the WebAssembly targets: the static site out/web/ and the npm package
# out/npm/. FreeType, HarfBuzz, libpng, zlib and expat are built from Debian's
# own source packages into a cache outside the repository, keyed by their
# versions and the compiler's, so a second run reuses them.
#   scripts/web.sh            (BUILD_DIR, default build-web, holds the CMake build)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
extra=(emscripten dpkg-dev)
command -v node >/dev/null || extra+=(nodejs)
command -v npm >/dev/null || extra+=(npm)
bash scripts/setup.sh "${extra[@]}"
# shellcheck source=scripts/deps.sh
source scripts/deps.sh

# Emscripten's optimizer needs acorn, which Debian ships for its own Node.
export NODE_PATH=${NODE_PATH:+$NODE_PATH:}/usr/share/nodejs
emver=$(emcc --version | sed -n '1s/.*) \([0-9.]*\).*/\1/p')
wasm_flags="-O2"

# Configures, builds and installs one CMake project for WebAssembly, unless the
# cache already holds it for KEY. Prints the install folder.
wasm_lib() { # name, key, source folder, cmake arguments...
  local name=$1 key=$2 src=$3; shift 3
  local prefix="$deps_cache/wasm/$name" build="$deps_cache/wasm/build/$name"
  if ! deps_stamp_ok "$prefix" "$key"; then
    echo "web: building $name for WebAssembly" >&2
    rm -rf "$prefix" "$build"; mkdir -p "$build"
    emcmake cmake -S "$src" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
      -DCMAKE_C_FLAGS="$wasm_flags" -DCMAKE_CXX_FLAGS="$wasm_flags" \
      -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF "$@" >"$build.log" 2>&1 ||
      { tail -30 "$build.log" >&2; return 1; }
    [ -z "${after_configure:-}" ] || (cd "$build" && eval "$after_configure")
    { cmake --build "$build" -j2 && cmake --install "$build"; } >>"$build.log" 2>&1 ||
      { tail -30 "$build.log" >&2; return 1; }
    deps_stamp "$prefix" "$key"
    rm -rf "$build"
  fi
  echo "$prefix"
}

# Found packages must come from our prefixes, not the build machine.
find_here=(-DCMAKE_FIND_ROOT_PATH_MODE_PACKAGE=BOTH -DCMAKE_FIND_ROOT_PATH_MODE_LIBRARY=BOTH
  -DCMAKE_FIND_ROOT_PATH_MODE_INCLUDE=BOTH)

zlib_src=$(deps_source zlib); zlib_key="zlib $(deps_version zlib) emcc $emver $wasm_flags"
zlib_version=$(deps_version zlib)
zlib_prefix="$deps_cache/wasm/zlib-${zlib_version//:/_}"
if ! deps_stamp_ok "$zlib_prefix" "$zlib_key"; then
  # zlib's CMake build always adds a shared library; the static one is all we need.
  echo "web: building zlib for WebAssembly" >&2
  rm -rf "$zlib_prefix"; mkdir -p "$zlib_prefix/lib" "$zlib_prefix/include"
  (cd "$zlib_src" && for f in adler32 compress crc32 deflate gzclose gzlib gzread gzwrite infback \
    inffast inflate inftrees trees uncompr zutil; do
    emcc $wasm_flags -DHAVE_UNISTD_H -c "$f.c" -o "$zlib_prefix/lib/$f.o"; done)
  emar rcs "$zlib_prefix/lib/libz.a" "$zlib_prefix/lib/"*.o
  rm -f "$zlib_prefix/lib/"*.o
  cp "$zlib_src/zlib.h" "$zlib_src/zconf.h" "$zlib_prefix/include/"
  deps_stamp "$zlib_prefix" "$zlib_key"
fi
zlib_args=(-DZLIB_INCLUDE_DIR="$zlib_prefix/include" -DZLIB_LIBRARY="$zlib_prefix/lib/libz.a")

png_prefix=$(wasm_lib "libpng-$(deps_version libpng1.6)" "png $(deps_version libpng1.6) $zlib_key" \
  "$(deps_source libpng1.6)" "${find_here[@]}" "${zlib_args[@]}" -DPNG_SHARED=OFF -DPNG_TESTS=OFF \
  -DPNG_EXECUTABLES=OFF -DPNG_HARDWARE_OPTIMIZATIONS=OFF -DSKIP_INSTALL_PROGRAMS=ON)
# Its CMake build defines XML_DTD empty, which the source's "#if XML_DTD == 1" rejects.
expat_prefix=$(after_configure='sed -i "s/^#define XML_DTD$/#define XML_DTD 1/" expat_config.h' wasm_lib "expat-$(deps_version expat)" "expat $(deps_version expat) emcc $emver $wasm_flags" \
  "$(deps_source expat)/expat" -DEXPAT_BUILD_TOOLS=OFF -DEXPAT_BUILD_EXAMPLES=OFF -DEXPAT_BUILD_TESTS=OFF \
  -DEXPAT_BUILD_DOCS=OFF -DEXPAT_SHARED_LIBS=OFF -DEXPAT_BUILD_PKGCONFIG=ON)
# FreeType flattens curves by a different method where it does not find a
# 64-bit CPU, which moves some grey pixels; the method of the native build
# keeps the glyphs byte-identical. A copy of the source gets that one change.
ft_key="freetype $(deps_version freetype) dda $zlib_key"
ft_src="$deps_cache/wasm/build/freetype-src"
if ! deps_stamp_ok "$deps_cache/wasm/freetype-$(deps_version freetype)" "$ft_key"; then
  rm -rf "$ft_src"; mkdir -p "$(dirname "$ft_src")"; cp -r "$(deps_source freetype)" "$ft_src"
  sed -i '0,/^#  define BEZIER_USE_DDA  0$/s//#  define BEZIER_USE_DDA  1/' "$ft_src/src/smooth/ftgrays.c"
  grep -q '^#  define BEZIER_USE_DDA  1$' "$ft_src/src/smooth/ftgrays.c" ||
    { echo "web: FreeType's curve method switch has moved" >&2; exit 1; }
fi
ft_prefix=$(wasm_lib "freetype-$(deps_version freetype)" "$ft_key" "$ft_src" \
  "${find_here[@]}" "${zlib_args[@]}" -DFT_REQUIRE_ZLIB=ON -DFT_DISABLE_BZIP2=ON -DFT_DISABLE_PNG=ON \
  -DFT_DISABLE_HARFBUZZ=ON -DFT_DISABLE_BROTLI=ON)
hb_prefix=$(wasm_lib "harfbuzz-$(deps_version harfbuzz)" "harfbuzz $(deps_version harfbuzz) $ft_key" \
  "$(deps_source harfbuzz)" "${find_here[@]}" -DHB_HAVE_FREETYPE=ON -DHB_HAVE_GLIB=OFF \
  -DHB_HAVE_ICU=OFF -DHB_HAVE_GOBJECT=OFF -DHB_BUILD_SUBSET=OFF -DHB_BUILD_UTILS=OFF \
  -DFREETYPE_INCLUDE_DIRS="$ft_prefix/include/freetype2" -DFREETYPE_LIBRARY="$ft_prefix/lib/libfreetype.a")

# toml++ is headers only; a copy keeps the build machine's /usr/include out of
# the WebAssembly compile.
toml_prefix="$deps_cache/wasm/tomlplusplus"
toml_key="toml++ $(dpkg-query -W -f='${Version}' libtomlplusplus-dev)"
if ! deps_stamp_ok "$toml_prefix" "$toml_key"; then
  rm -rf "$toml_prefix"; mkdir -p "$toml_prefix/include"
  cp -r /usr/include/toml++ "$toml_prefix/include/"
  cat > "$toml_prefix/tomlplusplusConfig.cmake" <<EOF
add_library(tomlplusplus::tomlplusplus INTERFACE IMPORTED)
set_target_properties(tomlplusplus::tomlplusplus PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "$toml_prefix/include")
EOF
  deps_stamp "$toml_prefix" "$toml_key"
fi

# The project itself: no window, no tests, fonts as files only.
build_dir=${BUILD_DIR:-build-web}
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache); fi
# emcmake sets pkg-config's own paths; CMake adds each prefix's lib/pkgconfig.
emcmake cmake -S . -B "$build_dir" -G Ninja \
  -DCMAKE_BUILD_TYPE=Release "${launcher[@]}" "${find_here[@]}" \
  -DCMAKE_PREFIX_PATH="$ft_prefix;$hb_prefix;$expat_prefix;$png_prefix" \
  -DGLYPHWRIGHT_BUILD_UI=OFF -DGLYPHWRIGHT_BUILD_TESTS=OFF -DGLYPHWRIGHT_FONTCONFIG=OFF \
  -DFREETYPE_INCLUDE_DIRS="$ft_prefix/include/freetype2" -DFREETYPE_LIBRARY="$ft_prefix/lib/libfreetype.a" \
  -DPNG_PNG_INCLUDE_DIR="$png_prefix/include" -DPNG_LIBRARY="$png_prefix/lib/libpng.a" "${zlib_args[@]}" \
  -Dtomlplusplus_DIR="$toml_prefix" -DCMAKE_CXX_FLAGS="-fwasm-exceptions" \
  -DCMAKE_EXE_LINKER_FLAGS="-fwasm-exceptions $zlib_prefix/lib/libz.a" \
  ${GLYPHWRIGHT_WEB_CMAKE_ARGS:-} >/dev/null
cmake --build "$build_dir" -j2 --target glyphwright-cli glyphwright-web

# The npm package: the command line for Node with its glyph order and filter
# files beside it, where it looks for them.
version=$(sed -n 's/^project(glyphwright VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
rm -rf out/npm; mkdir -p out/npm/lib
cp -r web/npm/bin web/npm/README.md out/npm/
sed "s/@VERSION@/$version/" web/npm/package.json.in > out/npm/package.json
cp "$build_dir/bin/glyphwright-cli.js" "$build_dir/bin/glyphwright-cli.wasm" out/npm/lib/
cp -r data/xlor data/filters out/npm/lib/
# Our licence, and those of the libraries compiled into the WebAssembly.
licences() {
  cp LICENSE "$1/LICENSE"
  mkdir -p "$1/licenses"
  for pkg in freetype harfbuzz libpng1.6 expat zlib; do
    cp "$(deps_source "$pkg")/debian/copyright" "$1/licenses/$pkg.txt"
  done
}
licences out/npm

# The site: the page, its worker and the command line's browser module.
rm -rf out/web; mkdir -p out/web
cp web/site/* out/web/
cp "$build_dir/bin/glyphwright-web.js" "$build_dir/bin/glyphwright-web.wasm" out/web/
licences out/web
echo "web: out/web ($(du -sk out/web | cut -f1) KiB) and out/npm ready" >&2
