#!/usr/bin/env bash
# Builds the journal benchmark (Release, native x86-64) and runs it twice in
# a private mount namespace (root): against a live systemd-journald, and
# against a socket at journald's path that the benchmark drains itself (the
# sender's own cost, without waiting for journald). Prints the medians and
# the ratio tqmsg_report / sd_journal_send; goal: at most 1.10.
#   bench/journal-run.sh [repetitions]     (default 5)
set -euo pipefail
cd "$(dirname "$0")/.."
repetitions=${1:-5}
build=build/bench
out=$build/journal-results

cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DTQMSG_BUILD_BENCH=ON \
    -DTQMSG_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" -j2 --target tqmsg_journal_bench >/dev/null
mkdir -p "$out"

# run MODE: the benchmark beside MODE's journal, JSON into $out/MODE.json.
run() {
    local mode=$1 sink=0
    [ "$mode" = none ] && sink=1
    TQMSG_JOURNAL_KEEP_ENTRIES=0 bash journal/tests/with-journal.sh "$mode" "$out/$mode" env TQMSG_BENCH_SINK=$sink \
        "$build/bench/tqmsg_journal_bench" --benchmark_repetitions="$repetitions" \
        --benchmark_report_aggregates_only=true --benchmark_format=json \
        --benchmark_out="$out/$mode.json" --benchmark_out_format=json >/dev/null
}

run journal
run none
python3 - "$out/journal.json" "$out/none.json" <<'PY'
import json, sys
# Wall time is what a service waits; CPU time is the sender's own work, the
# steadier figure on a busy machine.
print(f"{'Against':<26}{'Time':<6}{'tqmsg_report':>14}{'sd_journal_send':>17}{'Ratio':>7}  Goal <= 1.10")
for label, path in zip(["live journald", "draining socket"], sys.argv[1:]):
    medians = {b["run_name"]: b for b in json.load(open(path))["benchmarks"]
               if b.get("aggregate_name") == "median"}
    for clock, key in (("wall", "real_time"), ("CPU", "cpu_time")):
        report = medians["BM_TqmsgReport"][key]
        send = medians["BM_SdJournalSend"][key]
        ratio = report / send
        verdict = "met" if ratio <= 1.10 else "NOT met"
        print(f"{label:<26}{clock:<6}{report:>11.0f} ns{send:>14.0f} ns{ratio:>7.2f}  {verdict}")
    print(f"{'':<26}{'(formatting alone: ' + format(medians['BM_FormatWithInserts']['cpu_time'], '.0f') + ' ns CPU)'}")
PY
