#!/usr/bin/env bash
# Builds Quadrivo and runs every test, headless; then builds everything again
# with AddressSanitizer and UndefinedBehaviorSanitizer (build-asan/) and runs
# the same tests there, where any sanitizer report fails the test.
# Installs what is missing on a Debian 12 machine first (run as root). Quick
# when everything is there. QUADRIVO_SANITIZE=0 skips the second pass.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
ensure_packages

ensure_build_dir -DQUADRIVO_LINE_TABLES=ON
cmake --build "$build_dir" -j2
(cd "$build_dir" && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2 "$@")

if [ "${QUADRIVO_SANITIZE:-1}" != 0 ]; then
    BUILD_DIR=build-asan BUILD_TYPE=Debug ensure_build_dir -DQUADRIVO_SANITIZE=ON -DQUADRIVO_LINE_TABLES=ON
    cmake --build "$build_dir" -j2
    (cd "$build_dir" && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2 "$@")
fi
