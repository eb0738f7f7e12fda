#!/usr/bin/env bash
# Times `brevant tally` against `sort | uniq -c | sort -rn` on the same generated file of answers.
# Usage: bench/tally-vs-sort.sh [ANSWERS]   (default 10,000,000 answers from 5,000 distinct texts)
set -euo pipefail
cd "$(dirname "$0")/.."
count=${1:-10000000}
scripts/install-deps.sh
cmake --preset default -DBV_BUILD_TESTS=OFF >/dev/null
cmake --build --preset default --target brevant >/dev/null
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
python3 - "$count" "$work/answers.txt" <<'PY'
import random, sys
rng = random.Random(1)
words = ["answer%d" % i for i in range(5000)]
with open(sys.argv[2], "w") as out:
    for _ in range(int(sys.argv[1])):
        word = rng.choice(words)
        out.write((word.upper() if rng.random() < 0.3 else word) + "\n")
PY
echo "answers: $count ($(du -h "$work/answers.txt" | cut -f1))"
measure() {
  local start end
  start=$(date +%s%N)
  bash -c "$1" >/dev/null
  end=$(date +%s%N)
  echo "$2: $(((end - start) / 1000000)) ms"
}
measure "build/release/tools/brevant/brevant tally --no-chart '$work/answers.txt'" "brevant tally"
measure "build/release/tools/brevant/brevant tally --ignore-case --no-chart '$work/answers.txt'" "brevant tally --ignore-case"
measure "sort '$work/answers.txt' | uniq -c | sort -rn" "sort | uniq -c | sort -rn"
measure "LC_ALL=C sort '$work/answers.txt' | LC_ALL=C uniq -c | LC_ALL=C sort -rn" "LC_ALL=C sort | uniq -c | sort -rn"
