#!/bin/bash
# Installs what is missing, builds, and runs every test.
#
#   ./test.sh                  all tests of the release build, ending in ctest's summary
#   ./test.sh --preset NAME    the same with another build: dev, asan, tsan, coverage
#   ./test.sh --system         afterwards the system test: the editor and a USB-MIDI device in a QEMU guest
#   ./test.sh --desktop [NAME...]   instead, the demo on real desktops; tests/desktop/rows.py has their names
#   ./test.sh --references     no tests: makes the reference pictures in tests/skin/references/ anew
#   ./test.sh --fuzz SECONDS   instead, every fuzz target for so long; inputs that break something stay in build/fuzz/
#   ./test.sh --analysis       instead, clang-tidy, clazy and cppcheck over the sources; a finding is an error
#   ./test.sh --soak MINUTES [SEED]   instead, editor and device under random edits, turns, files and faults
#   ./test.sh --mutants [NAME...]     instead, how many tests notice each of the faults planted by tests/mutants/
set -euo pipefail
cd "$(dirname "$0")"
. packaging/setup.sh

preset=release
system=no
desktop=no
desktop_names=()
references=no
analysis=no
fuzz=""
soak=""
mutants=no
mutant_names=()
seed=$RANDOM
while [ $# -gt 0 ]; do
    case "$1" in
    --preset)
        preset="${2:?--preset needs the name of a build}"
        shift
        ;;
    --system) system=yes ;;
    --desktop)
        desktop=yes
        while [ $# -gt 1 ] && [[ $2 != --* ]]; do
            desktop_names+=("$2")
            shift
        done
        ;;
    --references) references=yes ;;
    --analysis) analysis=yes ;;
    --fuzz)
        fuzz="${2:?--fuzz needs the seconds for each target}"
        shift
        ;;
    --soak)
        soak="${2:?--soak needs the minutes}"
        shift
        if [[ ${2:-} =~ ^[0-9]+$ ]]; then
            seed=$2
            shift
        fi
        ;;
    --mutants)
        mutants=yes
        while [ $# -gt 1 ] && [[ $2 != --* ]]; do
            mutant_names+=("$2")
            shift
        done
        ;;
    *)
        sed -n '2,12s/^# \{0,1\}//p' "$0" >&2
        exit 2
        ;;
    esac
    shift
done

if [ $analysis = yes ]; then
    need_packages $packages_build $packages_analysis
    build_preset analysis
    exec ctest --preset analysis
fi

if [ -n "$fuzz" ]; then
    need_packages $packages_build $packages_clang
    build_preset fuzz
    exec tests/fuzz/run build/fuzz "$fuzz"
fi

need_packages $packages_build $packages_display $packages_tests $packages_package_checks
need_packages $packages_manual $packages_manual_checks
[ "$preset" != asan ] || need_packages $packages_clang
[ $system = no ] || need_packages $packages_system

if [ $references = yes ]; then
    build_preset "$preset" ktz_references
    git status --short tests/skin/references
    exit
fi

if [ -n "$soak" ]; then
    build_preset "$preset" soak_tests
    exec tests/support/with-display "build/$preset/tests/soak/soak_tests" TestSoak --minutes "$soak" --seed "$seed"
fi

if [ $desktop = yes ]; then
    need_packages $packages_desktop
    build_preset "$preset" ktz-jx-demo
    exec tests/desktop/run "build/$preset" build/desktop "${desktop_names[@]}"
fi

if [ $mutants = yes ]; then
    exec tests/mutants/run "$preset" "${mutant_names[@]}"
fi

build_preset "$preset"
if [ $system = yes ]; then
    # The guest first, so that the last lines are ctest's summary.
    tests/system/run "build/$preset"
fi
ctest --preset "$preset"
