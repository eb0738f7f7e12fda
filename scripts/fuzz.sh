#!/usr/bin/env bash
# Builds the libFuzzer programs (the `fuzz` preset: clang, AddressSanitizer, UndefinedBehaviorSanitizer)
# and runs one target, or every target one after the other, for a number of seconds each.
#
# Usage: scripts/fuzz.sh [TARGET|all] [SECONDS]     (defaults: all, 30)
#        scripts/fuzz.sh --list
#
# Each run starts from the committed starting inputs in tests/fuzz/corpus/<target>/, copied into a scratch corpus
# under build/fuzz/work/<target>/corpus that keeps growing from run to run (the committed starting inputs stay as
# they are). The saved regressions in tests/fuzz/regressions/<target>/ are replayed first. A crash, a
# sanitizer report, a leak, a broken property, a hang (10 s per input) or more than 2 GB of memory is a
# finding: the input is saved under build/fuzz/findings/<target>/, and the script exits non-zero after
# all the requested targets have run. FUZZ_WORKERS=N runs N fuzzing processes per target; FUZZ_NO_BUILD=1
# runs the programs already built.
set -euo pipefail
cd "$(dirname "$0")/.."

target="${1:-all}"
seconds="${2:-30}"
workers="${FUZZ_WORKERS:-1}"
root="$PWD"
build_dir="$root/build/fuzz"

# Longest input per target: whole files get more room than single lines and short texts.
max_len_for() {
    case "$1" in
        csv_file | xml_document | xml_parser | property_list) echo 16384 ;;
        *) echo 4096 ;;
    esac
}

dictionary_for() {
    case "$1" in
        xml_document | xml_parser | property_list | settings_loader | credentials_document | object_graph_store) echo "$root/tests/fuzz/dict/xml.dict" ;;
        entities) echo "$root/tests/fuzz/dict/entities.dict" ;;
        csv_line | csv_file) echo "$root/tests/fuzz/dict/csv.dict" ;;
        script) echo "$root/tests/fuzz/dict/script.dict" ;;
        rtf_reader) echo "$root/tests/fuzz/dict/rtf.dict" ;;
        *) echo "" ;;
    esac
}

all_targets() {
    for program in "$build_dir"/fuzz_*; do
        [[ -x "$program" && -f "$program" ]] && basename "$program" | sed 's/^fuzz_//'
    done
}

build() {
    [[ -n "${FUZZ_NO_BUILD:-}" ]] && return 0
    scripts/install-deps.sh --fuzz
    cmake --preset fuzz >/dev/null
    cmake --build --preset fuzz --target "$@"
}

if [[ "$target" == "--list" ]]; then
    all_targets
    exit 0
fi
if [[ "$target" == "all" ]]; then
    build fuzz_targets
    mapfile -t targets < <(all_targets)
    if ((${#targets[@]} == 0)); then
        echo "No fuzz targets were built." >&2
        exit 1
    fi
else
    build "fuzz_$target"
    targets=("$target")
fi

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:symbolize=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"

failed=()
summary="$build_dir/summary.txt"
for name in "${targets[@]}"; do
    program="$build_dir/fuzz_$name"
    work="$build_dir/work/$name"
    findings="$build_dir/findings/$name"
    mkdir -p "$work/corpus" "$findings"
    if [[ -d "tests/fuzz/corpus/$name" ]]; then
        cp -n "tests/fuzz/corpus/$name"/* "$work/corpus/" 2>/dev/null || true
    fi

    options=(-max_len="$(max_len_for "$name")" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1
             -artifact_prefix="$findings/")
    dictionary="$(dictionary_for "$name")"
    [[ -n "$dictionary" ]] && options+=(-dict="$dictionary")

    regressions=(tests/fuzz/regressions/"$name"/*)
    if [[ -e "${regressions[0]}" ]]; then
        echo "== $name: replaying ${#regressions[@]} saved regressions =="
        if ! "$program" "${options[@]}" "${regressions[@]}" >"$work/regressions.log" 2>&1; then
            tail -n 40 "$work/regressions.log"
            failed+=("$name (regression)")
            continue
        fi
    fi

    echo "== $name: fuzzing for $seconds s =="
    log="$work/fuzz.log"
    status=0
    started=$SECONDS
    if ((workers > 1)); then
        # Each worker writes fuzz-<n>.log into the current folder: run inside the scratch folder.
        (cd "$work" && rm -f fuzz-*.log &&
            "$program" "${options[@]}" -max_total_time="$seconds" -jobs="$workers" -workers="$workers" \
                "$work/corpus" >"$log" 2>&1) || status=$?
        cat "$work"/fuzz-*.log >>"$log" 2>/dev/null || true
    else
        "$program" "${options[@]}" -max_total_time="$seconds" "$work/corpus" >"$log" 2>&1 || status=$?
    fi
    executions=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | awk '{sum += $2} END {print sum + 0}')
    corpus_size=$(find "$work/corpus" -type f | wc -l)
    if ((status != 0)); then
        grep -E 'ERROR|SUMMARY|fuzz property broken|Test unit written|==[0-9]+==' "$log" | head -n 20 || true
        failed+=("$name")
        result="FINDING (exit $status, see $log and $findings/)"
    else
        result="ok"
    fi
    line="$(date -u +%FT%TZ) $name $((SECONDS - started))s executions=$executions corpus=$corpus_size $result"
    echo "$line" | tee -a "$summary"
done

if ((${#failed[@]} > 0)); then
    echo "Fuzzing found problems in: ${failed[*]}" >&2
    exit 1
fi
echo "No findings."
