#!/usr/bin/env bash
# Builds Quadrivo and runs every test, headless. Installs what is missing on a
# Debian 12 machine first (run as root). Quick when everything is there.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
ensure_packages

ensure_build_dir
cmake --build "$build_dir" -j2
cd "$build_dir"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2 "$@"
