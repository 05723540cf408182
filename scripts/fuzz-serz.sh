#!/bin/sh
# Fuzzes the serz codec (both directions) with libFuzzer for a bounded time.
#   scripts/fuzz-serz.sh [seconds] [jobs]
# Installs clang and its fuzzing runtime from Debian's packages when they are missing.
# Works in build-fuzz/ of the checkout; crashes are left there as crash-* files.
set -eu

seconds=${1:-120}
jobs=${2:-1}
root=$(cd "$(dirname "$0")/.." && pwd)
work="$root/build-fuzz"

if ! command -v clang++ >/dev/null 2>&1 || ! ls /usr/lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.fuzzer-x86_64.a >/dev/null 2>&1; then
    echo "installing clang and libclang-rt-dev"
    sudo=""
    [ "$(id -u)" -ne 0 ] && sudo=sudo
    $sudo apt-get update
    $sudo apt-get install -y clang libclang-rt-dev
fi

mkdir -p "$work/corpus"
echo "building the fuzz target"
clang++ -std=c++20 -g -O1 -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined \
    -I"$root/src/core" "$root/fuzz/serz/serz_fuzz.cpp" "$root"/src/core/serz/*.cpp \
    -o "$work/serz_fuzz"

# Seeds: the broken fixtures, and the real samples when they lie beside the checkout
# (read in place; new findings go to the first folder only).
cp "$root"/tests/fixtures/serz/broken/* "$work/corpus/" 2>/dev/null || true
seeds=""
samples="$root/../shared/testdata/serz"
[ -d "$samples" ] && seeds="$samples"

cd "$work"
parallel=""
[ "$jobs" -gt 1 ] && parallel="-jobs=$jobs -workers=$jobs"
# shellcheck disable=SC2086
./serz_fuzz -max_total_time="$seconds" $parallel -max_len=400000 -timeout=10 -rss_limit_mb=4096 corpus $seeds
