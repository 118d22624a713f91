#!/bin/sh
# Runs a Windows program under Wine in a private prefix (ctest uses it as the
# cross-compiling emulator of the win64 build).
#
# Usage: scripts/wine-run.sh [--prefix DIR] [--dlls DIR] PROGRAM.exe [ARGS...]
#   --prefix DIR  the Wine prefix (default: $ZR_WINEPREFIX, else
#                 <directory of PROGRAM>/wineprefix); created with wineboot on
#                 first use.
#   --dlls DIR    a build tree: the directories of the zr*.dll files under it
#                 go on the program's DLL search path (WINEPATH).
#   --managed     a new prefix leaves its windows to the window manager (the
#                 demo on a user's display); by default Wine manages them
#                 itself, which is what a bare Xvfb server needs: without a
#                 window manager, every closing window otherwise waits 2 s.
#   --desktop WxH runs the program in a Wine virtual desktop of that size, in
#                 which Wine draws the window frames itself (no window manager
#                 needed; used for screenshots).
# Environment: WINEDEBUG defaults to -all.  Without DISPLAY the program runs
# under a fresh Xvfb server (xvfb-run -a); with one (for example
# `xvfb-run -a ctest ...`, which is faster) it runs there.
set -eu

prefix=${ZR_WINEPREFIX:-}
dlls=
desktop=
managed=N
while [ $# -gt 0 ]; do
    case $1 in
    --prefix) prefix=$2; shift 2 ;;
    --dlls) dlls=$2; shift 2 ;;
    --desktop) desktop=$2; shift 2 ;;
    --managed) managed=Y; shift ;;
    --) shift; break ;;
    *) break ;;
    esac
done
[ $# -ge 1 ] || { echo "usage: $0 [--prefix DIR] [--dlls DIR] PROGRAM [ARGS...]" >&2; exit 2; }

program=$1
shift
[ -n "$prefix" ] || prefix=$(cd "$(dirname "$program")" && pwd)/wineprefix

WINE=${WINE:-wine}
command -v "$WINE" >/dev/null 2>&1 || WINE=wine64
export WINEPREFIX="$prefix"
export WINEDEBUG="${WINEDEBUG:--all}"
# No Mono or Gecko installers: nothing here needs them.
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree=;mshtml=}"

# The DLLs of the build tree, on the search path in Windows form.
if [ -n "$dlls" ]; then
    search=
    for dir in $(find "$dlls" -maxdepth 3 -name 'zr*.dll' -not -path '*/wineprefix/*' -exec dirname {} \; | sort -u); do
        dir=$(cd "$dir" && pwd)
        search="${search:+$search;}Z:$(printf '%s' "$dir" | tr / '\\')"
    done
    export WINEPATH="${search}${WINEPATH:+;$WINEPATH}"
fi

# First use of the prefix: create it once, also when tests start in parallel.
mkdir -p "$(dirname "$prefix")"
if [ ! -f "$prefix/system.reg" ]; then
    (
        flock 9
        if [ ! -f "$prefix/system.reg" ]; then
            wineboot -i >/dev/null 2>&1 || true
            "$WINE" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$managed" /f >/dev/null 2>&1 || true
            wineserver -w
            # Wine's own fonts (Tahoma, MS Sans Serif, Marlett for the caption
            # buttons), which some packagings leave outside Wine's search.
            for font in /usr/share/wine/fonts/*.ttf /usr/share/wine/fonts/*.fon; do
                [ -f "$font" ] && cp -n "$font" "$prefix/drive_c/windows/Fonts/" 2>/dev/null || true
            done
        fi
    ) 9>"$prefix.lock"
fi

if [ -n "$desktop" ]; then
    set -- explorer "/desktop=zephyrion,$desktop" "$program" "$@"
else
    set -- "$program" "$@"
fi

# The program's output goes through a file: Wine's helper processes
# (services, explorer) inherit it and outlive the program by seconds, and a
# pipe they hold would keep ctest waiting for them.
log=$(mktemp "${TMPDIR:-/tmp}/wine-run.XXXXXX")
trap 'rm -f "$log"' EXIT
rc=0
if [ -z "${DISPLAY:-}" ]; then
    # A server of its own; wait for Wine to finish before the server goes.
    xvfb-run -a -s "-screen 0 1024x768x24" sh -c '"$0" "$@"; rc=$?; wineserver -w; exit $rc' \
        "$WINE" "$@" >"$log" 2>&1 || rc=$?
else
    "$WINE" "$@" >"$log" 2>&1 || rc=$?
fi
cat "$log"
exit $rc
