#!/bin/sh
# vlreadmodule.sh FILE
#
# vlnogui runs this before it reads a page module.
# FILE is the module file name, relative to the project directory (the
# working directory).
#
# By default it does nothing. To hook version control in (check a file out
# before it is read, in after it is written), set VELMORA_HOOK to a command:
# it is run as "$VELMORA_HOOK" vlreadmodule FILE and its status becomes this
# script's. Projects whose option "Project.Call Read/Write Scripts" is not
# "True" are read and written without these hooks.
[ -n "${VELMORA_HOOK:-}" ] || exit 0
[ $# -ge 1 ] || { echo "vlreadmodule.sh: no file name given" >&2; exit 2; }
exec "$VELMORA_HOOK" vlreadmodule "$1"
