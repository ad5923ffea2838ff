#!/usr/bin/env bash
# Builds the journal benchmark (Release, native x86-64) and runs it in a
# private mount namespace (root): against a live systemd-journald, and
# against a socket at journald's path that the benchmark drains itself (the
# sender's own cost, without waiting for journald). Prints the medians and
# the ratio tqmsg_report / sd_journal_send; goal: at most 1.10.
#   bench/journal-run.sh [rounds]     (default 5; three repetitions each)
set -euo pipefail
cd "$(dirname "$0")/.."
rounds=${1:-5}
build=build/bench
out=$build/journal-results

cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DTQMSG_BUILD_BENCH=ON \
    -DTQMSG_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" -j2 --target tqmsg_journal_bench >/dev/null
mkdir -p "$out"

# run MODE BENCHMARK ROUND: one benchmark, in a process and beside a journal
# of its own (a send's time depends on how full the journal's socket already
# is), three repetitions as JSON into $out/MODE-BENCHMARK-ROUND.json.
run() {
    local mode=$1 benchmark=$2 round=$3 sink=0
    [ "$mode" = none ] && sink=1
    TQMSG_JOURNAL_KEEP_ENTRIES=0 bash journal/tests/with-journal.sh "$mode" "$out/$mode" \
        env TQMSG_BENCH_SINK=$sink "$build/bench/tqmsg_journal_bench" \
        --benchmark_filter="^$benchmark\$" --benchmark_repetitions=3 \
        --benchmark_format=json --benchmark_out="$out/$mode-$benchmark-$round.json" \
        --benchmark_out_format=json >/dev/null
}

# The two sends alternate, round after round, so that a change in the
# machine's load falls on both.
for round in $(seq "$rounds"); do
    for mode in journal none; do
        for benchmark in BM_TqmsgReport BM_SdJournalSend BM_FormatWithInserts; do
            run "$mode" "$benchmark" "$round"
        done
    done
done
python3 - "$out" <<'PY'
import glob, json, statistics, sys
# Medians over every repetition of every round. Wall time is what a service waits; CPU time is the sender's own work, the
# steadier figure on a busy machine.
print(f"{'Against':<26}{'Time':<6}{'tqmsg_report':>14}{'sd_journal_send':>17}{'Ratio':>7}  Goal <= 1.10")
for label, mode in (("live journald", "journal"), ("draining socket", "none")):
    runs = {}
    for path in glob.glob(f"{sys.argv[1]}/{mode}-*.json"):
        for b in json.load(open(path))["benchmarks"]:
            if b.get("run_type") == "iteration":
                runs.setdefault(b["run_name"], []).append(b)
    medians = {name: {key: statistics.median(r[key] for r in found)
                      for key in ("real_time", "cpu_time")} for name, found in runs.items()}
    for clock, key in (("wall", "real_time"), ("CPU", "cpu_time")):
        report = medians["BM_TqmsgReport"][key]
        send = medians["BM_SdJournalSend"][key]
        ratio = report / send
        verdict = "met" if ratio <= 1.10 else "NOT met"
        print(f"{label:<26}{clock:<6}{report:>11.0f} ns{send:>14.0f} ns{ratio:>7.2f}  {verdict}")
    print(f"{'':<26}{'(formatting alone: ' + format(medians['BM_FormatWithInserts']['cpu_time'], '.0f') + ' ns CPU)'}")
PY
