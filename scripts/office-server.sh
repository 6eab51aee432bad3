#!/usr/bin/env bash
# A throwaway PostgreSQL server for trying the office store by hand (make demo, the benchmarks):
#   scripts/office-server.sh start DIR   makes a server in DIR, listening on a Unix socket in DIR
#                                        only, with one empty database, and prints the
#                                        NORMARIS_STORE=... line to export
#   scripts/office-server.sh stop DIR    stops it and removes what start made in DIR
# The same recipe as the tests' own server (tests/support/TestServer.cpp): trust
# authentication, fsync off, text sorted by code point. Nothing in it is worth keeping.
set -euo pipefail

usage() {
  echo "usage: $0 start|stop DIR" >&2
  exit 2
}
[ $# -eq 2 ] || usage
action=$1
[ "$action" != start ] || mkdir -p "$2"
[ -d "$2" ] || { echo "No folder $2." >&2; exit 1; }
dir=$(cd "$2" && pwd)
data=$dir/data

# Debian's packages put each version's programs beneath /usr/lib/postgresql: take the highest.
bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)
if [ -z "$bin" ] || [ ! -x "$bin/pg_ctl" ]; then
  pg_ctl=$(command -v pg_ctl || true)
  [ -n "$pg_ctl" ] || { echo "No PostgreSQL server programs found (scripts/install-deps.sh installs them)." >&2; exit 1; }
  bin=$(dirname "$pg_ctl")
fi

# The server refuses to run as root: as root, it runs as the postgres user of Debian's package.
as_server() {
  if [ "$(id -u)" -eq 0 ]; then
    (cd "$dir" && runuser -u postgres -- "$@")
  else
    (cd "$dir" && "$@")
  fi
}

case $action in
start)
  [ ! -e "$data" ] || { echo "$data exists already: stop that server first." >&2; exit 1; }
  # A Unix socket's path holds 107 bytes at most.
  [ ${#dir} -le 90 ] || { echo "$dir is too long for a socket's path: take a shorter folder." >&2; exit 1; }
  [ "$(id -u)" -ne 0 ] || chown postgres: "$dir"
  as_server test -w "$dir" || { echo "The postgres user cannot write in $dir: take one under /tmp." >&2; exit 1; }
  as_server "$bin/initdb" -D "$data" -U postgres -A trust -E UTF8 --no-locale --no-sync >"$dir/initdb.log"
  printf "\nlisten_addresses = ''\nunix_socket_directories = '%s'\nport = 5432\nfsync = off\n" "$dir" >>"$data/postgresql.conf"
  as_server "$bin/pg_ctl" -D "$data" -l "$dir/server.log" -w -s start
  as_server "$bin/psql" -h "$dir" -U postgres -d postgres -q -c \
    "CREATE DATABASE normaris ENCODING 'UTF8' TEMPLATE template0 LC_COLLATE 'C' LC_CTYPE 'C'"
  echo "export NORMARIS_STORE='host=$dir port=5432 user=postgres dbname=normaris'"
  ;;
stop)
  [ -f "$data/PG_VERSION" ] || { echo "No server of this script in $dir." >&2; exit 1; }
  as_server "$bin/pg_ctl" -D "$data" -m fast -w -s stop || true
  rm -rf "$data" "$dir/initdb.log" "$dir/server.log"
  rmdir "$dir" 2>/dev/null || true
  ;;
*)
  usage
  ;;
esac
