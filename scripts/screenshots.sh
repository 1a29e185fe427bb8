#!/usr/bin/env bash
# Saves PNGs of every screen (design size and twice it) into build/screenshots,
# and the same in the high-readability font into build/screenshots/leggibili.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
ensure_packages
ensure_build_dir
cmake --build "$build_dir" -j2 --target quadrivo_screenshots
QT_QPA_PLATFORM=offscreen "$build_dir/tools/quadrivo_screenshots" "$build_dir/screenshots"
