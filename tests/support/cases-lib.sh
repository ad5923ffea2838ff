# Shared by the end-to-end drivers of the tqmsg tool (tests/*/*-cases.sh).
# A driver sets case_name, tool and emulator, sources this file, defines one
# function case_NAME per case and ends with run_case. Each case gets a fresh
# work directory, $work, removed on exit.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# run ARGS...: runs the tool; sets $status, $out (stdout), $err (stderr).
run() {
    $emulator "$tool" "$@" >"$work/out" 2>"$work/err"
    status=$?
    out=$(cat "$work/out")
    err=$(cat "$work/err")
}
fail() { echo "FAIL [$case_name]: $*"; failures=$((failures + 1)); }
expect_status() { [ "$status" = "$1" ] || fail "exit $status, expected $1 ($2): $err"; }
expect_in() { grep -qF -- "$2" <<<"$1" || fail "missing \"$2\" in: $1"; }

# Runs case_$case_name; the exit status says whether any check failed.
run_case() {
    declare -F "case_$case_name" >/dev/null || { echo "unknown case: $case_name"; exit 2; }
    "case_$case_name"
    exit $((failures > 0))
}
