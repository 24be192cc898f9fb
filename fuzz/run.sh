#!/usr/bin/env bash
# Runs the fuzz targets built by the fuzz preset, each for the given number of
# seconds, on a scratch copy of its committed seed corpus (the committed
# corpus never grows; a differential target fuzz_X_diff also takes the seeds of
# fuzz_X). Fails when any target reports a crash, a leak, a
# timeout (an input running longer than 10 s) or an out-of-memory.
#
#   fuzz/run.sh SECONDS [fuzz_TARGET ...]     (default: every target)
#
# FUZZ_WORK names the scratch directory to use and keep (default: a new one,
# removed unless something was found). Crash inputs are written there.
set -uo pipefail
cd "$(dirname "$0")/.."
root=$PWD
seconds=${1:?usage: fuzz/run.sh SECONDS [TARGET...]}
shift
bin=$root/build-fuzz/fuzz
if [ $# -eq 0 ]; then
    set -- $(cd fuzz && ls fuzz_*.cpp | sed 's/\.cpp$//')
fi
work=${FUZZ_WORK:-}
keep=1
if [ -z "$work" ]; then
    work=$(mktemp -d "${TMPDIR:-/tmp}/vlfuzzrun.XXXXXX")
    keep=0
fi
failed=()
for target in "$@"; do
    if [ ! -x "$bin/$target" ]; then
        echo "$target: not built (cmake --preset fuzz && cmake --build --preset fuzz)"
        failed+=("$target")
        continue
    fi
    corpus=$work/$target/corpus
    mkdir -p "$corpus" "$work/$target/found"
    cp -n fuzz/corpus/"$target"/* "$corpus"/ 2>/dev/null || true
    # A differential target also starts from the seeds of the reader it compares.
    case $target in
    *_diff) cp -n fuzz/corpus/"${target%_diff}"/* "$corpus"/ 2>/dev/null || true ;;
    esac
    echo "=== $target: ${seconds}s"
    if "$bin/$target" -max_total_time="$seconds" -timeout=10 -print_final_stats=1 \
        -artifact_prefix="$work/$target/found/" "$corpus" >"$work/$target/log" 2>&1; then
        grep -E '^stat::(number_of_executed_units|average_exec_per_sec|new_units_added)|^Done' \
            "$work/$target/log"
        echo "corpus: $(ls "$corpus" | wc -l) files"
    else
        tail -n 60 "$work/$target/log"
        echo "$target FAILED; input kept in $work/$target/found/"
        failed+=("$target")
    fi
done
if [ ${#failed[@]} -gt 0 ]; then
    echo "Fuzzing found problems in: ${failed[*]} (logs and inputs under $work)"
    exit 1
fi
[ "$keep" = 1 ] || rm -rf "$work"
echo "All fuzz targets ran clean."
