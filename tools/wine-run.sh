#!/bin/sh
# Runs one Windows program under Wine, quietly, in a prefix of this tree, so that two clones never
# end each other's services. Output goes to a file that is printed at the end: Wine services started
# by the program keep inherited handles open, and the reader of a pipe, such as ctest, would wait
# for them. Errors stay separate from the output.
here=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX="${WINEPREFIX:-$here/build/wine}"
mkdir -p "$WINEPREFIX"
export LC_ALL=C.UTF-8 # in the C locale Wine refuses file names outside ASCII
export WINEARCH=win64 WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}" # no questions about Mono and Gecko
wine=/usr/lib/wine/wine64 # not "wine": that wrapper warns on stderr about 32-bit Wine
[ -x "$wine" ] || wine=$(command -v wine64 || command -v wine)
output=$(mktemp)
errors=$(mktemp)
trap 'rm -f "$output" "$errors"' EXIT
# On a busy machine Wine sometimes exits silently before it has started the program.
for attempt in 1 2 3; do
  status=0
  "$wine" "$@" >"$output" 2>"$errors" || status=$?
  if [ "$status" -eq 0 ] || [ -s "$output" ] || [ -s "$errors" ]; then break; fi
  sleep "$attempt"
done
cat "$output"
cat "$errors" >&2
exit "$status"
