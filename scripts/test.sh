#!/usr/bin/env bash
# Builds every target and runs every test: native unit and scenario tests
# under ASan+UBSan, bounded fuzz runs, the Windows builds (x86-64 and x86),
# and the end-to-end suite against the real DLL under Wine.
set -uo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh || exit 1

jobs=$(nproc 2>/dev/null || echo 2)
failed=0
passed_suites=0
step() { echo; echo "=== $*"; }
run() { if "$@"; then passed_suites=$((passed_suites + 1)); else failed=$((failed + 1)); echo "FAILED: $*"; fi; }

step "native: configure and build (ASan+UBSan)"
cmake --preset native >/dev/null && cmake --build build/native -j"$jobs" || exit 1
step "native: unit and scenario tests"
run ctest --test-dir build/native -L 'unit|scenario' --output-on-failure -j"$jobs"

step "fuzz: configure, build and run (bounded)"
cmake --preset fuzz >/dev/null && cmake --build build/fuzz -j"$jobs" || exit 1
run ctest --test-dir build/fuzz -L fuzz --output-on-failure

step "win32 (x86): build"
cmake --preset win32 >/dev/null && cmake --build build/win32 -j"$jobs" || exit 1
step "win64 (x86-64): build"
cmake --preset win64 >/dev/null && cmake --build build/win64 -j"$jobs" || exit 1
step "win64: unit and end-to-end suites under Wine (one X server for all)"
if [ -n "${DISPLAY:-}" ]; then
  run ctest --test-dir build/win64 -L 'unit|e2e' --output-on-failure
else
  run xvfb-run -a -s "-screen 0 1280x1024x24" ctest --test-dir build/win64 -L 'unit|e2e' --output-on-failure
fi

echo
echo "test suites: ${passed_suites} passed, ${failed} failed"
[ "$failed" -eq 0 ]
