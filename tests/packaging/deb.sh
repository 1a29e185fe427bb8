#!/usr/bin/env bash
# cpack -G DEB builds the package: its name, version, section and dependencies
# (shared libraries and what the program runs or reads), its files, and the
# program, extracted, starts.
#   deb.sh <build dir> <version> <app id> <icon size>...
set -euo pipefail
source "${BASH_SOURCE%/*}/common.sh"
need dpkg-deb dpkg
need dpkg-shlibdeps dpkg-dev

build=$1 version=$2 id=$3
shift 3
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

(cd "$tmp" && cpack -G DEB --config "$build/CPackConfig.cmake" -B "$tmp/out") >"$tmp/cpack.log" 2>&1 ||
    { cat "$tmp/cpack.log"; fail "cpack -G DEB failed"; }
debs=("$tmp"/out/quadrivo_*.deb)
[ ${#debs[@]} -eq 1 ] && [ -f "${debs[0]}" ] || fail "expected one quadrivo_*.deb, found: ${debs[*]}"
deb=${debs[0]}
dpkg-deb --info "$deb" >/dev/null || fail "dpkg-deb --info cannot read $deb"

field() { dpkg-deb -f "$deb" "$1"; }
[ "$(field Package)" = quadrivo ] || fail "Package is '$(field Package)'"
[[ "$(field Version)" == "$version"-* ]] || fail "Version '$(field Version)' is not $version-<release>"
[ "$(field Architecture)" = "$(dpkg --print-architecture)" ] || fail "Architecture is '$(field Architecture)'"
[ "$(field Section)" = education ] || fail "Section is '$(field Section)'"
# Package names only, without version constraints.
depends=$(field Depends | tr ',' '\n' | sed 's/^ *//; s/[ (].*//')
for p in libqt6core6 libqt6gui6 libqt6widgets6 libqt6sql6 libasound2 \
         cups-client cups-ipp-utils fonts-liberation2 fonts-dejavu-core fontconfig \
         fonts-opendyslexic libespeak-ng1 espeak-ng-data; do
    grep -qx "$p" <<<"$depends" || fail "Depends lacks $p: $(field Depends)"
done

# Everything lies under /usr; the list is compared relative to it.
dpkg-deb --contents "$deb" | awk '!/^d/ {print $NF}' | sed 's|^\./usr/||' |
    check_file_list "dpkg-deb --contents" "$id" "$@"

dpkg-deb -x "$deb" "$tmp/root" || fail "dpkg-deb -x failed"
check_tree "$tmp/root/usr" "$id" "$@"
check_starts "$tmp/root/usr/bin/Quadrivo" "$tmp/scratch"
check_manual_and_options "$tmp/root/usr" "$version"

# Debian's own checks of the package: no error allowed.
need lintian lintian
lintian --fail-on error --tag-display-limit 0 "$deb" >"$tmp/lintian.log" 2>&1 ||
    { cat "$tmp/lintian.log"; fail "lintian reports errors on $(basename "$deb")"; }
grep -q '^E: ' "$tmp/lintian.log" && { cat "$tmp/lintian.log"; fail "lintian reports errors"; }
echo "ok: $(basename "$deb")"
