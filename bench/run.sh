#!/bin/sh
# Builds the benchmarks, runs them and prints a table: what each case does a second and, per counter x_SOMETHING, how
# long it takes as a multiple of SOMETHING, which was measured in turns with it. Figures are medians over repetitions;
# below each program stand the geometric mean and the extremes of every counter.
#
#     bench/run.sh                    all programs
#     bench/run.sh audiofile          one area: bench/AudioFileBench.cpp
#     bench/run.sh -r 3 -f noise      fewer repetitions; only the cases whose name contains "noise" (a regular expression)
#
# Raw figures stay in build/release/bench/results/AREA.json. Exit status: 0 done, 1 something failed, 2 wrong usage.
set -eu
cd "$(dirname "$0")/.."

usage() {
    echo "usage: bench/run.sh [-r REPETITIONS] [-t SECONDS_PER_REPETITION] [-f CASES] [AREA...]" >&2
    exit 2
}

repetitions=7
seconds=0.05
cases=.
while getopts r:t:f: option; do
    case $option in
        r) repetitions=$OPTARG ;;
        t) seconds=$OPTARG ;;
        f) cases=$OPTARG ;;
        *) usage ;;
    esac
done
shift $((OPTIND - 1))

all=$(for source in bench/*Bench.cpp; do basename "$source" Bench.cpp | tr '[:upper:]' '[:lower:]'; done)
[ $# -gt 0 ] || set -- $all
targets=""
for area in "$@"; do
    if ! echo "$all" | grep -qx -e "$area"; then
        echo "bench/run.sh: there is no area \"$area\"; there are" $all >&2
        exit 2
    fi
    targets="$targets bench_$area"
done

scripts/install-packages.sh
cmake --preset release -DVELMO_BUILD_BENCHMARKS=ON >/dev/null
cmake --build --preset release --target $targets >&2

results=build/release/bench/results
mkdir -p "$results"
files=""
for area in "$@"; do
    echo "measuring $area ..." >&2
    build/release/bench/"bench_$area" --benchmark_repetitions="$repetitions" --benchmark_min_time="$seconds" \
        --benchmark_filter="$cases" --benchmark_out="$results/$area.json" --benchmark_out_format=json \
        >/dev/null 2>"$results/$area.log" || { cat "$results/$area.log" >&2; exit 1; }
    [ ! -s "$results/$area.json" ] || files="$files $results/$area.json"
done
if [ -z "$files" ]; then
    echo "bench/run.sh: no case matches \"$cases\"" >&2
    exit 2
fi
jq -r -f bench/table.jq $files
! grep -q '"error_occurred": true' $files
