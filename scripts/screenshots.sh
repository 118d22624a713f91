#!/bin/sh
# Renders every page of both sheets (the settings sheet with all four pages,
# the prefetch sheet) and the demo host's window into PNG files, under Xvfb in
# a Wine virtual desktop, from a fresh demo installation.
#
# Usage: scripts/screenshots.sh [--build DIR] [--copy-to DIR]
#   --build DIR    the win64 build tree (default: build/win64; configured and
#                  built with the win64 preset when needed)
#   --copy-to DIR  also copy the PNG files there (docs/screens for the README)
# Output: <build>/screenshots/*.png.  Needs wine, wine64, xvfb, xauth and
# imagemagick (convert).
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build/win64
copy_to=
while [ $# -gt 0 ]; do
    case $1 in
    --build) build=$2; shift 2 ;;
    --copy-to) copy_to=$2; shift 2 ;;
    *) echo "usage: $0 [--build DIR] [--copy-to DIR]" >&2; exit 2 ;;
    esac
done

if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake --preset win64 -S "$root" >/dev/null
fi
cmake --build "$build" --target zrhost zrsettings zrres -- -j2 >/dev/null
build=$(cd "$build" && pwd)

out=$build/screenshots
prefix=$build/screens-prefix
rm -rf "$out" "$prefix"   # a fresh installation every time
mkdir -p "$out"
windows_out="Z:$(printf '%s' "$out" | tr / '\\')"

# Always on a private X server, so the pictures do not depend on the desktop.
env -u DISPLAY "$root/scripts/wine-run.sh" --prefix "$prefix" --dlls "$build" --desktop 1024x768 \
    "$build/host/zrhost.exe" --screenshot-mode "$windows_out"

count=0
for bmp in "$out"/*.bmp; do
    [ -f "$bmp" ] || continue
    convert "$bmp" "${bmp%.bmp}.png"
    rm -f "$bmp"
    count=$((count + 1))
done
[ "$count" -gt 0 ] || { echo "no screenshots were written" >&2; exit 1; }
echo "$count screenshots in $out"

if [ -n "$copy_to" ]; then
    mkdir -p "$copy_to"
    cp "$out"/*.png "$copy_to"/
    echo "copied to $copy_to"
fi
