#!/usr/bin/env python3
"""Checks what the live-journal tests' senders left in the journal.

    check-entries.py SCENARIO OUTDIR BASE [ARG]

reads OUTDIR/entries.json (journalctl -o json) or OUTDIR/syslog.txt and
compares the test program's entries (SYSLOG_IDENTIFIER tqmsg-test) with what
the scenario sent. Prints each difference; exits 1 when there is one.
"""
import json
import re
import sys

IDENTIFIER = "tqmsg-test"

# (identifier, language, priority, symbol, message, inserts) of each event
# the sender's `events` scenario reports, in order.
EVENTS = [
    (0x41010001, 0x409, 6, "MSG_SERVICE_STARTED",
     "The storage service started (version 2.4.1).", ["2.4.1"]),
    (0xC1010010, 0x409, 3, "MSG_DISK_FULL",
     "Volume /srv is full: 1048576 bytes needed.\nFree some space and start /srv again.",
     ["/srv", "1048576"]),
    (0x81010011, 0x409, 4, "MSG_DISK_LOW", "Volume /var has 120 MB free (7%).",
     ["/var", "120", "7"]),
    (0x01010012, 0x409, 6, "MSG_JOB_DONE", "Job nightly finished: 3 files copied.",
     ["nightly", "3 files copied"]),
    (0xC1010010, 0x407, 3, "MSG_DISK_FULL",
     "Datenträger /srv ist voll: 2048 Bytes benötigt.\n"
     "Geben Sie Speicher frei und starten Sie /srv erneut.", ["/srv", "2048"]),
    (0x01010012, 0x409, 2, "MSG_JOB_DONE", "Job nightly finished: 3 files copied.",
     ["nightly", "3 files copied"]),
]

# (identifier, language, priority, inserts that could be read) of each event
# the `failure` scenario reports.
FAILURES = [
    (0xC1010099, 0x409, 3, []),
    (0x81010011, 0x40C, 4, []),
    (0xC1010010, 0x409, 3, ["/data"]),
]

problems = []


def expect(what, actual, wanted):
    if actual != wanted:
        problems.append(f"{what}: {actual!r}, wanted {wanted!r}")


def message_id(base, identifier):
    return base[:24].lower() + f"{identifier:08x}"


def entries(outdir):
    with open(f"{outdir}/entries.json", encoding="utf-8") as lines:
        found = [json.loads(line) for line in lines if line.strip()]
    return [e for e in found if e.get("SYSLOG_IDENTIFIER") == IDENTIFIER]


def check_identity(where, entry, base, identifier, language, priority):
    expect(f"{where} PRIORITY", entry.get("PRIORITY"), str(priority))
    expect(f"{where} MESSAGE_ID", entry.get("MESSAGE_ID"), message_id(base, identifier))
    expect(f"{where} TQMSG_ID", entry.get("TQMSG_ID"), f"0x{identifier:08X}")
    expect(f"{where} TQMSG_LANGUAGE", entry.get("TQMSG_LANGUAGE"), f"0x{language:X}")


def check_inserts(where, entry, inserts):
    found = sorted(k for k in entry if k.startswith("TQMSG_INSERT_"))
    expect(f"{where} insert fields", found,
           sorted(f"TQMSG_INSERT_{n}" for n in range(1, len(inserts) + 1)))
    for number, text in enumerate(inserts, 1):
        expect(f"{where} TQMSG_INSERT_{number}", entry.get(f"TQMSG_INSERT_{number}"), text)


def check_events(outdir, base):
    found = entries(outdir)
    expect("number of entries", len(found), len(EVENTS))
    for n, (entry, event) in enumerate(zip(found, EVENTS)):
        identifier, language, priority, symbol, message, inserts = event
        where = f"entry {n} ({symbol})"
        check_identity(where, entry, base, identifier, language, priority)
        expect(f"{where} TQMSG_SYMBOL", entry.get("TQMSG_SYMBOL"), symbol)
        expect(f"{where} MESSAGE", entry.get("MESSAGE"), message)
        expect(f"{where} TQMSG_ERROR", entry.get("TQMSG_ERROR"), None)
        check_inserts(where, entry, inserts)


def check_failure(outdir, base):
    with open(f"{outdir}/sender.out", encoding="utf-8") as out:
        texts = out.read().splitlines()
    found = entries(outdir)
    expect("number of entries", len(found), len(FAILURES))
    expect("number of failure texts", len(texts), len(FAILURES))
    for n, (entry, failure, text) in enumerate(zip(found, FAILURES, texts)):
        identifier, language, priority, inserts = failure
        where = f"failure entry {n}"
        check_identity(where, entry, base, identifier, language, priority)
        expect(f"{where} TQMSG_ERROR", entry.get("TQMSG_ERROR"), text)
        message = entry.get("MESSAGE", "")
        if f"0x{identifier:08X}" not in message or not message.endswith(text):
            problems.append(f"{where} MESSAGE {message!r} names neither the event nor {text!r}")
        check_inserts(where, entry, inserts)


def check_threads(outdir, base, count):
    wanted = {(t, i) for t in range(8) for i in range(count)}
    seen = set()
    for entry in entries(outdir):
        job, result = entry.get("TQMSG_INSERT_1"), entry.get("TQMSG_INSERT_2")
        match = re.fullmatch(r"thread-(\d+)/event (\d+)", f"{job}/{result}")
        if not match or entry.get("MESSAGE") != f"Job {job} finished: {result}.":
            problems.append(f"a torn or merged entry: {entry.get('MESSAGE')!r} {job!r} {result!r}")
            continue
        key = (int(match[1]), int(match[2]))
        if key in seen:
            problems.append(f"event {key} logged twice")
        seen.add(key)
        check_identity(f"event {key}", entry, base, 0x01010012, 0x409, 6)
    missing = sorted(wanted - seen)
    expect("events lost", missing[:5], [])
    expect("events logged", len(seen), len(wanted))


def check_syslog(outdir, base):
    with open(f"{outdir}/syslog.txt", encoding="utf-8") as received:
        lines = received.read().splitlines()
    expect("datagrams received", len(lines), len(EVENTS))
    for n, (line, event) in enumerate(zip(lines, EVENTS)):
        _, _, priority, symbol, message, _ = event
        # <facility*8+priority>timestamp identifier[pid]: text, line feeds as \n
        match = re.fullmatch(r"<(\d+)>.*? ([^ ]+)\[\d+\]: (.*)", line)
        if not match:
            problems.append(f"datagram {n} is not a syslog line: {line!r}")
            continue
        expect(f"datagram {n} ({symbol}) priority", int(match[1]), 8 + priority)
        expect(f"datagram {n} identifier", match[2], IDENTIFIER)
        expect(f"datagram {n} text", match[3], message.replace("\n", "\\n"))


def main():
    scenario, outdir, base = sys.argv[1:4]
    if scenario == "events":
        check_events(outdir, base)
    elif scenario == "failure":
        check_failure(outdir, base)
    elif scenario == "threads":
        check_threads(outdir, base, int(sys.argv[4]))
    elif scenario == "syslog":
        check_syslog(outdir, base)
    for problem in problems:
        print(problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
