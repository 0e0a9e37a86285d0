#!/usr/bin/env bash
# Builds the Debian package out/glyphwright_VERSION_ARCH.deb with CPack: a
# Release build installed under /usr, its run-time dependencies read from the
# libraries the programs link (dpkg-shlibdeps), checked by lintian. Install it with
#   apt-get install ./out/glyphwright_*.deb
# MAINTAINER="Name <address>" sets the package's maintainer and changelog signature.
set -euo pipefail
cd "$(dirname "$0")/.."
# dpkg-shlibdeps reads the run-time dependencies; lintian checks the result.
bash scripts/setup.sh dpkg-dev lintian
build_dir=${PACKAGE_BUILD_DIR:-build-package}
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache); fi
cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr -DGLYPHWRIGHT_BUILD_TESTS=OFF \
  "$([ -n "${MAINTAINER:-}" ] && echo "-DGLYPHWRIGHT_MAINTAINER=$MAINTAINER" || echo -UGLYPHWRIGHT_MAINTAINER)" "${launcher[@]}" >/dev/null
cmake --build "$build_dir" -j2 --target glyphwright glyphwright-cli glyphwright_xlor glyphwright_filters glyphwright_package_docs
mkdir -p out
rm -f out/glyphwright_*.deb
(cd "$build_dir" && cpack -G DEB -B "$PWD/cpack" >/dev/null)
cp "$build_dir"/cpack/glyphwright_*.deb out/
deb=$(ls -t out/glyphwright_*.deb | head -1)
echo "package: $deb"
dpkg-deb --field "$deb" Package Version Architecture Depends
# Debian's own checker: any error or warning fails the packaging.
if ! lintian --fail-on error,warning "$deb" >out/lintian.txt 2>&1; then
  grep -v 'root privileges' out/lintian.txt >&2
  echo "package: lintian found problems" >&2
  exit 1
fi
echo "lintian: no errors or warnings"
