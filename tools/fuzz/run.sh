#!/usr/bin/env bash
# Fuzzes the engine's reader with libFuzzer for a while (default 300 s), seeded with the
# Microsoft-made files. Needs clang and its runtime (Debian: clang libclang-rt-14-dev).
#   tools/fuzz/run.sh [SECONDS]
set -euo pipefail
here=$(cd "$(dirname "$0")/../.." && pwd)
secs=${1:-300}
build="$here/build-fuzz"
CC=clang CXX=clang++ cmake -S "$here" -B "$build" -G Ninja -DKEROVA_FUZZ=ON -DKEROVA_TESTS=OFF \
  -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS="-fsanitize=address,undefined -fno-omit-frame-pointer" >/dev/null
cmake --build "$build" --target jet_read_fuzz
corpus="$build/corpus"
mkdir -p "$corpus"
cp -n "$here"/../shared/testdata/access2000/*.mdb "$corpus"/ 2>/dev/null || true
exec "$build/tests/fuzz/jet_read_fuzz" "$corpus" -max_total_time="$secs" -max_len=4000000 \
  -rss_limit_mb=4096 -timeout=20
