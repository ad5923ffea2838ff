#!/usr/bin/env bash
# Builds the fuzz targets with clang (libFuzzer, AddressSanitizer,
# UndefinedBehaviorSanitizer) and runs them side by side for a bounded time
# (TQMSG_FUZZ_SECONDS, default 60). The converter's and the PO import's
# targets need the tools' directory, where their libraries live. Each target
# runs in fork mode, one worker, as the long campaigns in fuzz/README.md do
# with more. Any crash, leak or sanitizer report fails the stage; its input is
# kept under build/fuzz/artifacts/.
set -euo pipefail
cd "$(dirname "$0")/../.."
seconds=${TQMSG_FUZZ_SECONDS:-60}
build=build/fuzz
targets=(load_file format_string port po_import)

echo "-- building the fuzz targets (clang)"
cmake -S . -B "$build" -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTQMSG_BUILD_FUZZ=ON -DTQMSG_SANITIZE=address,undefined \
    -DTQMSG_BUILD_TESTS=OFF -DTQMSG_BUILD_TOOLS=ON -DTQMSG_INSTALL=OFF >/dev/null
cmake --build "$build" -j "$(nproc)" --target "${targets[@]/#/tqmsg_fuzz_}"

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
# libgettextpo keeps a small block per PO entry with a context until exit.
export LSAN_OPTIONS=suppressions=$PWD/tests/po/lsan.supp
mkdir -p "$build/artifacts"
pids=()
for target in "${targets[@]}"; do
    work="$build/work/$target"
    mkdir -p "$work"
    echo "-- fuzzing $target for ${seconds}s"
    "$build/fuzz/tqmsg_fuzz_$target" "$work" "fuzz/corpus/$target" \
        -dict=fuzz/tqmsg.dict -fork=1 -max_total_time="$seconds" -rss_limit_mb=2048 \
        -max_len=65536 -timeout=10 -close_fd_mask=1 \
        -artifact_prefix="$build/artifacts/$target-" >"$build/$target.log" 2>&1 &
    pids+=($!)
done

failed=0
for i in "${!targets[@]}"; do
    target=${targets[$i]}
    status=0
    wait "${pids[$i]}" || status=$?
    log="$build/$target.log"
    if ((status != 0)) || grep -Eq 'ERROR: (Address|Leak|UndefinedBehavior)Sanitizer|runtime error:|deadly signal' "$log"; then
        echo "!! $target: a finding (exit status $status); end of $log:"
        tail -n 60 "$log"
        failed=1
    else
        echo "-- $target: no finding; $(grep -E '^#[0-9]+' "$log" | tail -n 1)"
    fi
done
exit $failed
