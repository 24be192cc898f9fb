#!/bin/sh
# vltest.sh PROGRAM START-DOCUMENT CGI-PATH URL HTML-PATH MAKEFILE "TARGET" "PAGES"
#
# The builder runs this to try the application out. The arguments are those
# of vlinst.sh (see there), and any number of trailing ones may be missing.
# It installs the project with vlinst.sh and then opens the start page in a
# browser through vlbrowser.sh, when both the URL and the start document are
# known.
set -u
here=$(dirname -- "$0")
"$here/vlinst.sh" "$@"
status=$?
url=${4:-}
start=${2:-}
if [ -n "$url" ] && [ -n "$start" ]; then
    "$here/vlbrowser.sh" -openURL "$url/$start" || :
fi
exit $status
