#!/bin/sh
# vlinst.sh PROGRAM START-DOCUMENT CGI-PATH URL HTML-PATH MAKEFILE "TARGET" "PAGES"
#
# vlnogui runs this at the end of every run, in the project directory, with
# the project's "Test." settings:
#   PROGRAM         the CGI program: project name and executable suffix
#   START-DOCUMENT  the page the application starts with
#   CGI-PATH        directory the program is installed into
#   URL             the URL the application is reached under
#   HTML-PATH       directory the pages are installed into (a "drive:" prefix
#                   is dropped)
#   MAKEFILE        the project's generated makefile
#   TARGET          deployment target (CGI, NSAPI, ISAPI, GenericExtension)
#   PAGES           the project's pages, each preceded by a blank (so a page
#                   whose name holds a blank cannot be told apart here)
# vlnogui ends the command line before the first setting the project lacks,
# so any number of trailing arguments may be missing: the steps that need
# them are skipped with a message.
#
# It copies the pages to HTML-PATH and, when a C compiler, make and the
# makefile's inputs (the makefile, the sources it names and the Velmora
# runtime, VELMORA/include/VlRnHtml.h) are all present, builds the program and
# copies it to CGI-PATH, with the program's configuration file (the project
# name and ".cfg", as the engine writes it by default) when there is one. A
# step whose inputs are missing is skipped with a message. The status is 0
# when every step that could run succeeded.
set -u
set -f
program=${1:-}
start=${2:-}
cgipath=${3:-}
url=${4:-}
htmlpath=${5:-}
makefile=${6:-}
target=${7:-CGI}
pages=${8:-}
htmlpath=${htmlpath#*:}

say() { printf 'vlinst.sh: %s\n' "$*"; }
status=0

if [ -n "$htmlpath" ] && [ -n "$pages" ]; then
    for page in $pages; do
        if [ -f "$page" ]; then
            dir=$(dirname -- "$htmlpath/$page")
            mkdir -p -- "$dir" && cp -- "$page" "$htmlpath/$page" || status=1
        else
            say "page $page not found"
            status=1
        fi
    done
    say "pages installed in $htmlpath"
else
    say "no HTML path or no pages given: pages not installed"
fi

runtime=${VELMORA:-}/include/VlRnHtml.h
if [ -z "$makefile" ] || [ -z "$program" ]; then
    say "no makefile given: program not built"
elif [ ! -f "$makefile" ]; then
    say "makefile $makefile not found: program not built"
    status=1
elif ! command -v make >/dev/null 2>&1 || ! command -v "${CC:-cc}" >/dev/null 2>&1; then
    say "no C compiler or make: program not built"
elif [ ! -f "$runtime" ]; then
    say "no Velmora runtime in ${VELMORA:-(VELMORA not set)}: program not built"
elif ! make -n -f "$makefile" VELMORA="$VELMORA" >/dev/null 2>&1; then
    say "sources named in $makefile are missing: program not built"
    status=1
else
    if make -f "$makefile" VELMORA="$VELMORA"; then
        if [ -n "$cgipath" ]; then
            mkdir -p -- "$cgipath" && cp -- "$program" "$cgipath/" || status=1
            config=${program%.*}.cfg
            if [ -f "$config" ]; then cp -- "$config" "$cgipath/" || status=1; fi
            say "$program ($target) installed in $cgipath"
        else
            say "no CGI path given: $program built but not installed"
        fi
    else
        say "building $program failed"
        status=1
    fi
fi

[ -n "$url" ] && [ -n "$start" ] && say "start page: $url/$start"
exit $status
