#!/usr/bin/env bash
# The translation checks of tqmsg check and the warnings of
# tqmsg header --functions, end to end. Each function case_NAME is one CTest
# test, check.NAME, registered by tests/CMakeLists.txt:
#   translation-cases.sh CASE TOOL CORPUS_DIR SOURCE_DIR "CC FLAGS" [EMULATOR]
set -uo pipefail
case_name=$1 tool=$2 corpus=$3 src=$4 cc=$5 emulator=${6:-}
source "$(dirname "${BASH_SOURCE[0]}")/../support/cases-lib.sh"
findings_file="$(dirname "${BASH_SOURCE[0]}")/check-corpus-findings.tsv"

# message_file FILE ENGLISH GERMAN: one message with these two texts.
message_file() {
    printf 'LanguageNames=(English=0x409:MSG00409)\nLanguageNames=(German=0x407:MSG00407)\n' >"$1"
    printf 'MessageId=1\nSymbolicName=MSG_ONE\nLanguage=English\n%s\n.\nLanguage=German\n%s\n.\n' \
        "$2" "$3" >>"$1"
}

case_insert_comparison() {
    # English text | German text | finding: none, warning or error
    while IFS='|' read -r english german expected; do
        message_file "$work/m.mc" "$english" "$german"
        run check "$work/m.mc"
        local row="$english | $german"
        case $expected in
        none)
            expect_status 0 "$row"
            [ -z "$err" ] || fail "$row: unexpected finding: $err" ;;
        warning)
            expect_status 0 "$row"
            expect_in "$err" "warning: MSG_ONE: insert %"
            run check --strict "$work/m.mc"
            expect_status 1 "$row under --strict" ;;
        error)
            expect_status 1 "$row"
            expect_in "$err" "error: MSG_ONE: insert %1" ;;
        esac
    done <<'EOT'
%1!s!|%1!d!|error
%1!d!|%1!c!|error
%1!d!|%1!f!|error
%1!d!|%1!p!|error
%1!s!|%1!p!|error
%1!s!|%1!c!|error
%1!c!|%1!f!|error
%1!f!|%1!p!|error
%1!s!|%1!f!|error
%1!d!|%1!u!|none
%1!x!|%1!lu!|error
%1!ld!|%1!lld!|error
%1!lu!|%1!zu!|none
%1!f!|%1!e!|none
%1!f!|%1!Lf!|error
%1|%1!s!|none
%1 and %1|%1|none
%1!d! then %2|%2 then %1!d!|none
%1!d! and %1!s!|%1!d!|error
%1!d!|%1!*d!|error
%1 %2|%1|warning
%1|%1 %2|warning
EOT
    message_file "$work/m.mc" '%1!d! %2!s!' '%2!d! %1!s!'
    run check "$work/m.mc"
    expect_in "$err" "m.mc:8: error: MSG_ONE: insert %1 is read as an integer of 4 bytes (%1!d!) in English but as text (%1) in German"
    expect_in "$err" "insert %2 is read as text (%2) in English but as an integer of 4 bytes (%2!d!) in German"
    message_file "$work/m.mc" '%1!lu!' '%1!llu!'
    run check "$work/m.mc"
    expect_in "$err" "(%1!lu!) in English but as an integer of 8 bytes (%1!llu!) in German"
}

case_coverage() {
    {
        printf 'LanguageNames=(English=0x409:MSG00409)\nLanguageNames=(French=0x40C:MSG0040C)\n'
        for n in 1 2 3 4; do
            printf 'MessageId=%d\nSymbolicName=MSG_%d\nLanguage=English\nText %d\n.\n' $n $n $n
            [ $n = 2 ] || printf 'Language=French\nTexte %d\n.\n' $n
        done
    } >"$work/four.mc"
    run check "$work/four.mc"
    expect_status 0 coverage
    expect_in "$out" "$work/four.mc: English: 4 of 4 messages (100%)"
    expect_in "$out" "$work/four.mc: French: 3 of 4 messages (75%)"
    expect_in "$err" "$work/four.mc: warning: French has no text for 1 of 4 messages"
    grep -q "missing" <<<"$out" && fail "missing messages listed without --missing"
    run check --missing "$work/four.mc"
    [ "$(grep -c 'missing' <<<"$out")" = 1 ] || fail "one missing message expected: $out"
    expect_in "$out" "$work/four.mc: French: missing MSG_2"
    run check --strict "$work/four.mc"
    expect_status 1 "coverage under --strict"
    # A file with one language reports as before: its counts, nothing else.
    printf 'LanguageNames=(English=0x409:MSG00409)\nMessageId=1\nSymbolicName=A\nLanguage=English\n%%1!d! %%2\n.\n' >"$work/one.mc"
    run check --strict "$work/one.mc"
    expect_status 0 "one language"
    [ "$out" = "$work/one.mc: ok, 1 messages, 1 languages, 1 texts" ] || fail "one language: $out"
    [ -z "$err" ] || fail "one language: $err"
}

case_json() {
    message_file "$work/m.mc" '%1!d! %2' '%1!s!'
    printf 'LanguageNames=(English=0x409:M)\nMessageId=9\nSymbolicName=MSG_ONE\nLanguage=English\nx\n.\n' >"$work/clash.mc"
    printf 'Bad line\n' >"$work/bad.mc"
    for files in "$work/m.mc $work/bad.mc" "$work/m.mc $work/clash.mc"; do
        run check --format json $files
        expect_status 1 "json of $files"
        python3 - "$work/out" "$files" <<'PY' || fail "json of $files"
import json, sys
document = json.load(open(sys.argv[1]))
findings = document["findings"]
assert document["errors"] == sum(f["severity"] == "error" for f in findings), document
assert document["warnings"] == sum(f["severity"] == "warning" for f in findings), document
if "bad.mc" in sys.argv[2]:
    first, second = document["files"]
    assert first["loaded"] and not second["loaded"], document
    coverage = {c["language"]: c for c in first["coverage"]}
    assert coverage["German"]["texts"] == 1 and coverage["German"]["messages"] == 1, coverage
    kinds = sorted((f["severity"], f["message"]) for f in findings)
    assert kinds == [("error", ""), ("error", "MSG_ONE"), ("warning", "MSG_ONE")], kinds
    assert "%1!d!" in findings[0]["text"] and "%1" in findings[0]["text"], findings
else:
    assert document["files"] == [], document
    assert len(findings) == 1 and "MSG_ONE" in findings[0]["text"], findings
PY
    done
}

case_definition_clashes() {
    message_file "$work/a.mc" 'One' 'Eins'
    printf 'LanguageNames=(English=0x409:M)\n\nMessageId=7\nSymbolicName=MSG_ONE\nLanguage=English\nx\n.\n' >"$work/name.mc"
    printf 'LanguageNames=(German=0x407:M)\n\nMessageId=1\nSymbolicName=MSG_OTHER\nLanguage=German\nx\n.\n' >"$work/pair.mc"
    printf 'LanguageNames=(English=0x409:M)\nMessageId=2\nSymbolicName=MSG_TWO\nLanguage=English\nx\n.\n' >"$work/fine.mc"
    run check "$work/a.mc" "$work/name.mc" "$work/pair.mc" "$work/fine.mc"
    expect_status 1 clashes
    expect_in "$err" "$work/name.mc:3: error: symbolic name MSG_ONE is also defined by $work/a.mc:3"
    expect_in "$err" "$work/pair.mc:3: error: message 0x00000001 in language 1031 is also defined by $work/a.mc:8"
    [ "$(grep -c 'error:' <<<"$err")" = 2 ] || fail "two clashes expected: $err"
    grep -q "MultiLangMessageMap\|: ok" <<<"$err$out" && fail "the files were loaded after the clash"
    run check "$work/a.mc" "$work/fine.mc"
    expect_status 0 "no clash"
}

case_function_warnings() {
    message_file "$work/m.mc" '%1!d! %3' '%1!d! %3'
    run header --functions "$work/m.mc"
    expect_status 0 "header with a gap"
    expect_in "$err" "warning: MSG_ONE: no function: its inserts skip %2"
    grep -q "format_MSG_ONE" <<<"$out" && fail "a function for a message with a gap"
    message_file "$work/m.mc" '%1!lu! %2' '%2 %1!lu!'
    run header --functions "$work/m.mc"
    expect_in "$out" "static inline long format_MSG_ONE(char *buf, size_t size, long language_id, unsigned long insert1, const char *insert2)"
    [ -z "$err" ] || fail "warning for a good message: $err"
    run header "$work/m.mc"
    grep -qF -e format_ -e '"tqmsg.h"' <<<"$out" && fail "functions without --functions"
}

case_cmake_options() {
    # tqmsg_add_messages(... CHECK [STRICT] FUNCTIONS): the check fails the
    # build on an error (and under STRICT on a warning), and the header has
    # the typed functions, which a wrong call does not get past.
    local proj=$work/proj
    mkdir -p "$proj"
    cat >"$proj/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.16)
project(check_options_test LANGUAGES C)
add_executable(tqmsg::tool IMPORTED)
set_target_properties(tqmsg::tool PROPERTIES IMPORTED_LOCATION ${TQMSG_TOOL})
include(${TQMSG_SOURCE_DIR}/cmake/TqmsgMessages.cmake)
add_library(uses OBJECT uses.c)
target_include_directories(uses PRIVATE ${TQMSG_SOURCE_DIR}/include)
target_compile_options(uses PRIVATE -std=c99 -Wall -Wextra -pedantic -Werror)
tqmsg_add_messages(uses events.mc ${OPTIONS})
CMAKE
    events() {  # events GERMAN_TEXT_OF_EVT_COPY: writes events.mc
        printf 'LanguageNames=(English=0x409:MSG00409)\nLanguageNames=(German=0x407:MSG00407)\n' >"$proj/events.mc"
        printf 'MessageId=1 SymbolicName=EVT_COPY\nLanguage=English\nCopied %%1!u! files to %%2.\n.\n' >>"$proj/events.mc"
        [ -n "$1" ] && printf 'Language=German\n%s\n.\n' "$1" >>"$proj/events.mc"
        printf 'MessageId=2 SymbolicName=EVT_DONE\nLanguage=English\nDone.\n.\nLanguage=German\nFertig.\n.\n' >>"$proj/events.mc"
    }
    uses() { printf '#include "events.h"\nlong copied(char *b) { return format_EVT_COPY(b, 64, 0x409, %s); }\n' "$1" >"$proj/uses.c"; }
    build() {  # build OPTIONS: configures and builds from scratch; the log in $work/build.log
        rm -rf "$proj/build"
        local compiler=${cc%% *} flags=
        [[ $cc == *' '* ]] && flags=${cc#* }
        cmake -S "$proj" -B "$proj/build" -DCMAKE_C_COMPILER="$compiler" -DCMAKE_C_FLAGS="$flags" \
            -DTQMSG_SOURCE_DIR="$src" -DTQMSG_TOOL="$tool" -DTQMSG_TOOL_EMULATOR="$emulator" \
            -DOPTIONS="$1" >"$work/build.log" 2>&1 &&
            cmake --build "$proj/build" >>"$work/build.log" 2>&1
    }
    events 'Nach %2 kopiert: %1!u! Dateien.'
    uses '3u, "/backup"'
    build "CHECK;STRICT;FUNCTIONS" || fail "a good file: $(cat "$work/build.log")"
    uses '"/backup", 3u'
    build "FUNCTIONS" && fail "a call with swapped arguments compiled"
    expect_in "$(cat "$work/build.log")" "format_EVT_COPY"
    uses '3u, "/backup"'
    events 'Nach %2 kopiert: %1 Dateien.'
    build "CHECK;FUNCTIONS" && fail "built despite an insert read as two kinds"
    expect_in "$(cat "$work/build.log")" "error: EVT_COPY: insert %1 is read as"
    events ''
    build "CHECK;FUNCTIONS" || fail "CHECK failed on a missing translation: $(cat "$work/build.log")"
    build "CHECK;STRICT;FUNCTIONS" && fail "CHECK STRICT passed a missing translation"
    expect_in "$(cat "$work/build.log")" "warning: German has no text for 1 of 2 messages"
}

# Every loadable file of the corpus, as it is and converted by tqmsg port,
# gives the findings recorded in check-corpus-findings.tsv (each error there
# was read by hand and is a fault of that file).
case_corpus_findings() {
    [ -d "$corpus" ] || { echo "SKIP: no corpus at '$corpus'"; return; }
    for file in "$corpus"/*.mc; do
        name=$(basename "$file")
        findings "original" "$name" "$file"
        if $emulator "$tool" port "$file" -o "$work/$name" >/dev/null 2>&1; then
            findings "ported" "$name" "$work/$name"
        fi
    done >"$work/findings.tsv"
    diff <(grep -v '^#' "$findings_file") "$work/findings.tsv" >"$work/diff" ||
        fail "findings differ from $findings_file: $(cat "$work/diff")"
}

# findings FORM NAME FILE: one line per finding of `tqmsg check FILE`, none
# when FILE does not load.
findings() {
    $emulator "$tool" check --format json "$3" 2>/dev/null | python3 -c '
import json, sys
form, name = sys.argv[1:3]
document = json.load(sys.stdin)
if document["files"] and document["files"][0]["loaded"]:
    for f in document["findings"]:
        print("\t".join([form, name, f["severity"], str(f["line"]), f["message"], f["text"]]))
' "$1" "$2"
}

run_case
