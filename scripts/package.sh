#!/usr/bin/env bash
# Builds the Debian package out/glyphwright_VERSION_ARCH.deb with CPack: a
# Release build installed under /usr, its run-time dependencies read from the
# libraries the programs link (dpkg-shlibdeps). Install it with
#   apt-get install ./out/glyphwright_*.deb
set -euo pipefail
cd "$(dirname "$0")/.."
# dpkg-shlibdeps reads the run-time dependencies.
bash scripts/setup.sh dpkg-dev
build_dir=${PACKAGE_BUILD_DIR:-build-package}
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache); fi
cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr -DGLYPHWRIGHT_BUILD_TESTS=OFF \
  "${launcher[@]}" >/dev/null
cmake --build "$build_dir" -j2 --target glyphwright glyphwright-cli glyphwright_xlor
mkdir -p out
(cd "$build_dir" && cpack -G DEB -B "$PWD/cpack" >/dev/null)
cp "$build_dir"/cpack/glyphwright_*.deb out/
deb=$(ls -t out/glyphwright_*.deb | head -1)
echo "package: $deb"
dpkg-deb --field "$deb" Package Version Architecture Depends
