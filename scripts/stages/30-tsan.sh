#!/usr/bin/env bash
# Builds the ThreadSanitizer variant and runs the concurrency stress tests:
# eight threads looking up and formatting at once, through the C++ interface
# and through the C interface, must produce no report.
set -euo pipefail
cd "$(dirname "$0")/../.."
cmake --preset tsan >/dev/null
cmake --build --preset tsan -j "$(nproc)" --target tqmsg_stress_tests tqmsg_capi_threads
export TSAN_OPTIONS="halt_on_error=1 abort_on_error=1 second_deadlock_stack=1"
# Debian's kernels randomise the address space more than older TSan runtimes
# expect; run without randomisation when setarch allows it.
run=()
if setarch "$(uname -m)" -R true 2>/dev/null; then
    run=(setarch "$(uname -m)" -R)
fi
"${run[@]}" build/tsan/tests/tqmsg_stress_tests
"${run[@]}" build/tsan/tests/tqmsg_capi_threads

# libtqmsg-journal: eight threads reporting side by side beside a live
# journald (the namespace harness needs root: elsewhere it prints why it
# skips). libsystemd itself is not instrumented: see the suppressions file.
cmake --build --preset tsan -j "$(nproc)" --target tqmsg_journal_sender tqmsg_journal_threads
status=0
TSAN_OPTIONS="$TSAN_OPTIONS suppressions=$PWD/journal/tests/tsan.supp" "${run[@]}" \
    bash journal/tests/live-cases.sh threads build/tsan/journal-tests/tqmsg_journal_sender \
    build/tsan/journal-tests/tqmsg_journal_threads journal/tests build/tsan/journal-live ||
    status=$?
[ "$status" = 0 ] || [ "$status" = 77 ] || exit "$status"
