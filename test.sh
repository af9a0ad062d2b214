#!/bin/sh
# From a bare machine to all tests passed: installs what is needed, then builds and tests
#   release  as it is shipped, each area of the library compiled as one unit; its audio thread held to real time
#   debug    file by file
#   asan     address and undefined-behaviour sanitizers
#   tsan     thread sanitizer, the tests with more than one thread
set -eu
cd "$(dirname "$0")"
scripts/install-packages.sh

run() {
    preset=$1
    shift
    echo
    echo "== $preset"
    cmake --preset "$preset" -DVELMO_WERROR=ON >/dev/null
    cmake --build --preset "$preset" "$@"
    ctest --preset "$preset" -j "$(nproc)"
}

run release
run debug
run asan
run tsan --target threads_tests external_tests host_tests
