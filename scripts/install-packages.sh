#!/bin/sh
# Installs what building, testing and the demo need on Debian 12; what is there already is left alone.
set -eu

# The one list of packages.
packages="
    cmake ninja-build g++ binutils
    libcli11-dev libedit-dev nlohmann-json3-dev libxml2-dev
    libgtest-dev libgmock-dev libbenchmark-dev libmatio-dev jq
    clang-format clang-tidy cppcheck
    libclang-rt-19-dev
    clang libclang-rt-14-dev
    g++-aarch64-linux-gnu qemu-user googletest
    g++-mingw-w64-x86-64-posix wine64
    chromium
    librsvg2-bin python3
    libsndfile1-dev flac vorbis-tools opus-tools lame
    alsa-utils
"

missing=""
for package in $packages; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

if ! command -v apt-get >/dev/null; then
    echo "Please install with your system's package manager:$missing" >&2
    exit 1
fi
as_root=""
[ "$(id -u)" -eq 0 ] || as_root="sudo"

echo "Installing:$missing"
export DEBIAN_FRONTEND=noninteractive
$as_root apt-get update -q
$as_root apt-get install -q -y --no-install-recommends $missing
