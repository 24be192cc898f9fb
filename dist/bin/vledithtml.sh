#!/bin/sh
# vledithtml.sh PAGE
#
# The builder starts this to edit a page of the project (relative to the
# project directory) in the user's editor: VISUAL, else EDITOR, else vi.
set -u
[ $# -ge 1 ] || { echo "vledithtml.sh: no page given" >&2; exit 2; }
exec ${VISUAL:-${EDITOR:-vi}} "$1"
