#!/bin/sh
# vlwritehtml.sh FILE
#
# vlnogui runs this after it has saved an HTML page.
# FILE is the page file name, relative to the project directory (the
# working directory).
#
# By default it does nothing. To hook version control in (check a file out
# before it is read, in after it is written), set VELMORA_HOOK to a command:
# it is run as "$VELMORA_HOOK" vlwritehtml FILE and its status becomes this
# script's. Projects whose option "Project.Call Read/Write Scripts" is not
# "True" are read and written without these hooks.
[ -n "${VELMORA_HOOK:-}" ] || exit 0
[ $# -ge 1 ] || { echo "vlwritehtml.sh: no file name given" >&2; exit 2; }
exec "$VELMORA_HOOK" vlwritehtml "$1"
