#!/usr/bin/env bash
# Re-takes every figure of the "Targets at a glance" table in docs/PERFORMANCE.md in one run, each beside
# its peer in the same run, and prints the ratios. Usage: bench/retake-figures.sh [REPETITIONS]
# (default 3; the table states the repetitions and the machine's load it was taken under).
# Needs the bench preset's build tools, python3, coreutils base64 and libcsv (scripts/install-deps.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
repetitions=${1:-3}
cmake --preset bench >/dev/null
cmake --build --preset bench -j 2 >/dev/null
bin=build/bench/bench
brevant=build/bench/tools/brevant/brevant
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
echo "load average before: $(cut -d' ' -f1-3 /proc/loadavg); repetitions: $repetitions"

# --- Google Benchmark programs: medians of CPU time -------------------------------------------------------
for program in StringBench CSVReaderBench EncodingBench CountedStringsBench CollectionsBench XMLParserBench \
  DateBench FileManagerBench ThumbnailBench MatrixBench; do
  [[ -x "$bin/$program" ]] || continue  # the interface benchmarks exist only where Qt was found
  # Repetitions of the library and its peer are interleaved, so that a slow spell of the machine falls on
  # both alike.
  "$bin/$program" --benchmark_repetitions="$repetitions" --benchmark_min_time=0.2 \
    --benchmark_enable_random_interleaving=true \
    --benchmark_report_aggregates_only=true --benchmark_format=json >"$work/$program.json" 2>/dev/null
done

# --- The tool beside its peers, on generated files ----------------------------------------------------------
python3 - "$work" <<'PY'
import random, sys
work = sys.argv[1]
rng = random.Random(1)
words = ["answer%d" % i for i in range(5000)]
with open(work + "/answers10m.txt", "w") as out:
    for _ in range(10_000_000):
        word = rng.choice(words)
        out.write((word.upper() if rng.random() < 0.3 else word) + "\n")
with open(work + "/answers200k.txt", "w") as out:
    for _ in range(2_000_000):
        out.write("student answer %d\n" % rng.randrange(200_000))
first = ["Amelia", "Noah", "Olivia", "Liam", "Zoë", "Émile", "Chloé", "Mateo"]
last = ["Okafor", "Smith", "Nguyen", "García", "Müller", "O'Brien", "Tanaka"]
with open(work + "/class100.csv", "w", encoding="utf-8") as out:
    out.write("Student ID,First Name,Last Name,Class,Email,Q1,Q2,Notes\n")
    size = 0
    i = 0
    while size < 100_000_000:
        f, l = rng.choice(first), rng.choice(last)
        note = '"said ""hello"", then left"' if i % 7 == 0 else "fine"
        line = f"S{i:07d},{f},{l},{rng.randint(7, 12)}{rng.choice('ABC')},{f.lower()}.{i}@school.example,{rng.choice('ABCD')},{rng.choice(['Canberra', 'Sydney', 'Perth'])},{note}\n"
        out.write(line)
        size += len(line.encode())
        i += 1
PY
head -c 268435456 /dev/urandom >"$work/random.bin"
base64 -w0 "$work/random.bin" >"$work/random.b64"
cat >"$work/column.py" <<'PY'
import csv, sys
with open(sys.argv[1], newline="", encoding="utf-8") as f:
    rows = csv.reader(f)
    column = next(rows).index(sys.argv[2])
    for row in rows:
        sys.stdout.write(row[column] + "\n")
PY
cat >"$work/counter.py" <<'PY'
import sys
from collections import Counter
with open(sys.argv[1], encoding="utf-8") as f:
    counts = Counter(line.strip() for line in f)
counts.pop("", None)
for answer, n in counts.most_common():
    sys.stdout.write(f"{n} {answer}\n")
PY

# Each command runs REPETITIONS times, alternating with its peer; the median of user+system CPU seconds and
# the largest peak resident memory are kept.
measure() {  # NAME COMMAND
  local i
  for ((i = 0; i < repetitions; i++)); do
    /usr/bin/time -f "$1 %U %S %M" bash -c "$2 >/dev/null" 2>>"$work/times.txt" >/dev/null || true
  done
}
pairs=(
  "tally 10M\t$brevant tally --no-chart $work/answers10m.txt\tlean C++ loop\t$bin/TallyPeer $work/answers10m.txt"
  "tally 10M vs sort\t$brevant tally --no-chart $work/answers10m.txt\tsort uniq sort\tLC_ALL=C sort $work/answers10m.txt | LC_ALL=C uniq -c | LC_ALL=C sort -rn"
  "tally 200k distinct\t$brevant tally --no-chart $work/answers200k.txt\tPython Counter\tpython3 $work/counter.py $work/answers200k.txt"
  "base64 encode 256 MiB\t$brevant base64 encode $work/random.bin\tcoreutils base64\tbase64 -w0 $work/random.bin"
  "base64 decode 256 MiB\t$brevant base64 decode $work/random.b64\tcoreutils base64 -d\tbase64 -d $work/random.b64"
  "csv --column 100 MB\t$brevant csv --header --column Q2 $work/class100.csv\tPython csv\tpython3 $work/column.py $work/class100.csv Q2"
)
for pair in "${pairs[@]}"; do
  IFS=$'\t' read -r name command peerName peerCommand <<<"$(printf '%b' "$pair")"
  measure "tool:$name" "$command"
  measure "peer:$name" "$peerCommand"
done
wc -l "$work/class100.csv" >/dev/null

python3 - "$work" "${pairs[@]}" <<'PY'
import json, statistics, sys, os
work = sys.argv[1]
def runs(program, clock="cpu_time"):
    if not os.path.exists(f"{work}/{program}.json"):
        return {}
    data = json.load(open(f"{work}/{program}.json"))
    return {b["run_name"]: b[clock] * {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1}[b["time_unit"]]
            for b in data["benchmarks"] if b.get("aggregate_name") == "median"}
def find(table, prefix, arg=None):
    names = [n for n in table if n == prefix or n.startswith(prefix + "/")]
    if arg is not None:
        names = [n for n in names if n.split("/")[1:2] == [str(arg)]]
    if not names:
        return None
    return table[max(names, key=lambda n: int(n.split("/")[1]) if "/" in n and n.split("/")[1].isdigit() else 0)]
rows = []
def ratio(label, program, library, peer, arg=None, note=""):
    table = runs(program)
    a, b = find(table, library, arg), find(table, peer, arg)
    if a is None or b is None:
        rows.append((label, "missing", note)); return
    rows.append((label, f"{a / b:.2f}x the peer's time ({a * 1e3:.3f} ms against {b * 1e3:.3f} ms)", note))
s = "StringBench"
for library, peer in [("BM_TrimmedString", "BM_PlainTrim"), ("BM_StringByEscapingEntities", "BM_PlainEscapeEntities"),
                      ("BM_StringByRemovingCharactersInSet", "BM_PlainRemoveCharactersInSet"),
                      ("BM_ComponentsSeparatedByStrings", "BM_PlainSplitBySeparators")]:
    ratio(library[3:] + " 1 MiB", s, library, peer, 1048576, "target: within 3x")
table = runs("CSVReaderBench")
if table:
    a, b = find(table, "BM_CSVReader"), find(table, "BM_LibcsvCount")
    rows.append(("CSVReader 30 MB", f"{b / a:.2f} of libcsv's throughput ({a * 1e3:.0f} ms against {b * 1e3:.0f} ms)", "target: at least 0.5"))
ratio("Base64 decode 64 MiB", "EncodingBench", "BM_Base64Decode_Library", "BM_Base64Decode_OpenSSL", None, "target: within 1.5x")
ratio("Base64 encode 64 MiB", "EncodingBench", "BM_Base64Encode_Library", "BM_Base64Encode_OpenSSL", None, "target: within 1.5x")
table = runs("EncodingBench")
hexes = sorted((n for n in table if n.startswith("BM_HexEncode_Library/")), key=lambda n: int(n.split("/")[1]))
for n in hexes:
    size = int(n.split("/")[1])
    rows.append((f"hex writing {size >> 20} MiB", f"{size / table[n] / 1e9:.2f} GB/s", "target: at least 1 GB/s"))
table = runs("CountedStringsBench")
pick = lambda prefix: sorted((n for n in table if n.startswith(prefix)), key=lambda n: [int(p) for p in n.split("/")[1:] if p.isdigit()])
a, b = pick("BM_Tally_CountedStrings"), pick("BM_Tally_PlainMapIcuFolded")
if a and b:
    rows.append(("case-insensitive tally", f"{table[a[-1]] / table[b[-1]]:.2f}x the peer's time", "target: at most 1.5x"))
for name in ("BM_ObjectsByPopularityWithRank", "BM_ModeDictionary"):
    runs_ = pick(name)
    if len(runs_) >= 2:
        small, large = runs_[-2], runs_[-1]
        n1, n2 = int(small.split("/")[1]), int(large.split("/")[1])
        rows.append((name[3:] + f" {n1} to {n2}", f"time grew {table[large] / table[small]:.1f}x for {n2 / n1:.0f}x the values", "target: O(n log n)"))
ratio("sort 10,000 records case-insensitive", "CollectionsBench", "SortCaseInsensitiveLibrary", "SortCaseInsensitivePeer", None, "figure only")
table = runs("XMLParserBench")
for size in (10, 100):
    a, b = find(table, "BM_BVXMLParserValueInFirstKilobyte", size), find(table, "BM_LibXml2ReadFileWholeDocument", size)
    if a and b:
        rows.append((f"XML value in first KB of {size} MB", f"{b / a:,.0f}x faster than a full libxml2 parse ({a * 1e6:.0f} us)", "target: at least 1000x"))
a, b = pick("BM_ChildElementsNamedRecursiveSearch"), pick("BM_PlainLoopOverTheSameTree")
if a and b:
    rows.append(("childElementsNamed:recursiveSearch:", f"{table[a[-1]] / table[b[-1]]:.2f}x the plain tree walk", "target: within 2x, linear"))
ratio("RFC 3339 read and write, 1,000,000 texts", "DateBench", "BM_ReadWrite_RFC3339DateTime", "BM_ReadWrite_IcuSimpleDateFormat", None, "target: at most 1/3 of ICU's time")
ratio("RFC 3339 read and write, 1,000,000 texts", "DateBench", "BM_ReadWrite_RFC3339DateTime", "BM_ReadDigits_PlainLoop", None, "target: within 4x of the digit loop")
ratio("1,000,000 drive-letter paths converted", "FileManagerBench", "ConvertWindowsPaths", "SplitAndJoin", None, "target: within 3x")
# Wall time where the work is not all the benchmark process's CPU time: `cp -r` is a child process, and Qt
# scales pictures on worker threads.
for label, program, library, peer, arg, note in [
        ("batch copy of 20,000 small files", "FileManagerBench", "BatchCopy", "CpR", None, "target: within 1.3x"),
        ("thumbnail 4000x3000 to 480x360 JPEG", "ThumbnailBench", "LibraryThumbnailJPEG", "QtScaledAndWriter", None, "target: within 1.2x"),
        ("matrix cell by tag, 10,000 cells", "MatrixBench", "LibraryCellWithTag", "PlainLoopTag", 10000, "target: within 2x"),
        ("matrix cell by title, 10,000 cells", "MatrixBench", "LibraryCellWithTitle", "PlainLoopTitle", 10000, "target: within 2x")]:
    table = runs(program, "real_time")
    a, b = find(table, library, arg), find(table, peer, arg)
    if a is not None and b is not None:
        rows.append((label, f"{a / b:.2f}x the peer's time", note))
# The tool.
times, memory = {}, {}
for line in open(f"{work}/times.txt"):
    parts = line.split()
    if len(parts) < 4:
        continue
    name = " ".join(parts[:-3])
    times.setdefault(name, []).append(float(parts[-3]) + float(parts[-2]))
    memory[name] = max(memory.get(name, 0), int(parts[-1]))
for pair in sys.argv[2:]:
    name, _, peer, _ = pair.replace("\\t", "\t").split("\t")
    tool, other = times.get("tool:" + name), times.get("peer:" + name)
    if not tool or not other:
        rows.append((name, "missing", "")); continue
    t, p = statistics.median(tool), statistics.median(other)
    rows.append((f"brevant {name}", f"{t / p:.2f}x {peer}'s CPU time ({t:.2f} s against {p:.2f} s); peak {memory['tool:' + name] / 1024:.0f} MB against {memory['peer:' + name] / 1024:.0f} MB", ""))
width = max(len(r[0]) for r in rows)
for label, figure, note in rows:
    print(f"{label:<{width}}  {figure}" + (f"   [{note}]" if note else ""))
PY
echo "load average after: $(cut -d' ' -f1-3 /proc/loadavg)"
