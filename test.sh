#!/bin/sh
# From a bare machine to all tests passed: installs what is needed, then builds and tests
#   analysis what clang-format, cppcheck and clang-tidy find; nothing is built
#   release  as it is shipped, each area of the library compiled as one unit; its audio thread held to real time
#   asan     address and undefined-behaviour sanitizers
#   tsan     thread sanitizer, the tests with more than one thread; everything compiled file by file
#   fuzz     fuzzers, with clang: their seeds, then 20 seconds each
#   arm64    the kernels for that processor's vectors, under qemu; where its compiler and qemu are installed
#   windows  the plug-in and the host for Windows, under wine; where its compiler and wine are installed
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

echo
echo "== analysis"
scripts/analyse.sh
run release
run asan
run tsan --target threads_tests host_tests soak_tests
run fuzz
tests/fuzz/run.sh 20
if command -v aarch64-linux-gnu-g++ >/dev/null && command -v qemu-aarch64 >/dev/null; then
    run arm64
else
    echo "skipped: arm64, for which g++-aarch64-linux-gnu and qemu-user are not installed"
fi
if command -v x86_64-w64-mingw32-g++-posix >/dev/null && [ -x /usr/lib/wine/wine64 ]; then
    run windows
else
    echo "skipped: windows, for which g++-mingw-w64-x86-64-posix and wine64 are not installed"
fi
