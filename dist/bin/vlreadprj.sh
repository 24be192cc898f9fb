#!/bin/sh
# vlreadprj.sh FILE
#
# vlnogui runs this before it reads a project file.
# FILE is the project file name, relative to the project directory (the
# working directory).
#
# By default it does nothing. To hook version control in (check a file out
# before it is read, in after it is written), set VELMORA_HOOK to a command:
# it is run as "$VELMORA_HOOK" vlreadprj FILE and its status becomes this
# script's. Projects whose option "Project.Call Read/Write Scripts" is not
# "True" are read and written without these hooks.
[ -n "${VELMORA_HOOK:-}" ] || exit 0
[ $# -ge 1 ] || { echo "vlreadprj.sh: no file name given" >&2; exit 2; }
exec "$VELMORA_HOOK" vlreadprj "$1"
