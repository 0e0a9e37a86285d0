#!/usr/bin/env bash
# Installs whatever is missing of glyphwright's build and test dependencies
# (Debian, as root). Fast and silent when everything is there. A script that
# needs more than building and testing names its extra packages as arguments.
set -euo pipefail

packages=(
  cmake g++ make pkg-config python3
  libgtest-dev libexpat1-dev libfreetype-dev libfontconfig-dev libharfbuzz-dev libpng-dev
  libtomlplusplus-dev
  qt6-base-dev
  fonts-dejavu-core fonts-ipafont-gothic
  fonts-inter-variable fonts-noto-color-emoji
  "$@"
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -gt 0 ]; then
  if [ "$(id -u)" -ne 0 ]; then
    echo "setup: missing packages: ${missing[*]} (run as root to install them)" >&2
    exit 1
  fi
  echo "setup: installing ${missing[*]}" >&2
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq >/dev/null
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
