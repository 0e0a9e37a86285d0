#!/usr/bin/env bash
# Installs what is missing, builds, and runs the main job.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh
echo "demo: glyphwright is built in build/bin; the conversion front ends arrive with the next steps."
