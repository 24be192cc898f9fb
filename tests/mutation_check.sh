#!/usr/bin/env bash
# Mutation check: does the test suite catch real faults? Each of the 20
# hand-picked one-line mutations below (a flipped comparison, an off-by-one, a
# dropped blank in a message, a swapped argument; one per part of the engine)
# is applied in turn, the engine and tests are rebuilt in build-mutants/
# (incrementally) and ctest runs; a mutation is caught when a test fails.
# A mutation finds its line by a text that stands exactly once anywhere under
# src/, so the check keeps working when files move. The source tree is
# restored after every mutation, also when the run is interrupted.
#   tests/mutation_check.sh                 all mutations
#   tests/mutation_check.sh list-insert-at-end ...   only these (by label)
#   MUTANT_ALL_FAILURES=1 tests/mutation_check.sh    name every test that
#                                                    catches each mutation
set -uo pipefail
cd "$(dirname "$0")/.."

build=${MUTANT_BUILD_DIR:-build-mutants}

# label | text standing once under src/ ==> its replacement
read -r -d '' mutations <<'EOF'
list-insert-at-end | if (!list || n < 0 || n > list->count) return nullptr; ==> if (!list || n < 0 || n >= list->count) return nullptr;
process-quote-chars | return std::strchr("._-/+,:@%=", c) != nullptr && c != '\0'; ==> return std::strchr("._-/+,:@%=;", c) != nullptr && c != '\0';
ident-bind-arrow | out += " --> "; ==> out += " -->";
options-global-message | VlPrintError("Global Options File Not Found\n"); ==> VlPrintError("Global Options FileNot Found\n");
writer-html-section | std::fputs("HTML Files :\n", fp); ==> std::fputs("HTML Files:\n", fp);
naming-pj-suffix | base.resize(base.size() - 3); ==> base.resize(base.size() - 2);
mainmodule-relocatable | out += VlProjRelocatable() ? "\tVlRelocatableProject(1);\n" : "\tVlRelocatableProject(0);\n"; ==> out += VlProjRelocatable() ? "\tVlRelocatableProject(0);\n" : "\tVlRelocatableProject(1);\n";
functions-one-activator | if (!module || (form != nullptr) == (anchor != nullptr)) return 0; ==> if (!module || (form != nullptr) != (anchor != nullptr)) return 0;
module-reader-message | VlPrintError("The anchor "); ==> VlPrintError("The anchor");
scanner-anchor-text | return AnchValuesIn<Wide>(cursor + 2, end, readable); ==> return AnchValuesIn<Wide>(cursor + 3, end, readable);
markup-method-blank | o += " METHOD=\""; ==> o += "METHOD=\"";
keywords-quote | return keyword.ends_with(' ') || HasUpper(keyword) ? '"' : '\''; ==> return keyword.ends_with(' ') || HasUpper(keyword) ? '\'' : '"';
refresh-site-kind | SwdUpdateMapDeletedSwidget(site->name, pageName, "S", nullptr); ==> SwdUpdateMapDeletedSwidget(site->name, pageName, "E", nullptr);
map-sort-stable | if (later->callOrder < earlier->callOrder) std::swap(items[j - 1], items[j]); ==> if (later->callOrder <= earlier->callOrder) std::swap(items[j - 1], items[j]);
mapfile-bad-line | return VlCatGets(0, 30, "Error in the map file %s at line %d.\n"); ==> return VlCatGets(0, 30, "Error in the map file %s atline %d.\n");
parser-list-skip | open = i + 5; // past the quote, the comma, the newline and two tabs ==> open = i + 4; // past the quote, the comma, the newline and two tabs
generator-newline-escape | out += " \\\n"; ==> out += "\\\n";
upkeep-bind-left | if (remaining <= 0) { ==> if (remaining < 0) {
driver-argument-count | if (argc < 3) { ==> if (argc < 2) {
request-error-fields | error->value4 = d; ==> error->value4 = e;
EOF

backup=$(mktemp -d)
mutated=""
restore() {
    if [ -n "$mutated" ]; then
        # Written back in place with a new time stamp, so the next build
        # recompiles the file instead of keeping the mutant's object.
        cat "$backup/original" >"$mutated"
        mutated=""
    fi
}
trap 'restore; rm -rf "$backup"' EXIT
trap 'echo "interrupted: source restored" >&2; exit 130' INT TERM

stop=(--stop-on-failure)
[ -n "${MUTANT_ALL_FAILURES:-}" ] && stop=()
build_and_test() {
    cmake --build "$build" -j2 >"$backup/build.log" 2>&1 || return 2
    ctest --test-dir "$build" -j2 "${stop[@]}" --timeout 120 >"$backup/test.log" 2>&1 || return 1
    return 0
}

if [ ! -f "$build/build.ninja" ]; then
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVELMORA_BUILD_BENCH=OFF \
        >/dev/null || exit 2
fi
echo "baseline: building and testing the unchanged tree in $build"
build_and_test
case $? in
0) ;;
1) echo "baseline: tests fail without a mutation; fix that first" >&2; tail -30 "$backup/test.log" >&2; exit 2 ;;
*) echo "baseline: build fails" >&2; tail -30 "$backup/build.log" >&2; exit 2 ;;
esac

total=0 caught=0 missed=0 broken=0
while IFS= read -r entry; do
    [ -n "$entry" ] || continue
    label=${entry%% | *}
    rest=${entry#* | }
    find=${rest%% ==> *}
    replace=${rest#* ==> }
    if [ $# -gt 0 ] && ! printf '%s\n' "$@" | grep -qxF -- "$label"; then continue; fi
    total=$((total + 1))

    mapfile -t files < <(grep -rlF -- "$find" src)
    count=0
    [ ${#files[@]} -eq 1 ] && count=$(grep -cF -- "$find" "${files[0]}")
    if [ ${#files[@]} -ne 1 ] || [ "$count" -ne 1 ]; then
        printf '%-26s NOT FOUND once under src/ (%d files)\n' "$label" "${#files[@]}"
        broken=$((broken + 1))
        continue
    fi
    file=${files[0]}
    cp "$file" "$backup/original"
    mutated=$file
    FIND=$find REPLACE=$replace perl -0pi -e \
        'my $at = index($_, $ENV{FIND}); substr($_, $at, length $ENV{FIND}) = $ENV{REPLACE};' "$file"

    build_and_test
    status=$?
    restore
    case $status in
    1)
        failed=$(sed -n 's/^[[:space:]]*[0-9]* - \([^ ]*\) .*/\1/p' "$backup/test.log" | sort -u | paste -sd' ')
        printf '%-26s caught   %s  (%s)\n' "$label" "$file" "${failed:-a test failed}"
        caught=$((caught + 1)) ;;
    0)
        printf '%-26s MISSED   %s\n' "$label" "$file"
        missed=$((missed + 1)) ;;
    *)
        printf '%-26s BUILD FAILED %s\n' "$label" "$file"
        tail -5 "$backup/build.log"
        broken=$((broken + 1)) ;;
    esac
done <<<"$mutations"

# Leave the build matching the restored tree.
cmake --build "$build" -j2 >/dev/null 2>&1
echo "caught $caught of $total mutations ($missed missed, $broken not applied)"
[ "$broken" -eq 0 ]
