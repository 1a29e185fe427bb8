#!/usr/bin/env bash
# cmake --install into a temporary prefix holds exactly the expected files, the
# tree validates for AppStream, and the installed program starts.
#   install.sh <build dir> <version> <app id> <icon size>...
set -euo pipefail
source "${BASH_SOURCE%/*}/common.sh"
need appstreamcli appstream

build=$1 version=$2 id=$3
shift 3
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
prefix=$tmp/root/usr

cmake --install "$build" --prefix "$prefix" >"$tmp/install.log" 2>&1 ||
    { cat "$tmp/install.log"; fail "cmake --install $build failed"; }
(cd "$prefix" && find . ! -type d | sed 's|^\./||') | check_file_list "cmake --install" "$id" "$@"
check_tree "$prefix" "$id" "$@"
# The metainfo finds its desktop entry in the installed tree.
appstreamcli validate-tree --no-net --strict "$tmp/root" || fail "appstreamcli validate-tree failed"
check_starts "$prefix/bin/Quadrivo" "$tmp/scratch"
check_manual_and_options "$prefix" "$version"
echo "ok: installed and started from $prefix"
