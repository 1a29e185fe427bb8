#!/usr/bin/env bash
# The desktop entry passes desktop-file-validate without errors, warnings or
# hints (the validator prints nothing for a clean file; it fails only on errors).
set -euo pipefail
source "${BASH_SOURCE%/*}/common.sh"
need desktop-file-validate desktop-file-utils

file=$1
out=$(desktop-file-validate "$file" 2>&1) || fail "desktop-file-validate failed:"$'\n'"$out"
[ -z "$out" ] || fail "desktop-file-validate reports:"$'\n'"$out"
echo "ok: $file"
