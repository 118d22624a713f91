#!/bin/sh
# Site-list measurements against cp and cat on the same bytes, in the same run.
# Usage: bench/run_site_list_bench.sh [build-dir]   (default: build/bench)
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$here/build/bench}
tool=$build/bench/site_list_tool
work=$(mktemp -d /tmp/zr-bench-XXXXXX)
trap 'rm -rf "$work"' EXIT

# Best wall time in seconds of five runs of a command.
best() {
    b=""
    for _ in 1 2 3 4 5; do
        s=$(date +%s%N); "$@" >/dev/null; e=$(date +%s%N)
        t=$((e - s)); if [ -z "$b" ] || [ "$t" -lt "$b" ]; then b=$t; fi
    done
    echo "$b"
}
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
ms() { awk -v a="$1" 'BEGIN { printf "%.1f ms", a / 1e6 }'; }
catto() { out=$1; shift; cat "$@" >"$out"; }
catsync() { out=$1; shift; cat "$@" >"$out"; sync "$out"; }

echo "== read + canonical write (goal: 1M lines <= 3x cp, flat per line)"
for n in 1000 100000 1000000; do
    "$tool" make $n "$work/in.gui"
    cpt=$(best cp "$work/in.gui" "$work/cp.gui")
    rwt=$(best "$tool" readwrite "$work/in.gui" "$work/out.gui")
    size=$(stat -c %s "$work/in.gui")
    echo "$n lines ($size bytes): cp $(ms $cpt), read+write $(ms $rwt), ratio $(ratio $rwt $cpt)," \
         "$(awk -v t=$rwt -v n=$n 'BEGIN { printf "%.0f", t / n }') ns/line"
done

echo "== apply: 100k user + 100k advertising + 50k aggressive (goal <= 3x cat)"
"$tool" make 100000 "$work/userex.gui"
"$tool" make 100000 "$work/excad.dat"
"$tool" make 50000 "$work/aggressive.dat"
cp "$work/userex.gui" "$work/userex.orig"
applyt=$(best "$tool" apply "$work")
catt=$(best catto "$work/cat.out" "$work/userex.orig" "$work/excad.dat" "$work/aggressive.dat")
catst=$(best catsync "$work/cat.out" "$work/userex.orig" "$work/excad.dat" "$work/aggressive.dat")
echo "apply $(ms $applyt), cat $(ms $catt) (ratio $(ratio $applyt $catt))," \
     "cat+sync $(ms $catst) (ratio $(ratio $applyt $catst))"

echo "== peak memory for 1M sites (goal <= 2.5x the file size)"
"$tool" make 1000000 "$work/in.gui"
size=$(stat -c %s "$work/in.gui")
set -- $("$tool" peak "$work/in.gui")
echo "file $size bytes, $2 entries, peak growth $1 bytes, ratio $(ratio $1 $size)"

echo "== Google Benchmark (per-line cost)"
"$build/bench/site_list_bench" --benchmark_min_time=0.2 2>/dev/null | grep -E "^BM_|^-|Benchmark"
