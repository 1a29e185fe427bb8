#!/usr/bin/env bash
# Builds and runs the benchmarks (bench/) and prints one table, as Markdown:
# start-up and peak memory against a minimal Qt program, start-up again in
# instructions (callgrind), a drill series played through events, a worksheet
# printed to PDF. Fails when a target is missed or a benchmark could not
# measure. Offscreen platform, so the figures depend on no display. Run it on
# a quiet machine: the times are wall times (the instruction count is not).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
ensure_packages >&2

ensure_build_dir >&2
if ! compilazione=$(cmake --build "$build_dir" -j2 --target quadrivo_bench 2>&1); then
    echo "$compilazione" >&2
    exit 2
fi

export QT_QPA_PLATFORM=offscreen
bin="$build_dir/bench"
# What the benchmarks say besides their rows; shown when one of them fails.
log="$build_dir/bench.log"
: >"$log"

righe=()
stato=0
esegui() {
    local uscita codice=0
    uscita=$("$@" 2>>"$log") || codice=$?
    if [ -n "$uscita" ]; then
        mapfile -t -O "${#righe[@]}" righe <<<"$uscita"
    fi
    if [ "$codice" -ne 0 ]; then
        if [ "$codice" -ge 2 ]; then
            echo "$(basename "$1") could not measure (exit status $codice)" >&2
        fi
        stato=1
    fi
}
esegui "$bin/bench_avvio" "$build_dir/app/Quadrivo" "$bin/bench_minimo" "$bin/bench_pavimento"
esegui "$bin/bench_istruzioni" "$build_dir/app/Quadrivo" "$bin/bench_minimo"
esegui "$bin/bench_serie"
esegui "$bin/bench_scheda"
esegui "$bin/bench_classe"
esegui "$bin/bench_registro" serie
esegui "$bin/bench_registro" vista --ripetizioni 5
esegui "$bin/bench_registro" verifica --ripetizioni 5

{
    printf 'measure\tvalue\ttarget\tmet\n'
    if [ "${#righe[@]}" -gt 0 ]; then
        printf '%s\n' "${righe[@]}"
    fi
} | awk -F'\t' '
    { for (i = 1; i <= NF; ++i) { c[NR, i] = $i; if (length($i) > w[i]) w[i] = length($i) } }
    END {
        for (r = 1; r <= NR; ++r) {
            line = "|"
            for (i = 1; i <= 4; ++i) line = line sprintf(" %-" w[i] "s |", c[r, i])
            print line
            if (r == 1) {
                line = "|"
                for (i = 1; i <= 4; ++i) { d = ""; for (k = 0; k < w[i] + 2; ++k) d = d "-"; line = line d "|" }
                print line
            }
        }
    }'

if [ "$stato" -ne 0 ]; then
    echo "Details: $log" >&2
fi
exit "$stato"
