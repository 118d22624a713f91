#!/bin/sh
# Builds the Windows targets (win64 preset) and starts the demo host zrhost.exe
# under Wine: on the user's display when there is one, otherwise under Xvfb,
# writing screenshots of every page instead.
#
# Usage: scripts/run-demo.sh
# Needs g++-mingw-w64-x86-64-posix, wine, wine64; without a display also xvfb,
# xauth and imagemagick.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build/win64

if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake --preset win64 -S "$root"
fi
cmake --build "$build" --target zrhost zrsettings zrres -- -j2

if [ -n "${DISPLAY:-}" ]; then
    # Its own prefix, whose windows the user's window manager frames.
    exec "$root/scripts/wine-run.sh" --managed --prefix "$build/demo-prefix" --dlls "$build" \
        "$build/host/zrhost.exe"
fi

echo "No display: writing screenshots of the demo host's sheets instead."
exec "$root/scripts/screenshots.sh" --build "$build"
