#!/usr/bin/env bash
# Regenerates the benchmark catalogues, builds the benchmarks (Release,
# native x86-64) and prints one table of medians with the ratios and goals.
#   bench/run.sh [repetitions]        (default 5)
# Needs python3, msgfmt (gettext) and a de_DE.UTF-8 locale: gettext translates
# nothing in the C locale. As root the script generates the locale itself.
set -euo pipefail
cd "$(dirname "$0")/.."
repetitions=${1:-5}
data=${TQMSG_BENCH_DATA:-$PWD/build/bench-data}
build=build/bench

corpus=""
for dir in ../shared/corpus/mc ../../shared/corpus/mc; do
    [ -f "$dir/MANIFEST.tsv" ] && corpus=$dir && break
done
if [ -z "$corpus" ]; then
    echo "the corpus of real message files (shared/corpus/mc) is not beside this checkout" >&2
    exit 1
fi

if ! locale -a 2>/dev/null | grep -qix 'de_DE.utf-\?8'; then
    if [ "$(id -u)" = 0 ] && command -v localedef >/dev/null && [ -e /usr/share/i18n/locales/de_DE ]; then
        echo "-- generating the de_DE.UTF-8 locale"
        localedef -i de_DE -f UTF-8 de_DE.UTF-8
    else
        echo "the de_DE.UTF-8 locale is missing: install Debian's 'locales' and run" >&2
        echo "  localedef -i de_DE -f UTF-8 de_DE.UTF-8   (as root)" >&2
        exit 1
    fi
fi

echo "-- generating the catalogue in $data"
mkdir -p "$data/locale/de/LC_MESSAGES"
python3 bench/make_catalogue.py "$data" 50000
msgfmt -o "$data/locale/de/LC_MESSAGES/tqbench.mo" "$data/tqbench.po"
# The largest real file gives no SymbolicName, which the format requires: a
# line naming each message is added after its MessageId line (CRLF kept).
python3 - "$corpus/reactos__base_applications_cmdutils_eventcreate_evtmsgstr.mc" "$data/largest.mc" <<'PY'
import sys
lines = open(sys.argv[1], "rb").read().split(b"\n")
out = []
for line in lines:
    out.append(line)
    if line.lower().startswith(b"messageid=0x"):
        out.append(b"SymbolicName=EVT_" + line.split(b"=")[1].strip() + b"\r")
open(sys.argv[2], "wb").write(b"\n".join(out))
PY

# The converter is measured on the file as written for Windows.
cp -f "$corpus/reactos__base_applications_cmdutils_eventcreate_evtmsgstr.mc" "$data/largest-windows.mc"

echo "-- building the benchmarks"
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DTQMSG_BUILD_BENCH=ON \
    -DTQMSG_BUILD_TESTS=OFF -DTQMSG_BUILD_TOOLS=ON -DTQMSG_INSTALL=OFF >/dev/null
cmake --build "$build" -j "$(nproc)" --target tqmsg_bench >/dev/null

echo "-- running ($repetitions repetitions)"
TQMSG_BENCH_DATA=$data "$build/bench/tqmsg_bench" --benchmark_repetitions="$repetitions" \
    --benchmark_report_aggregates_only=true --benchmark_out="$data/results.json" \
    --benchmark_out_format=json >/dev/null
python3 bench/report.py "$data/results.json"
