#!/usr/bin/env bash
# Runs a program beside a live journal, in a private mount namespace, so that
# the machine's own /run, /dev and journal are never touched.
#
#   with-journal.sh journal OUTDIR PROGRAM ARGS...
#       a tmpfs on /run, systemd-journald started on it; PROGRAM runs once the
#       journal socket exists; the entries it left are written to
#       OUTDIR/entries.json (journalctl -o json, one object a line), unless
#       TQMSG_JOURNAL_KEEP_ENTRIES=0 (a benchmark's million entries).
#   with-journal.sh syslog OUTDIR PROGRAM ARGS...
#       a tmpfs on /run with no journal socket and a tmpfs on /dev holding the
#       few device nodes programs need and a test /dev/log receiver; what it
#       received is written to OUTDIR/syslog.txt, one datagram a line.
#   with-journal.sh none OUTDIR PROGRAM ARGS...
#       a tmpfs on /run and nothing else, for a program that serves the
#       journal socket itself (the benchmark's draining receiver).
#
# The status is PROGRAM's. When the namespace cannot be made (not root, no
# unshare, unshare refused, no journald) the reason is printed and the status
# is 77, which CTest reports as skipped.
set -euo pipefail

SKIP=77
mode=$1 outdir=$2
shift 2

skip() {
    echo "SKIPPED: $*"
    exit "$SKIP"
}

# Stops the process `pid` and waits for it.
stop() {
    kill "$1" 2>/dev/null || true
    wait "$1" 2>/dev/null || true
}

# Waits up to ten seconds for the socket `path` to appear.
wait_for_socket() {
    for _ in $(seq 100); do
        [ -S "$1" ] && return 0
        sleep 0.1
    done
    return 1
}

journald=/lib/systemd/systemd-journald

outside() {
    [ "$(id -u)" = 0 ] || skip "a live journal needs root (to make a mount namespace)"
    command -v unshare >/dev/null || skip "unshare is not installed"
    if [ "$mode" = journal ]; then
        [ -x "$journald" ] || skip "$journald is not installed (Debian package systemd)"
        command -v journalctl >/dev/null || skip "journalctl is not installed"
    fi
    local reason
    if ! reason=$(unshare -m --propagation private true 2>&1); then
        skip "cannot make a private mount namespace: ${reason:-unshare failed}"
    fi
    mkdir -p "$outdir"
    TQMSG_IN_NAMESPACE=1 exec unshare -m --propagation private bash "$0" "$mode" "$outdir" "$@"
}

# journald reads its drop-ins from /run too: keep everything in memory and
# accept every entry (tests and benchmarks send thousands at once).
configure_journald() {
    mkdir -p /run/systemd/journald.conf.d
    cat >/run/systemd/journald.conf.d/tqmsg-test.conf <<'CONF'
[Journal]
Storage=volatile
RateLimitIntervalSec=0
RateLimitBurst=0
ReadKMsg=no
ForwardToSyslog=no
ForwardToKMsg=no
ForwardToConsole=no
ForwardToWall=no
CONF
}

inside_journal() {
    mount -t tmpfs tmpfs /run
    # Persistent storage would be /var/log/journal: hide it as well.
    if [ -d /var/log/journal ]; then mount -t tmpfs tmpfs /var/log/journal; fi
    configure_journald
    "$journald" >"$outdir/journald.log" 2>&1 &
    local journald_pid=$!
    if ! wait_for_socket /run/systemd/journal/socket; then
        stop "$journald_pid"
        skip "systemd-journald did not open its socket: $(tail -n 3 "$outdir/journald.log")"
    fi
    local status=0
    "$@" || status=$?
    journalctl --sync 2>/dev/null || sleep 1
    if [ "${TQMSG_JOURNAL_KEEP_ENTRIES:-1}" != 0 ]; then
        journalctl -D /run/log/journal -o json --no-pager >"$outdir/entries.json" \
            2>"$outdir/journalctl.err" || true
    fi
    stop "$journald_pid"
    return "$status"
}

# Binds the device nodes a program needs from the original /dev onto a fresh
# tmpfs, so that /dev/log can be a test socket.
private_dev() {
    local keep=/run/tqmsg-dev
    mkdir -p "$keep"
    mount --bind /dev "$keep"
    mount -t tmpfs tmpfs /dev
    for node in null zero full random urandom; do
        touch "/dev/$node"
        mount --bind "$keep/$node" "/dev/$node"
    done
}

inside_syslog() {
    mount -t tmpfs tmpfs /run
    private_dev
    python3 - "$outdir/syslog.txt" "$outdir/receiver.ready" <<'PY' &
import os, socket, sys
out, ready = sys.argv[1], sys.argv[2]
receiver = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
receiver.bind("/dev/log")
open(ready, "w").close()
with open(out, "wb", buffering=0) as log:
    while True:
        datagram = receiver.recv(65536)
        if datagram == b"tqmsg-test-end":
            break
        log.write(datagram.replace(b"\n", b"\\n") + b"\n")
PY
    local receiver_pid=$!
    for _ in $(seq 100); do
        [ -e "$outdir/receiver.ready" ] && break
        sleep 0.1
    done
    local status=0
    "$@" || status=$?
    python3 -c 'import socket; s = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM); s.sendto(b"tqmsg-test-end", "/dev/log")'
    wait "$receiver_pid" || true
    return "$status"
}

if [ -z "${TQMSG_IN_NAMESPACE:-}" ]; then
    outside "$@"
fi
case $mode in
journal) inside_journal "$@" ;;
syslog) inside_syslog "$@" ;;
none) mount -t tmpfs tmpfs /run && "$@" ;;
*) echo "unknown mode: $mode" >&2; exit 2 ;;
esac
