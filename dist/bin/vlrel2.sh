#!/bin/sh
# vlrel2.sh PROJECT [EXE-SUFFIX [MAKEFILE [CONFIG-FILE ["PAGES" ["MODULES MAIN"]]]]]
#
# The builder starts this in the release directory after it has written the
# release copy of the project there (with the "Release." settings):
#   PROJECT      project name
#   EXE-SUFFIX   suffix of the CGI program
#   MAKEFILE     the release makefile
#   CONFIG-FILE  the configuration file, or NoConfigFile
#   PAGES        the pages, separated by blanks
#   MODULES MAIN the C sources, separated by blanks (not packed: the release
#                ships the program, not its sources)
# The command line ends before the first setting the project lacks, so
# trailing arguments may be missing. It builds the program when it can (see
# vlinst.sh for what that needs) and packs the program, the pages, the
# configuration file and the README into PROJECT-release.tar.
set -u
set -f
project=${1:-}
suffix=${2:-}
makefile=${3:-}
config=${4:-NoConfigFile}
pages=${5:-}

say() { printf 'vlrel2.sh: %s\n' "$*"; }
[ -n "$project" ] || { echo "vlrel2.sh: no project given" >&2; exit 2; }
program=$project$suffix
if [ -n "$makefile" ] && [ -f "$makefile" ] && command -v make >/dev/null 2>&1 \
    && [ -f "${VELMORA:-}/include/VlRnHtml.h" ]; then
    make -f "$makefile" VELMORA="$VELMORA" || say "building $program failed"
else
    say "program not built (no makefile, make or Velmora runtime)"
fi
files=README
[ -f "$program" ] && files="$files $program"
[ "$config" != NoConfigFile ] && [ -f "$config" ] && files="$files $config"
for page in $pages; do [ -f "$page" ] && files="$files $page"; done
tar -cf "$project-release.tar" $files && say "release packed in $project-release.tar"
