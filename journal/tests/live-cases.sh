#!/usr/bin/env bash
# The live-journal tests: each case_NAME is one CTest test, run as
#   live-cases.sh NAME SENDER THREADS TESTDIR WORKDIR
# with the C sender, the C++ threads sender, this directory and a scratch
# directory. Each case runs a sender beside a real journald (or a test /dev/log
# receiver) through with-journal.sh and checks what arrived; a machine that
# cannot make the namespace skips (status 77) with the reason printed.
set -euo pipefail

name=$1 sender=$2 threads=$3 testdir=$4 workdir=$5
# An uppercase base, to check that message IDs come out in lower case.
base=0123456789ABCDEF0123456789abcdef
events=$testdir/data/events.mc
out=$workdir/$name
rm -rf "$out"
mkdir -p "$out"

# Runs the namespace harness; a skip ends the case with the skip status.
harness() {
    local status=0
    bash "$testdir/with-journal.sh" "$@" || status=$?
    [ "$status" = 77 ] && exit 77
    return "$status"
}

check() {
    python3 "$testdir/check-entries.py" "$@"
}

case_events() {
    harness journal "$out" "$sender" "$events" "$base" events
    check events "$out" "$base"
}

case_failure() {
    harness journal "$out" sh -c '"$@" >"'"$out"'/sender.out"; test $? = 0' sh \
        "$sender" "$events" "$base" failure
    check failure "$out" "$base"
}

case_threads() {
    harness journal "$out" "$threads" "$events" "$base" 250
    check threads "$out" "$base" 250
}

case_syslog() {
    harness syslog "$out" "$sender" "$events" "$base" events
    check syslog "$out" "$base"
}

"case_$name"
