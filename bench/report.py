#!/usr/bin/env python3
"""Prints the table of bench/run.sh from Google Benchmark's JSON output (medians)."""
import json
import sys


def medians(path):
    with open(path) as f:
        runs = json.load(f)["benchmarks"]
    out = {}
    for run in runs:
        if run.get("aggregate_name", "median") != "median" or run.get("error_occurred"):
            continue
        out[run["run_name"].split("/")[0]] = run
    return out


def main():
    m = medians(sys.argv[1])

    def get(name, field):
        return m[name][field] if name in m and field in m[name] else float("nan")

    rows = []
    for name, label in (("BM_LoadLargestCorpusFile", "Load largest corpus file (65,536 msgs)"),
                        ("BM_LoadCatalogue", "Load catalogue (50,000 msgs x 2 langs)")):
        ms = get(name, "real_time")
        mbs = get(name, "bytes_per_second") / 1e6
        rows.append((label, f"{ms:.1f} ms, {mbs:.0f} MB/s", "", "", "",
                     ">= 100 MB/s", "yes" if mbs >= 100 else "NO"))
    for port, load, label in (("BM_PortLargestCorpusFile", "BM_LoadLargestCorpusFile",
                               "Port largest corpus file (as for Windows)"),
                              ("BM_PortCatalogue", "BM_LoadCatalogue", "Port catalogue")):
        ms = get(port, "real_time")
        ratio = ms / get(load, "real_time")
        rows.append((label, f"{ms:.1f} ms, {get(port, 'bytes_per_second') / 1e6:.0f} MB/s", "",
                     "", f"{ratio:.2f} x its load", "<= 2 x its load",
                     "yes" if ratio <= 2 else "NO"))
    tq = get("BM_TqCompoundLangLookup", "cpu_time")
    gt = get("BM_GettextThenSnprintf", "cpu_time")
    fl = get("BM_SnprintfFloor", "cpu_time")
    rows.append(("Lookup + format, random id, 0-3 inserts", f"{tq:.0f} ns", f"{gt:.0f} ns",
                 f"{fl:.0f} ns", f"{tq / gt:.2f} x gettext, {tq / fl:.2f} x floor",
                 "<= 0.5 x gettext, <= 4 x floor",
                 "yes" if tq <= 0.5 * gt and tq <= 4 * fl else "NO"))
    tc = get("BM_TqmsgFormat", "cpu_time")
    rows.append(("C interface: tqmsg_format, same calls", f"{tc:.0f} ns", "", "",
                 f"{tc / tq:.3f} x TQ_CompoundLangLookup", "<= 1.05 x TQ_CompoundLangLookup",
                 "yes" if tc <= 1.05 * tq else "NO"))
    mt = get("BM_MemoryTqmsgLoad", "resident_MB")
    mg = get("BM_MemoryGettextTouchAll", "resident_MB")
    rows.append(("Resident memory added (catalogue)", f"{mt:.1f} MB", f"{mg:.1f} MB", "",
                 f"{mt / mg:.2f} x gettext", "<= 1 x gettext", "yes" if mt <= mg else "NO"))

    header = ("Measure", "tqmsg", "gettext", "snprintf floor", "Ratio", "Goal", "Met")
    widths = [max(len(str(r[i])) for r in rows + [header]) for i in range(len(header))]
    line = lambda r: "| " + " | ".join(str(c).ljust(w) for c, w in zip(r, widths)) + " |"
    print(line(header))
    print("|" + "|".join("-" * (w + 2) for w in widths) + "|")
    for r in rows:
        print(line(r))


if __name__ == "__main__":
    main()
