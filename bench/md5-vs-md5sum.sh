#!/usr/bin/env bash
# Times `brevant md5` against `md5sum` on the same file with hyperfine (both read it from the page cache
# after a warm-up run). Usage: bench/md5-vs-md5sum.sh [SIZE_MB]   (default 1024, a 1 GB file)
set -euo pipefail
cd "$(dirname "$0")/.."
size=${1:-1024}
cmake --preset bench >/dev/null
cmake --build --preset bench --target brevant >/dev/null
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
head -c "${size}M" /dev/urandom >"$work/data"
[[ "$(build/bench/tools/brevant/brevant md5 "$work/data")" == "$(md5sum "$work/data")" ]]
hyperfine --warmup 2 --runs 10 -N \
  "build/bench/tools/brevant/brevant md5 $work/data" "md5sum $work/data"
