#!/usr/bin/env bash
# The tests under load: both cores kept busy by `stress -c 2` while ctest runs
# the whole suite RUNS times (default 5) in every build directory that
# scripts/test.sh made, then each end-to-end test (ctest label e2e: those that
# start an X server, a CUPS or PostgreSQL server, or the real program) REPEAT
# times (default 20) in each of those directories, stopping at the first
# failure: the sanitized build is slower and finds races the plain one does
# not. Run scripts/test.sh first. Extra arguments go to every ctest call.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
ensure_packages stress

runs=${RUNS:-5}
repeat=${REPEAT:-20}
dirs=()
for d in build build-asan; do
    [ -f "$d/CTestTestfile.cmake" ] && dirs+=("$d")
done
[ ${#dirs[@]} -gt 0 ] || { echo "no build directory: run scripts/test.sh first" >&2; exit 2; }

stress -c "$(nproc)" >/dev/null 2>&1 &
stress_pid=$!
trap 'kill $stress_pid 2>/dev/null; wait $stress_pid 2>/dev/null || true' EXIT

for run in $(seq 1 "$runs"); do
    for d in "${dirs[@]}"; do
        echo "== run $run of $runs, $d, load $(cut -d' ' -f1 /proc/loadavg)"
        (cd "$d" && QT_QPA_PLATFORM=offscreen ctest -j2 --output-on-failure "$@")
    done
done
for d in "${dirs[@]}"; do
    echo "== every end-to-end test in $d, until it fails, at most $repeat times"
    (cd "$d" && QT_QPA_PLATFORM=offscreen ctest -j2 -L e2e --repeat "until-fail:$repeat" \
        --output-on-failure "$@")
done
