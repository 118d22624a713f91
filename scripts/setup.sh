#!/usr/bin/env bash
# Installs what building and testing need, when it is missing (Debian).
set -euo pipefail

need=()
have() { command -v "$1" >/dev/null 2>&1; }
pkg_installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q "install ok installed"; }

for p in cmake make g++ libgtest-dev libbenchmark-dev clang-14 libclang-rt-14-dev \
         g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix binutils-mingw-w64-x86-64 \
         binutils-mingw-w64-i686 wine wine64 xvfb xauth imagemagick; do
  pkg_installed "$p" || need+=("$p")
done

if [ ${#need[@]} -gt 0 ]; then
  echo "setup: installing ${need[*]}"
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${need[@]}" >/dev/null
fi
have x86_64-w64-mingw32-g++-posix && have wine && echo "setup: tools ready"
