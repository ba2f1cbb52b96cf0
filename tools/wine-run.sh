#!/bin/sh
# Runs one Windows program under Wine, quietly, in a prefix of this tree's own, so that two clones
# never end each other's services.
here=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX="${WINEPREFIX:-$here/build/wine}"
mkdir -p "$WINEPREFIX"
export LC_ALL=C.UTF-8 # in the C locale Wine refuses file names outside ASCII
export WINEARCH=win64 WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}" # no questions about Mono and Gecko
wine=/usr/lib/wine/wine64 # not "wine": that wrapper warns on stderr about 32-bit Wine
[ -x "$wine" ] || wine=$(command -v wine64 || command -v wine)
exec "$wine" "$@"
