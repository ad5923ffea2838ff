#!/usr/bin/env bash
# End-to-end cases of the tqmsg tool. Each function case_NAME is one CTest test,
# tool.NAME, registered from this file by tests/CMakeLists.txt:
#   tool-cases.sh CASE TOOL SOURCE_DIR "CC FLAGS" "CXX FLAGS" [EMULATOR]
# Expected values come from the example message file itself or from another
# subcommand (list against header, format by name against format by id).
set -uo pipefail
case_name=$1 tool=$2 src=$3 cc=$4 cxx=$5 emulator=${6:-}
mc=$src/examples/messages.mc
source "$(dirname "${BASH_SOURCE[0]}")/../support/cases-lib.sh"

messages=$(grep -c '^SymbolicName=' "$mc")
texts=$(grep -c '^\.$' "$mc")
languages=$(grep -c '^LanguageNames=' "$mc")

case_check_ok() {
    run check "$mc"
    expect_status 0 check
    [ "$(head -1 <<<"$out")" = "$mc: ok, $messages messages, $languages languages, $texts texts" ] ||
        fail "check said: $out"
    expect_in "$out" "$mc: German: $messages of $messages messages (100%)"
}

case_check_error() {
    printf 'LanguageNames=(English=0x409:MSG00409)\n\nOutputBase=16\n' >"$work/bad.mc"
    printf 'LanguageNames=(English=1:M1)\nMessageId=1\nSymbolicName=MSG_OTHER\nHi\n.\n' \
        >"$work/other.mc"
    run check "$mc" "$work/bad.mc" "$work/other.mc" "$work/missing.mc"
    expect_status 1 "check with bad files"
    expect_in "$out" "$mc: ok"
    expect_in "$out" "$work/other.mc: ok, 1 messages, 1 languages, 1 texts"
    expect_in "$err" "$work/bad.mc\", Line: 3"
    expect_in "$err" "Cannot understand input"
    expect_in "$err" "Unable to open file: $work/missing.mc"
    grep -q "bad.mc" <<<"$out" && fail "the error reached standard output"
}

case_exit_status() {
    while read -r expected args; do
        run $args
        expect_status "$expected" "$args"
    done <<EOT
0 --version
0 --help
2
2 frobnicate
0 check --help
0 list --help
0 format --help
0 dump --help
0 header --help
2 check
2 list $mc --format xml
2 format $mc
2 format $mc MSG_JOB_LATE x 1 --lang German --width 256
2 format $mc MSG_JOB_LATE x 1
2 format $mc MSG_JOB_LATE x ten --lang German
2 format $mc MSG_JOB_LATE x 4294967296 --lang German
2 format $mc MSG_JOB_LATE x --lang German
1 format $mc MSG_NOPE --lang German
1 format $mc MSG_JOB_LATE x 1 --lang Klingon
1 format $mc 0x7777 --lang German
1 format $mc MSG_JOB_LATE x 1 --lang German --also $mc
1 dump $work/missing.mc
1 header $work/missing.mc
EOT
    run --version
    expect_in "$out" "tqmsg "
    run
    [ "$(wc -l <"$work/err")" = 2 ] || fail "usage error is not reason plus one hint: $err"
}

list_rows() {
    local format=${case_name#list_}
    run list "$mc" --format "$format"
    expect_status 0 list
    [ "$(wc -l <<<"$out")" = $((texts + 1)) ] || fail "expected a header and $texts rows"
    expect_in "$out" 'free.\nFree some space'
    if [ "$format" = tsv ]; then
        awk -F'\t' 'NF != 6 { exit 1 }' <<<"$out" || fail "a TSV row has not 6 fields"
    fi
    run list "$mc" --lang german --format "$format"
    [ "$(wc -l <<<"$out")" = $((texts / 2 + 1)) ] || fail "--lang german kept other languages"
}
case_list_table() { list_rows; }
case_list_tsv() { list_rows; }

case_list_json() {
    run list "$mc" --format json
    expect_status 0 "list json"
    python3 -m json.tool <"$work/out" >/dev/null || fail "invalid JSON"
    python3 -c 'import json,sys; d=json.load(open(sys.argv[1])); assert len(d)==int(sys.argv[2]), len(d); assert {e["language"] for e in d}=={1031,1033}' \
        "$work/out" "$texts" || fail "JSON content"
}

case_json_escapes() {
    # One message per row: its text as printf escapes, and the Python literal
    # that the JSON string must decode to. Valid UTF-8 decodes; any other byte
    # is the Latin-1 character of the same value.
    local rows=(
        'q" b\\ t\tc\001\177' '"q\" b\\ t\tc\x01\x7f"'
        '\303\274 \360\237\230\200 \364\217\277\277' '"\u00fc \U0001F600 \U0010FFFF"'
        'Datentr\344ger \351' '"Datentr\u00e4ger \u00e9"'
        'surrogate \355\240\200' '"surrogate \u00ed\u00a0\u0080"'
        'overlong \300\257 \340\200\257' '"overlong \u00c0\u00af \u00e0\u0080\u00af"'
        'beyond \364\220\200\200' '"beyond \u00f4\u0090\u0080\u0080"'
        'cut \342\202' '"cut \u00e2\u0082"'
    )
    printf 'LanguageNames=(English=1:M1)\n' >"$work/esc.mc"
    : >"$work/expected"
    for ((i = 0; i < ${#rows[@]}; i += 2)); do
        printf "MessageId=$i\nSymbolicName=MSG_$i\n${rows[i]}\n.\n" >>"$work/esc.mc"
        printf '%s\n' "${rows[i + 1]}" >>"$work/expected"
    done
    # A tab inside a symbolic name must not split a TSV row.
    printf 'MessageId=99\nSymbolicName=MSG\tTAB\nplain\n.\n' >>"$work/esc.mc"
    echo '"plain"' >>"$work/expected"
    run list "$work/esc.mc" --format json
    python3 -c 'import ast,json,sys
got = [e["text"] for e in json.load(open(sys.argv[1]))]
want = [ast.literal_eval(line) for line in open(sys.argv[2])]
for g, w in zip(got, want): assert g == w, (g, w)
assert len(got) == len(want)
assert json.load(open(sys.argv[1]))[-1]["symbolicName"] == "MSG\tTAB"' "$work/out" "$work/expected" ||
        fail "escaped texts do not round-trip"
    LC_ALL=C grep -q $'[\x80-\xff]' "$work/out" && fail "JSON holds raw non-ASCII bytes"
    run list "$work/esc.mc" --format tsv
    expect_in "$out" 't\tc\x01\x7f'
    expect_in "$out" 'ü 😀'
    expect_in "$out" 'Datentr\xe4ger \xe9'
    awk -F'\t' 'NF != 6 { exit 1 }' <<<"$out" || fail "a TSV row has not 6 fields"
}

case_format() {
    run format "$mc" MSG_JOB_LATE nightly 12 --lang German
    expect_status 0 format
    [ "$out" = 'Auftrag "nightly" wurde 12 Minuten zu spät gestartet.' ] || fail "got: $out"
    id=$($emulator "$tool" list "$mc" --format tsv | awk -F'\t' '$5 == "MSG_JOB_LATE" { print $1; exit }')
    by_id=$($emulator "$tool" format "$mc" "0x$id" nightly 12 --lang 0x407)
    [ "$by_id" = "$out" ] || fail "by id 0x$id: $by_id"
    run format "$mc" MSG_CHECKSUM 48879 /dev/sdb --lang english
    [ "$out" = "Checksum mismatch in block 0x0000BEEF of /dev/sdb." ] || fail "got: $out"
    run format "$mc" MSG_PROMPT_RETRY /a/rather/long/path --lang english --width 20
    [ "$out" = $'Retry the copy of \n/a/rather/long/path\n [y/n]? ' ] || fail "width: $out"
    run format "$mc" MSG_JOB_LATE --lang German --ignore-inserts
    raw=$($emulator "$tool" list "$mc" --lang German --format tsv | awk -F'\t' '$5 == "MSG_JOB_LATE" { print $6 }')
    [ "$out" = "$raw" ] || fail "--ignore-inserts: $out"
    printf 'LanguageNames=(English=0x409:M1)\nMessageId=1\nSymbolicName=MSG_A\n%%1 at 50%%\n.\n' >"$work/one.mc"
    run format "$work/one.mc" MSG_A x
    [ "$out" = "x at 50" ] && fail "the library should refuse a text ending in %"
    expect_status 1 "a failing format"
    [ -z "$out" ] || fail "standard output not clean after a failure: $out"
    expect_in "$err" "string cannot end with an escape sequence"
}

case_dump() {
    run dump "$mc"
    expect_status 0 dump
    expect_in "$out" "TABLE-ID: $mc"
    expect_in "$out" "Multi-Lang-Message-Map: ($texts entries)"
}

case_header_compiles() {
    run header "$mc" -o "$work/messages.h"
    expect_status 0 header
    [ "$(grep -c '^#define MSG_' "$work/messages.h")" = "$messages" ] || fail "one #define per message"
    first=$(grep -m1 -A1 '^Language=English' "$mc" | tail -1)  # English is declared first
    expect_in "$(cat "$work/messages.h")" "/* $first */"
    # Each value must equal the identifier that list reports, as an int.
    $emulator "$tool" list "$mc" --lang 1033 --format tsv | awk -F'\t' 'NR > 1 {
        printf "STATIC_ASSERT(%s == (int)0x%su, \"%s\");\n", $5, $1, $5 }' >"$work/checks.inc"
    printf '#include "messages.h"\n#include "messages.h"\n#define STATIC_ASSERT _Static_assert\n#include "checks.inc"\nint main(void) { return MSG_JOB_LATE == 0; }\n' >"$work/use.c"
    $cc -std=c11 -Wall -Wextra -Werror -pedantic -c "$work/use.c" -o "$work/use_c.o" ||
        fail "the header does not compile as C"
    printf '#include "MessageModule.h"\n#include "messages.h"\n#define STATIC_ASSERT static_assert\n#include "checks.inc"\nint main() { char b[64]; switch (MSG_CHECKSUM) { case MSG_DISK_FULL: break; } return TQ_LangLookup(MSG_JOB_LATE, 0x409, b, 64) != nullptr; }\n' >"$work/use.cpp"
    $cxx -std=c++17 -Wall -Wextra -Werror -pedantic -I"$src/include" -c "$work/use.cpp" -o "$work/use_cpp.o" ||
        fail "the header does not compile as C++"
    grep -q ', "MSG_' "$work/checks.inc" || fail "no identifier was checked"
}

case_write_errors() {
    # A result that cannot be written completely is a failure with its reason.
    while read -r args; do
        $emulator "$tool" $args >/dev/full 2>"$work/err"
        status=$? err=$(cat "$work/err")
        expect_status 1 "$args >/dev/full"
        expect_in "$err" "cannot write standard output: No space left on device"
    done <<EOT
check $mc
list $mc
list $mc --format json
dump $mc
format $mc MSG_JOB_LATE x 1 --lang German
header $mc
--help
EOT
    # A header cut short by a size limit replaces nothing and leaves nothing.
    { echo 'LanguageNames=(English=1:M1)'; for i in $(seq 100); do
        printf 'MessageId=%d\nSymbolicName=MSG_%d\nText %d\n.\n' "$i" "$i" "$i"; done; } >"$work/many.mc"
    echo '/* older */' >"$work/many.h"
    (trap '' XFSZ; ulimit -f 1; $emulator "$tool" header "$work/many.mc" -o "$work/many.h") 2>"$work/err"
    status=$? err=$(cat "$work/err")
    expect_status 1 "header -o beyond the file size limit"
    expect_in "$err" "tqmsg header: cannot write $work/many.h: File too large"
    [ "$(cat "$work/many.h")" = '/* older */' ] || fail "the older header was replaced"
    [ -z "$(ls -A "$work" | grep '^\.')" ] || fail "a temporary file was left behind"
}

case_error_messages() {
    # Each row: the command line (W stands for the work directory), then a text
    # that its standard error must hold. Every line names the subcommand and no
    # raw control byte reaches the terminal.
    mkdir "$work/dir.mc"
    ln -s loop1 "$work/loop2" && ln -s loop2 "$work/loop1"
    printf '\377\376;\0 \0' >"$work/bom16.mc"
    printf ';\0 \0' >"$work/le16.mc"
    printf '\357\273\277; comment\n' >"$work/bom8.mc"
    printf 'LanguageNames=(English=1:A)\nMessageId=9999999999\n' >"$work/big.mc"
    printf 'Oops \033[31m\n' >"$work/esc.mc"
    printf 'LanguageNames=(English=1:A)\nMessageId=\nSymbolicName=A\nx\n.\n\nMessageId=\nSymbolicName=MSG-B\ny\n.\n' \
        >"$work/name.mc"
    while IFS='|' read -r args expected; do
        run ${args//W/$work}
        expected=${expected//W/$work}
        [ "$status" = 0 ] && fail "$args succeeded"
        expect_in "$err" "$expected"
        grep -qv "^tqmsg [a-z]*: \|^Try " "$work/err" && fail "a line without the command: $err"
        grep -q $'\033' "$work/err" && fail "a raw escape byte reached standard error"
    done <<'EOT'
check W/dir.mc|tqmsg check: File: "W/dir.mc" - Unable to open file: W/dir.mc
check W/dir.mc|tqmsg check: hint: W/dir.mc: Is a directory
list W/missing.mc|tqmsg list: hint: W/missing.mc: No such file or directory
dump W/loop1|hint: W/loop1: Too many levels of symbolic links
check W/bom16.mc|Line: 1 - NUL byte in column 4: the file looks like UTF-16; message
check W/bom16.mc|hint: W/bom16.mc is UTF-16 text; convert it to UTF-8 first, e.g. iconv -f UTF-16 -t UTF-8
check W/le16.mc|iconv -f UTF-16LE -t UTF-8 W/le16.mc
check W/bom8.mc|Line: 1 - Cannot understand input: "\xef\xbb\xbf; comment"
check W/bom8.mc|hint: W/bom8.mc starts with a UTF-8 byte-order mark (EF BB BF)
check W/big.mc|hint: 9999999999 is a number, but outside the 32-bit range
check W/esc.mc|Cannot understand input: "Oops \x1b[31m"
header W/name.mc|tqmsg header: W/name.mc:8: symbolic name is not a C identifier: "MSG-B"
format W/name.mc A --lang 4294967296|language 4294967296 is outside the 32-bit range
format W/name.mc 0x100000000 --lang 1|message identifier 0x100000000 is outside the 32-bit range
EOT
}

case_list_memory() {
    # list writes rows as it renders them: its peak memory stays close to what
    # loading the file takes (check), whatever the output format.
    python3 - "$work/many.mc" <<'PY'
import sys
with open(sys.argv[1], "w") as out:
    out.write("LanguageNames=(English=1:A)\nFacilityNames=(F=1:F)\n")
    for i in range(60000):
        f = "Facility=F\n" if i >= 30000 else ""
        out.write(f"MessageId={i % 30000 + 1}\n{f}SymbolicName=MSG_{i}\n"
                  f"Text {i} with an insert %1 and a tab\there, long enough to matter.\n.\n")
PY
    peak() {  # peak resident kilobytes of the tool run with ARGS, output discarded
        ASAN_OPTIONS=quarantine_size_mb=0:${ASAN_OPTIONS:-} python3 -c 'import resource, subprocess, sys
subprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL, check=True)
print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)' $emulator "$tool" "$@"
    }
    local loading
    loading=$(peak check "$work/many.mc") || fail "check failed"
    for format in table tsv json; do
        local listing
        listing=$(peak list "$work/many.mc" --format $format) || fail "list --format $format failed"
        ((listing * 10 <= loading * 13)) ||
            fail "list --format $format peaked at $listing KB, loading at $loading KB"
    done
}

case_format_arguments() {
    # Each argument is passed as its inserts read it, identically on i386 and
    # x86-64; messages the tool cannot format are refused with the reason.
    printf 'LanguageNames=(English=1:A)\n' >"$work/f.mc"
    local id=0
    while read -r name text; do
        id=$((id + 1))
        printf 'MessageId=%d\nSymbolicName=%s\n%s\n.\n' $id "$name" "$text" >>"$work/f.mc"
    done <<'EOT'
TEXTS %1!ls!|%1!S!|%1!hs!|%1!ws!|%1
CHARS %1!c!%1!lc!%1!C!
UNSIGNED %1!lu! %1!u! %1!d! %1!llx! %1!I64u! %1!zu!
SIGNED %1!ld! %1!lld! %1!I64d! %1!zd! %1!u!
FLOATING %1!.1f! and %2!x! %1!u!
NOVALUE %1!%! %2
MIXED %1 is %1!d!
WIDE_BOTH %1!ld! %1!lu!
FLOATING_BOTH %1!f! %1!lx!
POINTER %1!p!
STAR %1!*d!
DIGITS %1000
EOT
    while IFS='|' read -r args expected_status expected; do
        run format "$work/f.mc" $args
        expect_status "$expected_status" "format $args"
        if [ "$expected_status" = 0 ]; then
            [ "$out" = "$expected" ] || fail "format $args printed: $out"
        else
            expect_in "$err" "$expected"
        fi
    done <<'EOT'
TEXTS hello|0|hello|hello|hello|hello|hello
CHARS 65|0|AAA
UNSIGNED -1|0|4294967295 4294967295 -1 ffffffff 4294967295 4294967295
UNSIGNED 4294967295|0|4294967295 4294967295 -1 ffffffff 4294967295 4294967295
SIGNED -2147483648|0|-2147483648 -2147483648 -2147483648 -2147483648 2147483648
SIGNED 4294967295|0|-1 -1 -1 -1 4294967295
FLOATING -3 255|0|-3.0 and ff 4294967293
NOVALUE x y|0|% y
UNSIGNED 4294967296|2|argument 1 ("4294967296") is outside the 32-bit range
SIGNED -2147483649|2|argument 1 ("-2147483649") is outside the 32-bit range
FLOATING 2.5 1|2|argument 1 ("2.5") must be an integer: the formatter gives "%.1f" the integer value
UNSIGNED ten|2|argument 1 ("ten") must be an integer for "%lu"
NOVALUE x|2|NOVALUE uses insert %2 but 1 argument(s) were given
MIXED 5|1|argument 1 of MIXED would be needed as a text ("%s") and as a number ("%d")
WIDE_BOTH 5|0|5 5
WIDE_BOTH -1|1|as a signed ("%ld") and as an unsigned ("%lu") number of more than 32 bits
FLOATING_BOTH 255|0|255.000000 ff
FLOATING_BOTH -3|1|as a signed ("%f") and as an unsigned ("%lx") number of more than 32 bits
POINTER 1|1|insert %1 of POINTER ("%p") prints a pointer, which the tool cannot supply
STAR 1|1|insert %1 of STAR ("%*d") cannot be formatted: a '*' width or precision
DIGITS 1|1|Arg Index: 100.., is too big must not be more than 3 digits
EOT
}

case_check_windows_hint() {
    # Each row: a file's content (printf format), then the cause that the
    # hint naming `tqmsg port` must give, or "-" where no hint may appear.
    local n=0
    while IFS='|' read -r content cause; do
        n=$((n + 1))
        printf "$content" >"$work/w$n.mc"
        run check "$work/w$n.mc"
        expect_status 1 "check row $n"
        local hints
        hints=$(grep -c 'tqmsg port' <<<"$err")
        if [ "$cause" = - ]; then
            [ "$hints" = 0 ] || fail "row $n: unexpected hint: $err"
        else
            [ "$hints" = 1 ] || fail "row $n: expected one port hint, got $hints: $err"
            expect_in "$err" "tqmsg check: hint: $work/w$n.mc looks like a file for the Windows message compiler ($cause); convert it with: tqmsg port $work/w$n.mc -o OUT.mc"
        fi
    done <<'EOT'
MessageId=1\nSymbolicName=A\nLanguage=English\nHi\n.\n|English used without LanguageNames: it is built in there
MessageId=1\nSymbolicName=A\nHi\n.\n|English used without LanguageNames: it is built in there
LanguageNames=(English=1:M)\nMessageId=1 Severity=Error SymbolicName=A\nLanguage=English\nHi\n.\n|several statements on one line
LanguageNames=(English=1:M)\nMessageId=1\nSeverity=Error SymbolicName=A\nLanguage=English\nHi\n.\n|several statements on one line
LanguageNames=(English=1:M)\nMessageId=1\nSymbolicName=MSG_LANGUAGE_GONE\nLanguage=English\nHi\n.\n|a symbolic name holding a header keyword
LanguageNames=(English=1:M)\nMessageId=1\nSymbolicName=A\nLanguage=English\n\nHi\n.\n|a blank line at the start of a text or between statements
LanguageNames=(English=1:M)\nMessageId=1\nSymbolicName=A\nLanguage=English\nThe language of the text\n.\n|a header keyword in the first line of a text
LanguageNames=(English=1:M)\nMessageId=1\nLanguage=English\nHi\n.\n|a message without SymbolicName
LanguageNames=(English=1:M)\nOutputBase = 16\n|an OutputBase statement
LanguageNames=(English=1:M)\n\032\n|an end-of-file byte (0x1A)
;\0 \0c\0\n\0|UTF-16 text
FacilityNames=(Application=0x0)\n|Application declared again in FacilityNames
LanguageNames=(English=1:M)\nMessageId=1\nFacility=System\nSymbolicName=A\nLanguage=English\nHi\n.\n|the built-in facility System
LanguageNames=(English=1:M)\nMessageId=1L\nSymbolicName=A\nLanguage=English\nHi\n.\n|a number with a C suffix
LanguageNames=(English=1:M)\nMessageId=1 ; first\nSymbolicName=A\nLanguage=English\nHi\n.\n|a comment after a statement
LanguageNames=(English=1:M)\n  ; indented\n|an indented comment
LanguageNames=(English=1:M)\r\nMessageId=1\r\nSymbolicName=A\r\nLanguage=English\r\nHi\r\n|the last text ends at the end of the file
LanguageNames=(English=1:M)\nMessageId=1\nSymbolicName=A\nLanguage=English\nHi\n|-
LanguageNames=(English=1:M)\nMessageId=1\nSymbolicName=A\nLanguage=French\nHi\n.\n|-
LanguageNames=(English=1:M)\nMessageId=1\nSeverity=Fatal\nSymbolicName=A\nLanguage=English\nHi\n.\n|-
LanguageNames=(English=1:M)\nHi there\n|-
EOT
    run check "$work/missing.mc"
    grep -q 'tqmsg port' <<<"$err" && fail "a hint for a file that does not exist: $err"
    # The hinted command converts the file into one that loads.
    run check "$work/w3.mc"
    local command
    command=$(sed -n 's/.*convert it with: tqmsg //p' <<<"$err")
    run ${command/OUT.mc/$work/w3-ported.mc}
    expect_status 0 "the hinted command: $command"
    run check "$work/w3-ported.mc"
    expect_status 0 "check of the converted file"
}

case_cmake_add_messages() {
    # A project that converts two Windows message files with
    # tqmsg_add_messages(), builds a program including their headers, runs
    # it, rebuilds after an edit and installs. The tool is presented as the
    # installed package does (tqmsg::tool) and as an in-tree build does
    # (tqmsg_tool).
    local proj=$work/proj
    mkdir -p "$proj"
    printf 'MessageId=0x10 Severity=Warning SymbolicName=EVT_FIRST\nLanguage=English\nFirst %%1.\n.\n\nMessageId=+1 SymbolicName=EVT_SECOND\nLanguage=English\nSecond\n\nline.\n.\n' \
        >"$proj/events.mc"
    printf 'LanguageNames=(German=0x407:MSG00407)\nMessageId=1\nSymbolicName=EVT_GERMAN\nLanguage=German\nGr\366\337e\n.\n' \
        >"$proj/german.mc"
    cat >"$proj/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.16)
project(add_messages_test LANGUAGES CXX)
if(TOOL_TARGET)
    add_executable(${TOOL_TARGET} IMPORTED)
    set_target_properties(${TOOL_TARGET} PROPERTIES IMPORTED_LOCATION ${TQMSG_TOOL})
endif()
include(${TQMSG_SOURCE_DIR}/cmake/TqmsgMessages.cmake)
add_executable(show_ids show_ids.cpp)
tqmsg_add_messages(show_ids events.mc german.mc CODE_PAGE CP1252 LANGUAGE English=0x409
                   DESTINATION share/ids)
CMAKE
    write_program() {  # prints the identifier of every symbolic name of the sources
        { echo '#include <cstdio>'; echo '#include "events.h"'; echo '#include "german.h"'
          echo 'int main() {'
          grep -ho 'SymbolicName=[A-Z_]*' "$proj"/*.mc | cut -d= -f2 |
              sed 's/.*/    std::printf("%08X\\t&\\n", static_cast<unsigned>(&));/'
          echo '}'; } >"$proj/show_ids.cpp"
    }
    configure() {  # configure TOOL_TARGET [ARGS...]: into $proj/build-TOOL_TARGET
        local compiler=${cxx%% *} flags=
        [[ $cxx == *' '* ]] && flags=${cxx#* }
        cmake -S "$proj" -B "$proj/build-${1//:/_}" -DCMAKE_CXX_COMPILER="$compiler" \
            -DCMAKE_CXX_FLAGS="$flags" -DTQMSG_SOURCE_DIR="$src" -DTQMSG_TOOL="$tool" \
            -DTQMSG_TOOL_EMULATOR="$emulator" -DTOOL_TARGET="$1" "${@:2}" >"$work/cmake.log" 2>&1
    }
    # list_ids BUILD: "ID<TAB>NAME" of the converted files, as the tool lists them.
    list_ids() {
        $emulator "$tool" list "$1"/tqmsg_messages/show_ids/{events,german}.mc --format tsv |
            awk -F'\t' 'NR > 1 { print $1 "\t" $5 }' | sort -u
    }
    write_program
    configure tqmsg::tool || fail "configure: $(cat "$work/cmake.log")"
    local build=$proj/build-tqmsg__tool
    cmake --build "$build" >"$work/build.log" 2>&1 || fail "build: $(cat "$work/build.log")"
    [ "$($emulator "$build/show_ids" | sort)" = "$(list_ids "$build")" ] ||
        fail "program and converted files disagree: $($emulator "$build/show_ids")"
    list_ids "$build" | grep -q "^80000011	EVT_SECOND$" ||
        fail "MessageId=+1 after 0x10 is not 0x11: $(list_ids "$build")"
    run format "$build/tqmsg_messages/show_ids/events.mc" EVT_SECOND --lang 0x409
    [ "$out" = $'Second\n\nline.' ] || fail "converted text: $out"
    run format "$build/tqmsg_messages/show_ids/german.mc" EVT_GERMAN --lang German
    [ "$out" = "Größe" ] || fail "CODE_PAGE CP1252: $out"
    # An edited source is converted again, and the program rebuilt with it.
    printf '\nMessageId=+1 SymbolicName=EVT_THIRD\nLanguage=English\nThird.\n.\n' >>"$proj/events.mc"
    write_program
    cmake --build "$build" >"$work/build.log" 2>&1 || fail "rebuild: $(cat "$work/build.log")"
    $emulator "$build/show_ids" | grep -q "^80000012	EVT_THIRD$" || fail "not rebuilt after an edit"
    cmake --install "$build" --prefix "$work/prefix" >/dev/null || fail "install"
    for name in events german; do
        cmp -s "$build/tqmsg_messages/show_ids/$name.mc" "$work/prefix/share/ids/$name.mc" ||
            fail "$name.mc not installed into share/ids"
    done
    # The in-tree tool target serves the same way.
    configure tqmsg_tool && cmake --build "$proj/build-tqmsg_tool" >"$work/build.log" 2>&1 ||
        fail "with tqmsg_tool: $(cat "$work/cmake.log" "$work/build.log")"
    # Without a tool, configuring fails and says what to install.
    configure "" && fail "configured without a tool"
    expect_in "$(cat "$work/cmake.log")" "tqmsg_add_messages needs the tqmsg tool"
    # A source that cannot be converted fails the build with the converter's reason.
    printf 'MessageId=1\nSeverity=Fatal\nSymbolicName=EVT_BAD\nLanguage=English\nx\n.\n' >"$proj/events.mc"
    cmake --build "$build" >"$work/build.log" 2>&1 && fail "built from a bad source"
    expect_in "$(cat "$work/build.log")" "events.mc:2: error: severity name not declared: Fatal"
}

run_case
