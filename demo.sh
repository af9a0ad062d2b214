#!/bin/sh
# From a bare machine to a repaired recording.
#
#   ./demo.sh [FILE]
#
# Installs what is needed, builds the release preset, takes FILE (WAV or AIFF; by default a spoken recording that a
# system package brings), lets an unstable filter poison it with NaN and infinities, and repairs it with tesk.fixnan~
# in velmohost: live, as in a patch, and as a file, with a report. All files are left in demo/.
set -eu

start=$(date +%s)
input=${1:-/usr/share/sounds/alsa/Front_Center.wav}
case $input in /*) ;; *) input=$PWD/$input ;; esac
cd "$(dirname "$0")"

step() { printf '\n== %s\n' "$*"; }

# Prints a command as one would type it, then runs it.
show() {
    printf '$'
    for word in "$@"; do
        case $word in
            *' '*) printf ' "%s"' "$word" ;;
            *) printf ' %s' "$word" ;;
        esac
    done
    printf '\n'
    "$@"
}

step "Installing what is needed"
scripts/install-packages.sh

if [ ! -f "$input" ]; then
    echo "demo.sh: no such file: $input" >&2
    exit 1
fi

step "Building (release)"
cmake --preset release >/dev/null
cmake --build --preset release --target velmohost fixnan_tilde unstable_resonator bad_samples

bin=build/release
mkdir -p demo
poisoned=demo/poisoned.wav
repaired=demo/repaired.wav
repaired_file=demo/poisoned-repaired.wav
rm -f "$poisoned" "$repaired" "$repaired_file"  # what the last run of this demo left

step "Poisoning the recording with a filter that becomes unstable"
show $bin/examples/unstable_resonator "$input" "$poisoned"

step "Bad samples before"
show $bin/examples/bad_samples "$poisoned" || [ $? -eq 3 ]
channels=$($bin/examples/bad_samples "$poisoned" | grep -c '^channel') || true

step "Repairing it with tesk.fixnan~; what the Max window shows:"
show $bin/velmohost run "tesk.fixnan~ @numchannels $channels" --in "$poisoned" --out "$repaired" \
    --at 0.1 "postdspstate"

step "Bad samples after"
show $bin/examples/bad_samples "$repaired"

step "Repairing it as a file, as one does with a folder of recordings"
show $bin/velmohost scan "$poisoned" || [ $? -eq 3 ]
show $bin/velmohost repair "$poisoned" --report demo/report.html

step "Done in $(($(date +%s) - start)) seconds"
echo "recording: $input"
echo "poisoned:  $PWD/$poisoned"
echo "repaired:  $PWD/$repaired, $PWD/$repaired_file"
echo "report:    $PWD/demo/report.html"
