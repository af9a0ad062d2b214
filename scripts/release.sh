#!/bin/sh
# Makes what users download, in build/: from one Debian 12 machine the package for Max with the plug-ins of Windows and
# Linux, and velmohost for Windows. What is made for macOS is made there: see docs/release.md.
#
#   scripts/release.sh [FOLDER...]
#
# A FOLDER is an `externals` folder from elsewhere, such as that of a Mac, whose plug-ins go into the package as well.
set -eu
for folder in "$@"; do
    set -- "$@" "$(realpath -e "$folder")"  # the working directory is about to change
    shift
done
cd "$(dirname "$0")/.."
scripts/install-packages.sh

for preset in release windows; do
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target package_folder velmohost
done
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/release/CMakeCache.txt)

# Packs a folder below build/release-files into a zip beside it.
pack() {
    (cd build/release-files && cmake -E tar cf "$1.zip" --format=zip "$2")
    echo "made build/release-files/$1.zip"
}

# The folder of the Linux build has everything; the other systems add their plug-ins.
rm -rf build/release-files
mkdir -p build/release-files/velmohost/externals
cp -R build/release/package build/release-files/Tesk
for folder in build/windows/package/externals "$@"; do
    cp -R "$folder"/. build/release-files/Tesk/externals/
done
cp build/windows/velmohost.exe build/windows/MaxAPI.dll build/windows/MaxAudio.dll LICENSE build/release-files/velmohost
cp build/windows/package/externals/*.mxe64 build/release-files/velmohost/externals
strip build/release-files/Tesk/externals/*.mxl_*
x86_64-w64-mingw32-strip build/release-files/Tesk/externals/*.mxe64 build/release-files/velmohost/*.exe \
    build/release-files/velmohost/*.dll build/release-files/velmohost/externals/*.mxe64

pack "Tesk-$version" Tesk
pack "velmohost-$version-Windows" velmohost
