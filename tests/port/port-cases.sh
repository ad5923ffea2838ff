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

run_case
