#!/usr/bin/env bash
# How every command that writes files writes them. Each function case_NAME is
# one CTest test, output.NAME, registered from this file by tests/CMakeLists.txt:
#   output-cases.sh CASE TOOL SOURCE_DIR [EMULATOR]
# Device nodes are made with mknod in the work directory, never taken from the
# system's /dev, so no case can harm the machine.
set -uo pipefail
case_name=$1 tool=$2 src=$3 emulator=${4:-}
self=$(realpath "${BASH_SOURCE[0]}")
source "$(dirname "$self")/../support/cases-lib.sh"
umask 002  # new outputs must come out 0664, not the 0600 of a temporary file

have_po() { $emulator "$tool" po --help >/dev/null 2>&1; }

# The commands under test, one per line: name|arguments|a text the output
# holds. @OUT@ is the output under test, @OTHER@ a second output, @M@ a
# message file, @P@ a PO file of its German texts.
commands() {
    cat <<'EOT'
header|header @M@ -o @OUT@|#define MSG_
port|port @M@ -o @OUT@|SymbolicName=
port_header|port @M@ -o @OTHER@ --header @OUT@|#define MSG_
EOT
    have_po && cat <<'EOT'
template|po template @M@ -o @OUT@|msgctxt "MSG_
export|po export @M@ --language German -o @OUT@|msgctxt "MSG_
import|po import @P@ @M@ --language German -o @OUT@|SymbolicName=
EOT
}

# The kinds of target: kind|status as root|status as another user|what the
# error says (OUT stands for the output as given).
kinds() {
    cat <<'EOT'
new|0|0|
existing|0|0|
link|0|0|
dangling|0|0|
null|0|0|
full|1|1|cannot write OUT: No space left on device
fifo|0|0|
directory|1|1|cannot write OUT: Is a directory
readonly_dir|0|1|cannot write OUT: Permission denied
stdout|0|0|
closed_stdout|1|1|cannot write standard output: Bad file descriptor
full_stdout|1|1|cannot write standard output: No space left on device
same_twice|2|2|two outputs name the same file
input|2|2|would overwrite the input
in_place|0|0|
EOT
}

# Makes null and full device nodes in $1 (root only).
make_devices() {
    mkdir -p "$1" && mknod "$1/null" c 1 3 && mknod "$1/full" c 1 7 && chmod 666 "$1/null" "$1/full"
}

# Sets up the target of `kind` in row directory $d; sets $target (the path
# given, "-" for standard output) and $stdout (where standard output goes).
prepare() {
    local kind=$1 first_input=$2
    target=$d/out stdout=$d/stdout
    case $kind in
    existing)
        echo old >"$d/out" && chmod 640 "$d/out"
        [ "$(id -u)" = 0 ] && chown nobody:nogroup "$d/out"
        owner_before=$(stat -c %U:%G "$d/out") ;;
    link) echo old >"$d/file" && ln -s file "$d/out" ;;
    dangling) ln -s made "$d/out" ;;
    null | full) target=$devices/$kind ;;
    fifo) mkfifo "$d/out" && { timeout 60 cat "$d/out" >"$d/fifo.out" & } ;;
    directory) mkdir "$d/out" ;;
    readonly_dir) mkdir "$d/ro" && chmod 555 "$d/ro" && target=$d/ro/out ;;
    stdout | closed_stdout) target=- ;;
    full_stdout) target=- stdout=$devices/full ;;
    same_twice) target=$d/other ;;
    input) target=$first_input ;;
    in_place) chmod 600 "$d/m.mc" && target=$d/m.mc ;;
    esac
}

# Checks what a successful row left; $1 the kind, $2 the text the output holds.
check_written() {
    local kind=$1 marker=$2 owner
    case $kind in
    new) grep -qF "$marker" "$d/out" && [ "$(stat -c %a "$d/out")" = 664 ] ||
        fail "$row: not a complete file with the umask's mode" ;;
    existing) grep -qF "$marker" "$d/out" && [ "$(stat -c %a "$d/out")" = 640 ] &&
        [ "$(stat -c %U:%G "$d/out")" = "$owner_before" ] || fail "$row: mode or owner not kept" ;;
    link) [ -L "$d/out" ] && grep -qF "$marker" "$d/file" || fail "$row: link replaced" ;;
    dangling) [ -L "$d/out" ] && grep -qF "$marker" "$d/made" || fail "$row: link not followed" ;;
    null) [ -c "$devices/null" ] || fail "$row: the device was replaced" ;;
    fifo) wait && [ -p "$d/out" ] && grep -qF "$marker" "$d/fifo.out" || fail "$row: FIFO not written" ;;
    readonly_dir) grep -qF "$marker" "$d/ro/out" || fail "$row: not written" ;;
    stdout) grep -qF "$marker" "$d/stdout" && [ ! -e "$d/-" ] || fail "$row: not on standard output" ;;
    in_place) grep -qF "$marker" "$d/m.mc" && [ "$(stat -c %a "$d/m.mc")" = 600 ] ||
        fail "$row: mode not kept" ;;
    esac
}

# The content of $1 when it is a regular file (reading a FIFO would block).
regular_content() { [ -f "$1" ] && cat "$1"; }

# One row: command `name` writing to a target of `kind`.
run_row() {
    local name=$1 args=$2 marker=$3 kind=$4 expected=$5 message=$6 before owner_before
    row="$name to $kind"
    d=$work/$name.$kind
    mkdir "$d" && cp "$work/fixtures/"* "$d/"
    local first_input=$d/m.mc
    [ "$name" = import ] && first_input=$d/de.po
    prepare "$kind" "$first_input"
    args=${args//@OUT@/$target} args=${args//@OTHER@/$d/other}
    args=${args//@M@/$d/m.mc} args=${args//@P@/$d/de.po}
    before=$(regular_content "$d/out")
    if [ "$kind" = closed_stdout ]; then
        (cd "$d" && $emulator "$tool" $args >&- 2>"$d/err")
    else
        (cd "$d" && $emulator "$tool" $args >"$stdout" 2>"$d/err")
    fi
    status=$? err=$(cat "$d/err")
    [ "$status" = "$expected" ] || fail "$row: exit $status, expected $expected: $err"
    [ -n "$message" ] && [ "$expected" != 0 ] && expect_in "$err" "${message//OUT/$target}"
    if [ "$status" = 0 ]; then
        check_written "$kind" "$marker"
    else
        [ -e "$d/other" ] && fail "$row: the other output was committed"
        [ "$(regular_content "$d/out")" = "$before" ] || fail "$row: the target was changed"
    fi
    leftovers=$(find "$d" "$devices" -name '.*.??????' 2>/dev/null)
    [ -z "$leftovers" ] || fail "$row: temporary files left: $leftovers"
    [ "$kind" = fifo ] && wait
    chmod -R u+w "$d" 2>/dev/null
}

# Runs the whole table as the current user.
case_targets() {
    devices=${OUTPUT_DEVICES:-$work/dev}
    [ -n "${OUTPUT_DEVICES:-}" ] || make_devices "$devices" 2>/dev/null ||
        echo "SKIP device rows: mknod needs root"
    mkdir "$work/fixtures" && cp "$src/examples/messages.mc" "$work/fixtures/m.mc"
    have_po || echo "SKIP po rows: the tool was built without the po subcommand"
    have_po && $emulator "$tool" po export "$work/fixtures/m.mc" --language German \
        -o "$work/fixtures/de.po" >/dev/null
    local column=3
    [ "$(id -u)" = 0 ] && column=2
    while IFS='|' read -r name args marker; do
        while IFS='|' read -r kind as_root as_user message; do
            [ -c "$devices/full" ] || case $kind in null | full | full_stdout) continue ;; esac
            [ "$kind" = same_twice ] && [ "$name" != port_header ] && continue
            [ "$kind" = in_place ] && [ "$name" != import ] && continue
            expected=$as_user
            [ "$column" = 2 ] && expected=$as_root
            run_row "$name" "$args" "$marker" "$kind" "$expected" "$message"
        done < <(kinds)
    done < <(commands)
}

# The same table as an unprivileged user: root passes permission checks that
# nobody else does.
case_targets_unprivileged() {
    if [ "$(id -u)" != 0 ]; then
        echo "SKIP: not root, so there are no privileges to drop"
        return
    fi
    local drop=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
    if ! "${drop[@]}" test -x "$tool" -a -r "$self"; then
        echo "SKIP: user nobody cannot run $tool"
        return
    fi
    make_devices "$work/dev" || fail "mknod"
    chmod 755 "$work"
    "${drop[@]}" env OUTPUT_DEVICES="$work/dev" bash "$self" targets "$tool" "$src" "$emulator" ||
        fail "the table failed as user nobody"
}

# Two imports into one output at once, 20 times: each exits 0 and the file is
# one of the two complete results, or one of them fails with a reason.
case_two_writers() {
    have_po || { echo "SKIP: the tool was built without the po subcommand"; return; }
    local mc=$src/examples/messages.mc
    $emulator "$tool" po export "$mc" --language German -o "$work/a.po" >/dev/null
    sed 's/^msgstr "Auftrag /msgstr "Job /' "$work/a.po" >"$work/b.po"
    for which in a b; do
        $emulator "$tool" po import "$work/$which.po" "$mc" --language German \
            -o "$work/$which.mc" >/dev/null || fail "import $which"
    done
    cmp -s "$work/a.mc" "$work/b.mc" && fail "the two results do not differ"
    for round in $(seq 20); do
        for which in a b; do
            $emulator "$tool" po import "$work/$which.po" "$mc" --language German \
                -o "$work/out.mc" >/dev/null 2>"$work/err.$which" &
            eval "pid_$which=$!"
        done
        wait "$pid_a"; status_a=$?
        wait "$pid_b"; status_b=$?
        if [ "$status_a$status_b" = 00 ]; then
            cmp -s "$work/out.mc" "$work/a.mc" || cmp -s "$work/out.mc" "$work/b.mc" ||
                fail "round $round: the output is neither complete result"
        elif [ "$status_a$status_b" = 01 ] || [ "$status_a$status_b" = 10 ]; then
            [ -s "$work/err.a" ] || [ -s "$work/err.b" ] || fail "round $round: a failure without reason"
        else
            fail "round $round: exit $status_a and $status_b: $(cat "$work/err.a" "$work/err.b")"
        fi
    done
    leftovers=$(find "$work" -name '.*.??????')
    [ -z "$leftovers" ] || fail "temporary files left: $leftovers"
}

# A run ended by SIGINT or SIGTERM while it waits to commit (its header goes
# to a FIFO nobody reads) dies by the signal and leaves nothing behind.
case_interrupted() {
    env --default-signal=INT true 2>/dev/null || { echo "SKIP: env has no --default-signal"; return; }
    local mc=$src/examples/messages.mc
    mkfifo "$work/fifo"
    for signal in INT TERM; do
        # Started in the background, a shell's command ignores SIGINT: undo that.
        env --default-signal=INT $emulator "$tool" port "$mc" -o "$work/out.mc" \
            --header "$work/fifo" 2>/dev/null &
        pid=$!
        for _ in $(seq 100); do
            [ -n "$(find "$work" -name '.out.mc.??????')" ] && break
            sleep 0.05
        done
        sleep 0.3  # the conversion is done and the run blocks opening the FIFO
        kill -s $signal $pid
        wait $pid
        status=$?
        [ "$status" = $((128 + $(kill -l $signal))) ] || fail "SIG$signal: exit $status"
        leftovers=$(find "$work" -name '.*.??????')
        [ -z "$leftovers" ] || fail "SIG$signal: temporary files left: $leftovers"
        [ -e "$work/out.mc" ] && fail "SIG$signal: an output was committed"
    done
}

# The faults of the former writers, each as it was met.
case_regressions() {
    local mc=$work/m.mc
    cp "$src/examples/messages.mc" "$mc"
    # A directory as input was read as an empty file.
    for args in "port $work -o $work/x.mc" "header $work -o $work/x.h"; do
        run $args
        expect_status 1 "$args"
        expect_in "$err" "cannot read $work: Is a directory"
    done
    # A second output naming the first kept only the header; a header naming
    # the input overwrote it.
    run port "$mc" -o "$work/o.mc" --header "$work/./o.mc"
    expect_status 2 "the same output twice"
    run port "$mc" -o "$work/o.mc" --header "$mc"
    expect_status 2 "the header over the input"
    cmp -s "$mc" "$src/examples/messages.mc" || fail "the input was changed"
    [ -e "$work/o.mc" ] && fail "an output was written after a usage error"
    have_po || { echo "SKIP po rows: the tool was built without the po subcommand"; return; }
    # An export over its message file replaced it with a PO file.
    run po export "$mc" --language German -o "$mc"
    expect_status 2 "export over the input"
    cmp -s "$mc" "$src/examples/messages.mc" || fail "the message file was replaced"
    # A link planted at the former fixed temporary name had its target overwritten.
    $emulator "$tool" po export "$mc" --language German -o "$work/de.po" >/dev/null
    echo victim >"$work/victim"
    ln -s victim "$work/s.mc.tmp"
    run po import "$work/de.po" "$mc" --language German -o "$work/s.mc"
    expect_status 0 "import next to a planted link"
    [ "$(cat "$work/victim")" = victim ] || fail "the planted link's target was overwritten"
    # An import in place through a link replaced the link and left its file.
    ln -s m.mc "$work/link.mc"
    sed 's/^msgstr "Auftrag /msgstr "Der Auftrag /' "$work/de.po" >"$work/changed.po"
    run po import "$work/changed.po" "$work/link.mc" --language German -o "$work/link.mc"
    expect_status 0 "import in place through a link"
    [ -L "$work/link.mc" ] && grep -q '^Der Auftrag ' "$mc" || fail "the link was not followed"
    run po template "$work" -o "$work/x.pot"
    expect_in "$err" "cannot read $work: Is a directory"
    # PO errors give the system's reason.
    run po import "$work/none.po" "$mc" --language German -o "$work/x.mc"
    expect_in "$err" "cannot open $work/none.po: No such file or directory"
}

run_case
