#!/bin/sh
# demo_serve.sh DEMO-DIR VLSQL
#
# The last part of the demo: serves DEMO-DIR/www (the pages) and
# DEMO-DIR/cgi-bin (shop.cgi and its database) with lighttpd on 127.0.0.1 at a
# free port, asks the program for a search and an order with curl, shows the
# answers and the orders in the database, and stops the server (also when a
# step fails or the demo is interrupted). What the program writes to standard
# error goes to DEMO-DIR/cgi-stderr.log.
set -eu
demo=$1
vlsql=$2
lighttpd=$(command -v lighttpd || echo /usr/sbin/lighttpd)
conf=$demo/lighttpd.conf
log=$demo/lighttpd-error.log
pid=

stop() {
    if [ -n "$pid" ]; then
        kill "$pid" 2>/dev/null || :
        wait "$pid" 2>/dev/null || :
        pid=
        echo "-- Server stopped"
    fi
}
trap stop EXIT
trap 'exit 1' INT TERM HUP

# A port that another program holds makes lighttpd end at once: then the
# next one is tried.
tries=0
while [ -z "$pid" ]; do
    tries=$((tries + 1))
    [ "$tries" -le 20 ] || { echo "demo: lighttpd did not start (see $log)" >&2; exit 1; }
    port=$(( $(od -An -N2 -tu2 /dev/urandom) % 20000 + 30000 ))
    cat > "$conf" <<CONF
server.document-root = "$demo/www"
server.bind = "127.0.0.1"
server.port = $port
server.modules = ( "mod_alias", "mod_cgi" )
server.errorlog = "$log"
server.breakagelog = "$demo/cgi-stderr.log"
alias.url = ( "/cgi-bin/" => "$demo/cgi-bin/" )
cgi.assign = ( ".cgi" => "" )
\$HTTP["url"] =~ "^/cgi-bin/" { static-file.exclude-extensions = ( "" ) }
mimetype.assign = ( ".html" => "text/html; charset=utf-8", ".svg" => "image/svg+xml" )
CONF
    "$lighttpd" -D -f "$conf" &
    pid=$!
    waited=0
    until curl -s -o /dev/null "http://127.0.0.1:$port/shop/catalog.html"; do
        if ! kill -0 "$pid" 2>/dev/null || [ "$waited" -ge 50 ]; then
            stop >/dev/null
            break
        fi
        sleep 0.1
        waited=$((waited + 1))
    done
done
url=http://127.0.0.1:$port/cgi-bin/shop.cgi
echo "-- lighttpd serves $demo/www and $demo/cgi-bin at http://127.0.0.1:$port"

# Shows the status line of an answer and the part that the program filled.
ask() {
    echo "-- $1"
    echo "   curl -d '$2' $url"
    curl -s -i -d "$2" "$url" > "$demo/answer.txt"
    head -n 1 "$demo/answer.txt"
    sed -n "$3" "$demo/answer.txt" > "$demo/shown.txt"
    cat "$demo/shown.txt"
    if ! head -n 1 "$demo/answer.txt" | grep -q ' 200 ' || [ ! -s "$demo/shown.txt" ]; then
        echo "demo: the program did not answer as it should (see $demo/answer.txt and $log)" >&2
        exit 1
    fi
}
ask 'A search for titles holding "Mo"' 'VlFormName=search__Fcatalog_html&title=Mo' \
    '/<table/,/<\/table>/p'
ask 'An order' 'VlFormName=order__Forder_html&customer=Ann&title=Dune&quantity=2' \
    '/Thank you/p'
echo "-- The orders in $demo/cgi-bin/shop.db:"
echo 'select id, customer, title, quantity from orders' | "$vlsql" "$demo/cgi-bin/shop.db"
