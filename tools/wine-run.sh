#!/bin/sh
# Runs one Windows program under Wine, quietly, in a prefix of this tree's own, so that two clones
# never end each other's services. The program writes into a file that is shown when it has ended: a
# service of Wine that it started keeps what it inherits open, and a reader of a pipe, such as ctest,
# would wait for the service's end. Errors stay apart from the output.
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
# On a busy machine Wine now and then ends before it has started the program: without a word.
for attempt in 1 2 3; do
  status=0
  "$wine" "$@" >"$output" 2>"$errors" || status=$?
  if [ "$status" -eq 0 ] || [ -s "$output" ] || [ -s "$errors" ]; then break; fi
  sleep "$attempt"
done
cat "$output"
cat "$errors" >&2
exit "$status"
