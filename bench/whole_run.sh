#!/bin/sh
# Times whole vlnogui runs over generated projects (bench/make_project: pages
# of about 50 KB with 10 forms, 20 anchors, keyword attributes and site marks,
# and one module per page with two requests per form) against `cp -r` of the
# same tree, and prints seconds per page, the ratio to cp -r, the growth from
# the first size to the last and the peak memory of each run.
#   bench/whole_run.sh [build directory] [pages ...]     (default: build 100 1000)
# RUN_UNDER, when set, is put in front of the vlnogui command line, e.g.
#   RUN_UNDER="valgrind --tool=callgrind --callgrind-out-file=/tmp/run.out" \
#       bench/whole_run.sh build 300
# to count the instructions of a whole run (times then measure the tool).
# The read and write scripts are switched off by the configuration file; the
# distribution's scripts (vlreadprj.sh and vlinst.sh still run) do nothing.
set -eu

build=${1:-build}
[ $# -gt 0 ] && shift
[ $# -gt 0 ] || set -- 100 1000
vlnogui=$(cd "$build" && pwd)/vlnogui
make_project=$(cd "$build" && pwd)/bench/make_project
for program in "$vlnogui" "$make_project"; do
    [ -x "$program" ] || { echo "whole_run.sh: $program is missing: build first" >&2; exit 1; }
done

work=$(mktemp -d "${TMPDIR:-/tmp}/vlwholeXXXXXX")
trap 'rm -rf "$work"' EXIT INT TERM

# A distribution whose scripts do nothing.
mkdir -p "$work/dist/config" "$work/dist/bin" "$work/home"
cat > "$work/dist/config/Velmora.cfg" <<'EOF'
Makefile.$VL_SOURCE_SUFFIX : .c
Makefile.exeSuffix : .cgi
Test.CGI Path : /nowhere/cgi
Test.HTML Path : /nowhere/www
EOF
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

echo "machine: $(nproc) cores, $(awk '/MemTotal/ {printf "%.0f GiB", $2 / 1048576}' /proc/meminfo), $(uname -sr)"
printf '%7s %10s %10s %12s %8s %10s\n' pages "vlnogui s" "cp -r s" "s per page" "ratio" "peak MB"
first=""
for n in "$@"; do
    rm -rf "$work/tree" "$work/copy"
    "$make_project" "$work/tree" "$n"
    sync
    t0=$(now)
    cp -r "$work/tree" "$work/copy"
    t1=$(now)
    # The copy stays until after the run: creating files where many were just
    # deleted costs the file system more, and would be charged to vlnogui.
    t2=$(now)
    kb=$(cd "$work/tree" && export VELMORA="$work/dist" HOME="$work/home" \
        PATH="$work/dist/bin:/usr/bin:/bin" && peak ${RUN_UNDER:-} "$vlnogui" -p "$work/tree/big.pj" -c "$work/run.cfg")
    t3=$(now)
    grep -q '^Finished$' "$work/out.txt" || { echo "vlnogui did not finish:" >&2; cat "$work/out.txt" >&2; exit 1; }
    run=$(echo "$t3 - $t2" | bc -l)
    copy=$(echo "$t1 - $t0" | bc -l)
    printf '%7d %10.3f %10.3f %12.6f %8.1f %10.1f\n' "$n" "$run" "$copy" \
        "$(echo "$run / $n" | bc -l)" "$(echo "$run / $copy" | bc -l)" "$(echo "$kb / 1024" | bc -l)"
    if [ -z "$first" ]; then
        first=$n firstRun=$run
    else
        echo "growth from $first to $n pages: $(echo "$run / $firstRun" | bc -l | cut -c1-6) times the time for $(echo "$n / $first" | bc -l | cut -c1-6) times the pages"
    fi
done
