#!/usr/bin/env bash
# Builds Quadrivo and starts it. Installs what is missing on a Debian 12
# machine first (run as root). Needs a graphical session (DISPLAY).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
ensure_packages

ensure_build_dir
cmake --build "$build_dir" -j2 --target Quadrivo
exec "$build_dir/app/Quadrivo" "$@"
