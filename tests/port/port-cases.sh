#!/usr/bin/env bash
# End-to-end cases of `tqmsg port`. Each function case_NAME is one CTest test,
# port.NAME, registered from this file by tests/CMakeLists.txt:
#   port-cases.sh CASE TOOL "CC FLAGS" [EMULATOR]
# What the converted texts format to is checked rule by rule in RuleTest; here
# the command itself: its options, exit statuses, outputs and messages.
set -uo pipefail
case_name=$1 tool=$2 cc=$3 emulator=${4:-}
source "$(dirname "${BASH_SOURCE[0]}")/../support/cases-lib.sh"

# A Windows file: no LanguageNames, a name the library would misread, CR LF.
printf 'MessageId=0x10 Severity=Error SymbolicName=ERROR_LANGUAGE_GONE\r\nLanguage=English\r\nGone: %%1.\r\n.\r\n' \
    >"$work/in.mc"

case_usage() {
    while read -r expected args; do
        run port $args
        expect_status "$expected" "port $args"
        if [ "$expected" = 2 ]; then
            [ "$(wc -l <"$work/err")" = 2 ] || fail "usage error is not reason plus one hint: $err"
        fi
    done <<EOT
0 --help
2
2 $work/in.mc
2 $work/in.mc -o $work/o.mc --code-page NO-SUCH-PAGE
2 $work/in.mc -o $work/o.mc --language English
2 $work/in.mc -o $work/o.mc --language English=0x10000
2 $work/in.mc -o $work/o.mc --first-message-number 65536
1 $work/missing.mc -o $work/o.mc
1 $work/in.mc -o $work/o.mc --customer-bit
EOT
}

case_no_output_on_error() {
    printf 'MessageId=1\nSeverity=Fatal\nSymbolicName=MSG_A\nLanguage=English\nA\n.\n' >"$work/bad.mc"
    run port "$work/bad.mc" -o "$work/bad_out.mc" --header "$work/bad_out.h"
    expect_status 1 "undeclared severity"
    expect_in "$err" "$work/bad.mc:2: error: severity name not declared: Fatal"
    leftovers=$(ls "$work" | grep -v '^bad.mc$\|^in.mc$\|^out$\|^err$')
    [ -z "$leftovers" ] || fail "files left behind: $leftovers"
}

case_convert() {
    run port "$work/in.mc" -o "$work/out.mc" --header "$work/out.h" --language English=0x409
    expect_status 0 port
    expect_in "$err" "$work/in.mc:1: warning: SymbolicName ERROR_LANGUAGE_GONE renamed ERROR_L_ANGUAGE_GONE"
    expect_in "$(cat "$work/out.h")" "#define ERROR_LANGUAGE_GONE ((int)0xC0000010u)"
    run format "$work/out.mc" 0xC0000010 disk --lang 0x409
    expect_status 0 format
    [ "$out" = "Gone: disk." ] || fail "formatted: $out"
    printf '#include "out.h"\nint id = ERROR_LANGUAGE_GONE;\n' >"$work/use.c"
    $cc -c -I"$work" "$work/use.c" -o "$work/use.o" || fail "the header does not compile"
}

case_options() {
    run port "$work/in.mc" -o "$work/out.mc" --no-final-newline --application-fff --name-prefix IN_
    expect_status 0 port
    run format "$work/out.mc" IN_ERROR_L_ANGUAGE_GONE disk --ignore-inserts
    [ "$out" = "Gone: %1." ] || fail "--no-final-newline: $out"
    expect_in "$(cat "$work/out.mc")" "Application_FFF=0xFFF"
}

# Symbolic names C cannot use are renamed, in the converted file and the
# header alike, to C identifiers no other definition takes; a prefix that
# cannot start one is refused.
case_c_identifiers() {
    printf 'MessageId=1\nSymbolicName=My-Name\nLanguage=English\nA\n.\n' >"$work/names.mc"
    printf 'MessageId=2\nSymbolicName=My_Name\nLanguage=English\nB\n.\n' >>"$work/names.mc"
    printf 'MessageId=3\nSymbolicName=1st\nLanguage=English\nC\n.\n' >>"$work/names.mc"
    run port "$work/names.mc" -o "$work/names_out.mc" --header "$work/names.h"
    expect_status 0 "names that are not C identifiers"
    expect_in "$err" "$work/names.mc:1: warning: SymbolicName My-Name renamed My_Name_2 (not a C identifier)"
    expect_in "$err" "SymbolicName 1st renamed _1st (not a C identifier)"
    printf '#include "names.h"\nint ids[] = {My_Name_2, My_Name, _1st};\n' >"$work/use.c"
    $cc -c -I"$work" "$work/use.c" -o "$work/use.o" || fail "the header does not compile"
    run header "$work/names_out.mc"
    expect_status 0 "tqmsg header of the converted file"
    run port "$work/names.mc" -o "$work/p.mc" --name-prefix bad-
    expect_status 2 "--name-prefix bad-"
    expect_in "$err" "--name-prefix: not the start of a C identifier: bad-"
}

# Error and warning lines quote input bytes escaped, as check does.
case_escaped_messages() {
    printf 'MessageId=1\nSeverity=Fat\033[31mal\377\nSymbolicName=A\nLanguage=English\nA\n.\n' >"$work/esc.mc"
    printf 'MessageId=1\nSymbolicName=B\033]0;x\007\nLanguage=English\nA\n.\n' >"$work/warn.mc"
    for file in esc warn; do
        run port "$work/$file.mc" -o "$work/o.mc"
        LC_ALL=C grep -q $'[\001-\010\016-\037\177-\377]' "$work/err" &&
            fail "$file.mc: a raw control or invalid byte reached standard error: $err"
    done
    run port "$work/esc.mc" -o "$work/o.mc"
    expect_in "$err" 'severity name not declared: Fat\x1b[31mal\xff'
}

# Shapes that once took time quadratic in their length: a first text line of
# 1,000,000 keywords (9 MB), a symbolic name of 100,000 (too long for a file
# line: refused). CTest's timeout is the guard.
case_long_shapes() {
    python3 - "$work" <<'PY'
import sys
head = "MessageId=1\nSymbolicName=A\nLanguage=English\n"
open(sys.argv[1] + "/line.mc", "w").write(head + "language " * 1000000 + "\n.\n")
open(sys.argv[1] + "/name.mc", "w").write(
    "MessageId=1\nSymbolicName=" + "language" * 100000 + "\nLanguage=English\nA\n.\n")
PY
    run port "$work/line.mc" -o "$work/line_out.mc"
    expect_status 0 "a 9 MB first line"
    $emulator "$tool" format "$work/line_out.mc" A >"$work/formatted" || fail "it does not format"
    [ "$(grep -o language "$work/formatted" | wc -l)" = 1000000 ] || fail "the line changed"
    run port "$work/name.mc" -o "$work/name_out.mc"
    expect_status 1 "a name of 800,000 characters"
    expect_in "$err" "error: name longer than 2031 characters: l_anguagel_anguage"
}

run_case
