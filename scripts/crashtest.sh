#!/usr/bin/env bash
# Kills the CLI with SIGKILL at random moments of each multi-row step, RUNS times per
# step (50 unless given), and checks after every kill that the company's file passes
# integrity_check, that its content is that of before the step or of after it, that the
# company list shows no half-made company, and that the next command works.
#
#   scripts/crashtest.sh [APPDIR] [RUNS]        (make crashtest)
set -uo pipefail
appdir=$(cd "${1:-build/bin}" && pwd)
runs=${2:-50}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
company=甲
failures=0

cli() { "$appdir/normaris-cli" --root "$1" --yes "${@:2}"; }
# The content of every company of a root, as one hash: the schema and every row.
state() {
  local root=$1 out=""
  for dir in "$root"/Data/*/; do
    local name; name=$(basename "$dir")
    out+="$name:$(sqlite3 "$dir/$name.sqlite" .dump | sha1sum | cut -c1-40);"
  done
  echo "$out"
}
ms() { date +%s%3N; }

# The starting point: a company with settings, and the documents that the work rules
# cite built, dated and substituted; the work rules themselves built, to be substituted.
base=$work/base
cli "$base" company new "$company" >/dev/null 2>&1
cli "$base" settings set --company "$company" 事業所名=株式会社甲 >/dev/null
cli "$base" settings representative --company "$company" 2 >/dev/null
for doc in 02 03 04 05 31 01; do
  cli "$base" dates add --company "$company" --doc "$doc" 2026/4/1 >/dev/null
  cli "$base" build --company "$company" --style 1 --doc "$doc" >/dev/null 2>&1
  [ "$doc" = 01 ] || cli "$base" substitute --company "$company" --style 1 --doc "$doc" >/dev/null 2>&1
done
# The row of the third 章 on the 条 panel (level code 2), released (and added back) by
# the composition steps.
row=$(cli "$base" compose rows --company "$company" --style 1 --doc 01 | awk -F'\t' '$3 == "2" { if (++n == 3) { print $1; exit } }')
released=$work/released
cp -a "$base" "$released"
cli "$released" compose release --company "$company" --style 1 --doc 01 --row "$row" >/dev/null 2>&1
pick=$(cli "$base" compose rows --company "$company" --style 1 --doc 01 | awk -F'\t' -v r="$row" '$1 == r { print $5 }')

# name | root to start from | the step's arguments
steps=(
  "build|$base|build --company $company --style 1 --doc 01"
  "substitute|$base|substitute --company $company --style 1 --doc 01"
  "release|$base|compose release --company $company --style 1 --doc 01 --row $row"
  "add|$released|compose add --company $company --style 1 --doc 01 --row $((row - 1)) --action 2 --pick $pick"
  "compact|$base|company compact $company"
  "backup|$base|company backup $company"
  "new|$base|company new 乙"
)

for entry in "${steps[@]}"; do
  IFS='|' read -r name start args <<<"$entry"
  read -r -a argv <<<"$args"
  # One run to the end: the state after, and how long the step takes.
  after_root=$work/after-$name
  cp -a "$start" "$after_root"
  t0=$(ms)
  cli "$after_root" "${argv[@]}" >/dev/null 2>&1
  status=$?
  duration=$(( $(ms) - t0 ))
  before=$(state "$start")
  after=$(state "$after_root")
  if [ "$status" -ne 0 ]; then
    echo "$name: the step itself fails (exit $status)"; failures=$((failures + 1)); continue
  fi
  bad=0
  for ((i = 1; i <= runs; i++)); do
    root=$work/run
    rm -rf "$root"; cp -a "$start" "$root"
    "$appdir/normaris-cli" --root "$root" --yes "${argv[@]}" >/dev/null 2>&1 &
    pid=$!
    sleep "$(awk -v d="$duration" -v r="$RANDOM" 'BEGIN { printf "%.3f", d * 1.2 * r / 32768 / 1000 }')"
    kill -9 "$pid" 2>/dev/null; wait "$pid" 2>/dev/null
    # The next command starts as a user's would: it clears what the crash left.
    if ! cli "$root" company list >/dev/null 2>&1; then
      echo "$name run $i: company list fails after the kill"; bad=$((bad + 1)); continue
    fi
    for dir in "$root"/Data/*/; do
      n=$(basename "$dir")
      check=$(sqlite3 "$dir/$n.sqlite" 'PRAGMA integrity_check' 2>&1)
      if [ "$check" != ok ]; then echo "$name run $i: $n: $check"; bad=$((bad + 1)); fi
    done
    now=$(state "$root")
    if [ "$now" != "$before" ] && [ "$now" != "$after" ]; then
      echo "$name run $i: neither before nor after"; bad=$((bad + 1))
    fi
    if [ "$name" = backup ] && [ -d "$root/BackupDB/$company" ]; then
      if [ -f "$root/BackupDB/$company/$company.sqlite" ]; then
        check=$(sqlite3 "$root/BackupDB/$company/$company.sqlite" 'PRAGMA integrity_check' 2>&1)
        [ "$check" = ok ] || { echo "backup run $i: the backup: $check"; bad=$((bad + 1)); }
      fi
    fi
  done
  echo "$name: $runs kills in ${duration} ms steps, $bad problems"
  failures=$((failures + bad))
done
[ "$failures" -eq 0 ] && echo "crash test passed" || { echo "crash test: $failures problems"; exit 1; }
