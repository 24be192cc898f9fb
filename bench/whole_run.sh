#!/bin/sh
# Times whole vlnogui runs over generated projects (bench/make_project: pages
# of about 50 KB with 10 forms, 20 anchors, keyword attributes and site marks,
# and one module per page with two requests per form) against two floors: the
# file work alone (bench/file_floor: read the project file, every module and
# page, and write each back, and each page's working copy, through a
# temporary file and rename) and `cp -r` of the same tree. Each program runs
# three times on its own copy of the tree: the first run makes the working
# copies and the main module, the second fills the backup directory (a
# project never written before has nothing to back up), the third is the
# steady state, in which nothing changes. Also prints the peak memory of the
# first run.
#   bench/whole_run.sh [build directory] [pages ...]   (default: build 1000 3000)
#   BEFORE=<other vlnogui> bench/whole_run.sh ...      times that program too,
#                                                      for instance an older build
# RUN_UNDER, when set, is put in front of each vlnogui command line, e.g.
#   RUN_UNDER="valgrind --tool=callgrind --callgrind-out-file=/tmp/run.%p" \
#       bench/whole_run.sh build 300
# to count the instructions of whole runs (the times then measure the tool).
# The read and write scripts are switched off by the configuration file; the
# distribution's scripts (vlreadprj.sh and vlinst.sh still run) do nothing.
set -eu

build=${1:-build}
[ $# -gt 0 ] && shift
[ $# -gt 0 ] || set -- 1000 3000
vlnogui=$(cd "$build" && pwd)/vlnogui
make_project=$(cd "$build" && pwd)/bench/make_project
file_floor=$(cd "$build" && pwd)/bench/file_floor
for program in "$vlnogui" "$make_project" "$file_floor" ${BEFORE:+"$BEFORE"}; do
    [ -x "$program" ] || { echo "whole_run.sh: $program is missing: build first" >&2; exit 1; }
done

work=$(mktemp -d "${TMPDIR:-/tmp}/vlwholeXXXXXX")
trap 'rm -rf "$work"' EXIT INT TERM

# A distribution whose scripts do nothing.
mkdir -p "$work/dist/config" "$work/dist/bin" "$work/home"
cat > "$work/dist/config/Velmora.cfg" <<'CFG'
Makefile.$VL_SOURCE_SUFFIX : .c
Makefile.exeSuffix : .cgi
Test.CGI Path : /nowhere/cgi
Test.HTML Path : /nowhere/www
CFG
printf 'SRC\nBACKGROUND\nCODEBASE\nDATA\n' > "$work/dist/config/VlKeyWds.ini"
printf '/* Velmora Start Of User Includes */\n/* Velmora End Of User Includes */\n/* Velmora Start Of Callback Declarations */\n/* Velmora End Of Callback Declarations */\nint main()\n{\n\t/* Velmora Start Of Initial Code */\n\t/* Velmora End Of Initial Code */\n\t/* Velmora Start Of Callback Registration */\n\t/* Velmora End Of Callback Registration */\n\t/* Velmora Start Of Final Code */\n\t/* Velmora End Of Final Code */\n}\n' \
    > "$work/dist/config/main.tem"
printf 'PROGRAM = $VL_EXECUTABLE\nOBJS = $VL_MAIN \\\n$VL_MODULES\n' > "$work/dist/config/Makefile.tem"
for script in vlreadprj vlwriteprj vlreadmodule vlwritemodule vlreadhtml vlwritehtml vlinst \
    vltest vlrel1 vlrel2 vlmake vledithtml vlbrowser; do
    printf '#!/bin/sh\nexit 0\n' > "$work/dist/bin/$script.sh"
    chmod +x "$work/dist/bin/$script.sh"
done
printf 'Project.Call Read/Write Scripts : False\nTest.HTML URL : http://localhost/big\n' \
    > "$work/run.cfg"

now() { date +%s.%N; }
since() { echo "$(now) - $1" | bc -l; }

# Runs a command in a directory and prints its time in seconds.
timed() {
    dir=$1
    shift
    sync
    t0=$(now)
    (cd "$dir" && "$@") > "$work/out.txt"
    since "$t0"
}

# Peak resident memory of a command in KB, through /usr/bin/time -v when it is
# there, else through a small getrusage wrapper.
peak() {
    if [ -x /usr/bin/time ] && /usr/bin/time -v true 2>/dev/null; then
        /usr/bin/time -v -o "$work/time.txt" "$@" > "$work/out.txt"
        sed -n 's/.*Maximum resident set size (kbytes): //p' "$work/time.txt"
    else
        "$@" > "$work/out.txt"
        python3 -c 'import resource; print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)' \
            2>/dev/null || echo "?"
    fi
}

run_engine() {
    export VELMORA="$work/dist" HOME="$work/home" PATH="$work/dist/bin:/usr/bin:/bin"
    ${RUN_UNDER:-} "$1" -p "$2/big.pj" -c "$work/run.cfg"
}

echo "machine: $(nproc) cores, $(awk '/MemTotal/ {printf "%.0f GiB", $2 / 1048576}' /proc/meminfo), $(uname -sr), load $(cut -d' ' -f1-3 /proc/loadavg)"
printf '%7s %-7s %8s %8s %8s %8s %8s %12s %12s %8s\n' pages program "first s" "backup s" \
    "steady s" "floor s" "cp -r s" "first/floor" "steady/floor" "peak MB"
for n in "$@"; do
    rm -rf "$work/tree" "$work/copy" "$work/floor"
    "$make_project" "$work/tree" "$n"
    copy=$(timed "$work" cp -r "$work/tree" "$work/copy")
    cp -r "$work/tree" "$work/floor"
    floor=$(timed "$work/floor" "$file_floor" big.pj)
    for program in "$vlnogui" ${BEFORE:+"$BEFORE"}; do
        label=after
        [ "$program" = "$vlnogui" ] || label=before
        rm -rf "$work/run"
        cp -r "$work/tree" "$work/run"
        sync
        t0=$(now)
        kb=$(cd "$work/run" && export VELMORA="$work/dist" HOME="$work/home" \
            PATH="$work/dist/bin:/usr/bin:/bin" && peak ${RUN_UNDER:-} "$program" -p "$work/run/big.pj" -c "$work/run.cfg")
        first=$(since "$t0")
        grep -q '^Finished$' "$work/out.txt" || { echo "vlnogui did not finish:" >&2; cat "$work/out.txt" >&2; exit 1; }
        backup=$(timed "$work/run" run_engine "$program" "$work/run")
        steady=$(timed "$work/run" run_engine "$program" "$work/run")
        printf '%7d %-7s %8.3f %8.3f %8.3f %8.3f %8.3f %12.2f %12.2f %8.1f\n' "$n" "$label" \
            "$first" "$backup" "$steady" "$floor" "$copy" "$(echo "$first / $floor" | bc -l)" \
            "$(echo "$steady / $floor" | bc -l)" "$(echo "$kb / 1024" | bc -l)"
        rm -rf "$work/run"
    done
done
