#!/bin/sh
# vlmake.sh MAKEFILE [-rebuild]
#
# The builder starts this in the project directory to build the CGI program
# from the project's generated makefile; with -rebuild everything is built
# anew. The runtime is looked for under VELMORA.
set -u
makefile=${1:-}
[ -n "$makefile" ] || { echo "vlmake.sh: no makefile given" >&2; exit 2; }
[ -f "$makefile" ] || { echo "vlmake.sh: $makefile not found" >&2; exit 1; }
goal=all
[ "${2:-}" = "-rebuild" ] && goal=rebuild
exec make -f "$makefile" VELMORA="${VELMORA:-}" "$goal"
