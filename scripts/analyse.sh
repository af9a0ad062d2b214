#!/bin/sh
# Static analysis of the whole tree: what clang-format would change and what cppcheck and clang-tidy find, which is an
# error. The checks of clang-tidy are listed in .clang-tidy, those of cppcheck below.
#
#     scripts/analyse.sh                    everything
#     scripts/analyse.sh format cppcheck    only the steps that are named; the third one is tidy
#
# Exit status: 0 clean, 1 not, 2 wrong usage.
set -eu
cd "$(dirname "$0")/.."

folders="bench catalogue cmake examples external host libvelmodsp tests velmomax"

format() {
    find $folders \( -name '*.cpp' -o -name '*.h' \) -exec clang-format --dry-run -Werror {} +
}

cppcheck() {
    cache=build/analysis/cppcheck
    mkdir -p "$cache"
    command cppcheck -j "$(nproc)" --cppcheck-build-dir="$cache" --quiet --error-exitcode=1 \
        --std=c++20 --language=c++ --library=posix --library=googletest \
        -I libvelmodsp/src -I velmomax -I catalogue -I host/include -I host/src -I tests \
        --enable=warning,portability --inline-suppr --suppressions-list=scripts/cppcheck.txt \
        $folders
}

tidy() {
    cmake --preset analysis >/dev/null
    python3 scripts/clang_tidy.py "$PWD/build/analysis"
}

[ $# -gt 0 ] || set -- format cppcheck tidy
for step in "$@"; do
    case $step in
        format | cppcheck | tidy) ;;
        *) echo "usage: scripts/analyse.sh [format] [cppcheck] [tidy]" >&2; exit 2 ;;
    esac
done
scripts/install-packages.sh

clean=true
for step in "$@"; do
    echo "analysing: $step"
    "$step" || clean=false
done
$clean
