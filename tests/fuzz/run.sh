#!/bin/sh
# Fuzzing: builds the fuzzers and has each of them, or those that are named, try inputs for so many seconds.
#
#     tests/fuzz/run.sh SECONDS [NAME...]        e.g. tests/fuzz/run.sh 60 wav aiff
#
# As many run at a time as there are processors. A fuzzer starts from the inputs in corpus/NAME and those that earlier
# runs found worth keeping, in build/fuzz/fuzzing/NAME/corpus. A line for each tells how many inputs it tried and how
# many edges of the program's flow they reached. An input that breaks a promise, takes too long or asks for too much
# memory is a finding: it stays in build/fuzz/fuzzing/NAME, the line says where, and the exit status is not 0. When the
# fault is mended, its input goes into corpus/NAME, which the tests go through.
set -eu

# One fuzzer: `run.sh --one SECONDS NAME` from the project's folder.
fuzz_one() {
    left=$1
    name=$2
    folder=$PWD/build/fuzz/fuzzing/$name
    program=$PWD/build/fuzz/tests/fuzz/fuzz_$name
    dictionary=""  # words that matter, for those that have such
    [ ! -f "tests/fuzz/dictionaries/$name" ] || dictionary="-dict=$PWD/tests/fuzz/dictionaries/$name"
    mkdir -p "$folder/corpus"
    rm -f "$folder"/log "$folder"/finding-*
    TMPDIR=$(mktemp -d)
    export TMPDIR
    executions=0
    failed=""
    start=$(date +%s)
    # The host's symbols live as long as the process: a long run is one of several processes. These also keep it from
    # looking for leaks after each input, which would take most of the time; each process looks for them at its end.
    while [ "$left" -gt 0 ] && [ -z "$failed" ]; do
        part=$((left < 120 ? left : 120))
        left=$((left - part))
        "$program" -max_total_time="$part" -timeout=10 -malloc_limit_mb=64 -rss_limit_mb=2048 -detect_leaks=0 \
            -close_fd_mask=3 -print_final_stats=1 -artifact_prefix="$folder/finding-" $dictionary \
            "$folder/corpus" "$PWD/tests/fuzz/corpus/$name" >"$folder/log" 2>&1 || failed=yes
        tried=$(sed -n 's/^stat::number_of_executed_units: *//p' "$folder/log")
        executions=$((executions + ${tried:-0}))
    done
    rm -rf "$TMPDIR"
    coverage=$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$folder/log" | tail -1)
    seconds=$(($(date +%s) - start))
    printf '%-7s %9d executions %6d s  coverage %5d  ' "$name" "$executions" "$seconds" "${coverage:-0}"
    if [ -z "$failed" ]; then
        echo "no findings"
        return
    fi
    input=$(find "$folder" -name 'finding-*' | head -1)
    echo "FINDING, told of in $folder/log${input:+; try it again: $program $input}"
    return 1
}

cd "$(dirname "$0")/../.."
if [ "${1:-}" = --one ]; then
    fuzz_one "$2" "$3"
    exit
fi

names=$(ls tests/fuzz/corpus)
seconds=${1:-}
case $seconds in
    '' | *[!0-9]* | 0*)
        echo "usage: tests/fuzz/run.sh SECONDS [NAME...], each NAME being one of:" $names >&2
        exit 2
        ;;
esac
shift
for name; do
    [ -d "tests/fuzz/corpus/$name" ] || { echo "no such fuzzer: $name; there are:" $names >&2; exit 2; }
done
[ $# -gt 0 ] || set -- $names

[ -f build/fuzz/build.ninja ] || cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm  # files that live for an input stay in memory
printf '%s\n' "$@" | xargs -P "$(nproc)" -n 1 "$PWD/tests/fuzz/run.sh" --one "$seconds"
