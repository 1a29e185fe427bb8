#!/usr/bin/env bash
# The AppStream metainfo validates (--strict: infos fail too, only pedantic
# hints pass) and its newest release is the project's version.
set -euo pipefail
source "${BASH_SOURCE%/*}/common.sh"
need appstreamcli appstream

file=$1 version=$2
appstreamcli validate --no-net --strict "$file" || fail "appstreamcli validate failed for $file"
newest=$(grep -o '<release version="[^"]*"' "$file" | head -n 1 | cut -d'"' -f2)
[ "$newest" = "$version" ] ||
    fail "the newest release in $file is '$newest', the project is $version: add a <release>"
echo "ok: $file"
