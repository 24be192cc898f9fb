#!/bin/sh
# vlbrowser.sh -openFile PATH
# vlbrowser.sh -openURL URL
#
# The builder starts this to preview a page (-openFile, a full path) or to
# open the running application (-openURL). It uses BROWSER when set, else
# xdg-open; without either it prints what it would have opened.
set -u
mode=${1:-}
target=${2:-}
case "$mode" in
    -openFile) [ -n "$target" ] && target="file://$target" ;;
    -openURL) ;;
    *) echo "vlbrowser.sh: usage: vlbrowser.sh -openFile PATH | -openURL URL" >&2; exit 2 ;;
esac
[ -n "$target" ] || { echo "vlbrowser.sh: nothing to open" >&2; exit 2; }
if [ -n "${BROWSER:-}" ]; then
    exec $BROWSER "$target"
elif command -v xdg-open >/dev/null 2>&1; then
    exec xdg-open "$target"
fi
echo "vlbrowser.sh: no browser; open $target"
