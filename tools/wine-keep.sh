#!/bin/sh
# wine-keep.sh start|stop: creates the tests' Wine prefix and keeps Wine's services running, so that
# a test starts in hundredths of a second. Otherwise the services would be started by a test,
# inherit its output pipe and make ctest wait seconds for their end.
here=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX="${WINEPREFIX:-$here/build/wine}" LC_ALL=C.UTF-8
run=$here/tools/wine-run.sh
mkdir -p "$WINEPREFIX"
pidfile=$WINEPREFIX/keep.pid
case ${1:-} in
  start)
    [ -e "$pidfile" ] && kill -0 "$(cat "$pidfile")" 2>/dev/null && exit 0
    if [ ! -e "$WINEPREFIX/system.reg" ]; then
      "$run" wineboot -i >/dev/null 2>&1
      # The virtual display has no window manager: without this each closed window waits 1.9 s for
      # it.
      "$run" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
    fi
    fifo=$WINEPREFIX/keep.fifo
    [ -p "$fifo" ] || mkfifo "$fifo"
    setsid sh -c 'exec sleep 7200 >"$0"' "$fifo" >/dev/null 2>&1 &
    echo $! >"$pidfile"
    setsid "$run" cmd /c more <"$fifo" >/dev/null 2>&1 &
    # Returns when the services and the desktop are running.
    "$run" rundll32 user32.dll,GetDesktopWindow >/dev/null 2>&1
    ;;
  stop)
    [ -e "$pidfile" ] && kill "$(cat "$pidfile")" 2>/dev/null
    rm -f "$pidfile"
    /usr/lib/wine/wineserver64 -k 2>/dev/null || true
    ;;
  *)
    echo "usage: wine-keep.sh start|stop" >&2
    exit 2
    ;;
esac
