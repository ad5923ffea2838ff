#!/usr/bin/env bash
# End-to-end cases of `tqmsg po`. Each function case_NAME is one CTest test,
# po.NAME, registered from this file by tests/CMakeLists.txt:
#   po-cases.sh CASE TOOL SOURCE_DIR CORPUS_DIR [EMULATOR]
# GNU gettext's own programs (msgfmt, msgmerge, msgen, msgattr) judge and
# change the PO files, as translators' tools would.
set -uo pipefail
case_name=$1 tool=$2 src=$3 corpus=$4 emulator=${5:-}
data=$src/tests/po/data
source "$(dirname "${BASH_SOURCE[0]}")/../support/cases-lib.sh"
cd "$src" || exit 1
mc=examples/messages.mc # relative: the references in the expected files name it so
# msgfmt's full check must accept every PO file the tool writes.
expect_valid_po() { msgfmt --check -o /dev/null "$1" 2>"$work/msgfmt" || fail "msgfmt: $(cat "$work/msgfmt")"; }
# The texts of language $2 in file $1: identifier, name and text per line.
texts_of() { $emulator "$tool" list "$1" --lang "$2" --format tsv | cut -f1,3-; }

case_template_and_export() {
    for kind in template English German; do
        if [ $kind = template ]; then
            run po template "$mc" -o "$work/out.po" && expected=$data/messages.pot
        else
            run po export "$mc" --language $kind -o "$work/out.po" && expected=$data/messages.$kind.po
        fi
        expect_status 0 "$kind"
        diff "$expected" "$work/out.po" >"$work/diff" || fail "$kind differs: $(cat "$work/diff")"
        expect_valid_po "$work/out.po"
    done
    run po template "$mc" -o -
    [ "$out" = "$(cat "$data/messages.pot")" ] || fail "the template on standard output differs"
    run po template "$mc" --source-language German -o "$work/de.pot"
    expect_in "$(cat "$work/de.pot")" 'msgid "Prüfsummenfehler in Block 0x%1!08X! von %2."'
}

case_round_trip() {
    for language in English German; do
        run po export "$mc" --language $language -o "$work/$language.po"
        run po import "$work/$language.po" "$mc" --language $language -o "$work/out.mc"
        expect_status 0 "import $language"
        expect_in "$out" "0 added, 0 changed, 7 unchanged"
        cmp -s "$mc" "$work/out.mc" || fail "re-importing $language changed the file"
    done
    # A new language from a PO file naming it in its header: declared, each
    # text added after its message, and read back as the translation.
    msgen "$data/messages.pot" -o - | sed 's/^"Language: \\n"/"Language: fr\\n"/' >"$work/fr.po"
    run po import "$work/fr.po" "$mc" --language French -o "$work/fr.mc"
    expect_in "$out" "7 added, 0 changed, 0 unchanged, language declared"
    expect_in "$(cat "$work/fr.mc")" "French=0x40C:MSG0040C"
    [ "$(texts_of "$work/fr.mc" French)" = "$(texts_of "$mc" English)" ] ||
        fail "the French texts are not the template's"
    [ "$(texts_of "$work/fr.mc" German)" = "$(texts_of "$mc" German)" ] || fail "German changed"
    run po import "$work/fr.po" "$work/fr.mc" --language French -o "$work/fr.mc"
    expect_in "$out" "0 added, 0 changed, 7 unchanged"
}

case_merged_translation() {
    run po export "$mc" --language German -o "$work/old.po"
    # The source moves on: one text changes, one message goes, one comes.
    sed -e 's/started %2!d! minutes late/is %2!d! minutes late/' \
        -e '/^MessageId=$/{N;N;N;/MSG_CHECKSUM/{N;N;N;N;N;N;d}}' "$mc" >"$work/new.mc"
    printf '\nMessageId=\nSymbolicName=MSG_NEW\nLanguage=English\nA new %%1.\n.\n' >>"$work/new.mc"
    run po template "$work/new.mc" -o "$work/new.pot"
    msgmerge --quiet "$work/old.po" "$work/new.pot" -o "$work/merged.po" || fail "msgmerge"
    run po import "$work/merged.po" "$work/new.mc" --language German -o "$work/out.mc"
    expect_status 0 "import of the merged file"
    expect_in "$out" "0 added, 0 changed, 5 unchanged; skipped: 1 fuzzy, 1 untranslated"
    cmp -s "$work/new.mc" "$work/out.mc" || fail "skipped entries changed the file"
    # The translator settles both; the import takes them.
    msgattrib --clear-fuzzy "$work/merged.po" |
        sed -e 's/msgstr "Auftrag \\"%1\\" wurde %2!d! Minuten zu spät gestartet."/msgstr "Auftrag \\"%1\\" ist %2!d! Minuten zu spät."/' \
            -e '/msgctxt "MSG_NEW"/{n;n;s/msgstr ""/msgstr "Ein neues %1."/}' >"$work/done.po"
    expect_valid_po "$work/done.po"
    run po import "$work/done.po" "$work/new.mc" --language German -o "$work/out.mc"
    expect_in "$out" "1 added, 1 changed, 5 unchanged; skipped: 0 fuzzy, 0 untranslated"
    expect_in "$(texts_of "$work/out.mc" German)" $'MSG_JOB_LATE\tAuftrag "%1" ist %2!d! Minuten zu spät.'
    expect_in "$(texts_of "$work/out.mc" German)" $'MSG_NEW\tEin neues %1.'
    # The old file against the new source: a gone and a changed entry warn.
    run po import "$work/old.po" "$work/new.mc" --language German -o "$work/out.mc"
    expect_status 0 "import of the old file"
    expect_in "$err" "MSG_CHECKSUM is no longer in $work/new.mc"
    expect_in "$err" "MSG_JOB_LATE: the source text has changed since"
    expect_in "$out" "1 outdated, 1 unknown"
}

case_insert_checks() {
    # context, translation, the error ("" when accepted)
    while IFS='|' read -r context translation error; do
        msggrep --msgctxt -e "^$context\$" "$data/messages.pot" |
            msgfilter --keep-header -o "$work/one.po" printf '%s' "$translation"
        line=$(grep -n '^msgstr' "$work/one.po" | tail -1 | cut -d: -f1)
        rm -f "$work/out.mc"
        run po import "$work/one.po" "$mc" --language German -o "$work/out.mc"
        if [ -z "$error" ]; then
            expect_status 0 "$translation"
            expect_in "$out" "1 changed"
        else
            expect_status 1 "$translation"
            expect_in "$err" "$work/one.po:$line: $context: the translation $error"
            [ -e "$work/out.mc" ] && fail "a file was written for: $translation"
        fi
    done <<'EOT'
MSG_JOB_DONE|Fertig: %3!u!%% und %2!u!, %1|
MSG_JOB_DONE|%1 %1 %2!u! %3!u!|
MSG_SERVICE_STARTED|Gestartet (%1!s!)|
MSG_JOB_DONE|%1 %2!u!|loses %3!u!
MSG_JOB_LATE|%1 %2!d! %3|adds %3
MSG_JOB_LATE|%1 %2!u!|changes %2!d! to %2!u!
MSG_JOB_LATE|%1 %2!d! %2|changes %2!d! to %2!d! and %2
MSG_JOB_LATE|%1 %2!d! 50%|does not format: Invalid message string
EOT
}

case_language_choice() {
    sed 's/^"Language: de\\n"/"Language: \\n"/' "$data/messages.German.po" >"$work/bare.po"
    while IFS='|' read -r language expected_status message; do
        run po import "$work/bare.po" "$mc" --language "$language" -o "$work/out.mc"
        expect_status "$expected_status" "--language $language"
        expect_in "$err$out" "$message"
    done <<'EOT'
german|0|0 added, 0 changed, 7 unchanged
German=0x407|0|0 added, 0 changed, 7 unchanged
German=0x409|1|declares German as 0x407, not 0x409
Deutsch=0x407|1|declares 0x407 as german: use --language german
Swiss|1|language Swiss is new to examples/messages.mc: give its identifier
Swiss=0x807|0|7 added, 0 changed, 0 unchanged, language declared
Swiss=zz|1|not a language identifier: zz
Severity_X=1|1|not a language name a message file can hold
EOT
}

# Entries the import cannot place are skipped with a warning, not taken.
case_skipped_entries() {
    sed '/^"Language: de\\n"$/a "Plural-Forms: nplurals=2; plural=(n != 1);\\n"' \
        "$data/messages.German.po" >"$work/extra.po"
    printf '\nmsgctxt "MSG_FILES"\nmsgid "%%d file"\nmsgid_plural "%%d files"\nmsgstr[0] "%%d Datei"\nmsgstr[1] "%%d Dateien"\n' >>"$work/extra.po"
    printf '\nmsgid "Job done"\nmsgstr "Auftrag fertig"\n' >>"$work/extra.po"
    expect_valid_po "$work/extra.po"
    run po import "$work/extra.po" "$mc" --language German -o "$work/out.mc"
    expect_status 0 "import with skipped entries"
    expect_in "$err" "$work/extra.po:$(grep -n '^msgstr\[0\]' "$work/extra.po" | cut -d: -f1): warning: an entry with plural forms: skipped"
    expect_in "$err" "$work/extra.po: warning: an entry without a symbolic name: skipped"
    expect_in "$out" "0 added, 0 changed, 7 unchanged"
    cmp -s "$mc" "$work/out.mc" || fail "skipped entries changed the file"
}

# Broken input and usage errors; PO texts are converted to the file's charset.
case_bad_input() {
    printf 'msgid ""\nmsgstr "Content-Type: text/plain; charset=UTF-8\\n"\n\nmsgctxt "A"\nmsgid "x"\nmsgstr "y\n' >"$work/broken.po"
    printf 'msgid ""\nmsgstr "Content-Type: text/plain; charset=ISO-8859-1\\n"\n\nmsgctxt "MSG_JOB_LATE"\nmsgid "Job \\"%%1\\" started %%2!d! minutes late."\nmsgstr "\351t\351 %%1 %%2!d!"\n' >"$work/latin1.po"
    printf 'LanguageNames=(English=1:M)\nMessageId=1\nSymbolicName=A\n\351t\351\n.\n' >"$work/latin1.mc"
    iconv -f ISO-8859-1 -t UTF-8 "$work/latin1.po" | sed 's/ISO-8859-1/UTF-8/; s/été/€/' >"$work/euro.po"
    while IFS='|' read -r expected_status message args; do
        run po $args
        expect_status "$expected_status" "$args"
        expect_in "$err$out" "$message"
    done <<EOT
2|A subcommand is required|
2|--language is required|export $mc -o $work/x.po
2|PO is required|import --language German -o $work/x.mc
1|broken.po:7: end-of-line within string|import $work/broken.po $mc --language German -o $work/x.mc
1|cannot open $work/none.po|import $work/none.po $mc --language German -o $work/x.mc
1|Unable to open file: $work/none.mc|template $work/none.mc -o $work/x.pot
1|declares no language Klingon|template $mc --source-language Klingon -o $work/x.pot
1|euro.po:6: MSG_JOB_LATE: byte 1 cannot be written in ISO-8859-1|import $work/euro.po $mc --language German --charset ISO-8859-1 -o $work/x.mc
1|is not valid UTF-8|template $work/latin1.mc -o $work/x.pot
0|1 changed|import $work/latin1.po $mc --language German -o $work/x.mc
EOT
    grep -q "été %1 %2!d!" "$work/x.mc" || fail "the Latin-1 text was not converted to UTF-8"
    [ -e "$work/x.pot" ] && fail "a failed template left a file"
}

# Every loadable corpus file, in each of its languages: the export re-imports
# to the same bytes; the template, translated by msgen into a new language,
# imports to texts equal to the source's.
case_corpus() {
    [ -f "$corpus/MANIFEST.tsv" ] || { echo "no corpus at '$corpus': skipped"; return; }
    grep -v '^#' "$data/corpus.tsv" | while IFS=$'\t' read -r file charset source languages entries; do
        path=$corpus/$file
        options=(--source-language "$source" --charset "$charset")
        for pair in ${languages//,/ }; do
            language=${pair%:*}
            run po export "$path" --language "$language" "${options[@]}" -o "$work/l.po"
            expect_in "$out" ": $entries entries, ${pair#*:} translated"
            expect_valid_po "$work/l.po"
            run po import "$work/l.po" "$path" --language "$language" "${options[@]}" -o "$work/l.mc"
            cmp -s "$path" "$work/l.mc" || fail "$file: re-importing $language changed the file"
        done
        run po template "$path" "${options[@]}" -o "$work/t.pot"
        msgen "$work/t.pot" -o "$work/p.po"
        run po import "$work/p.po" "$path" --language Pseudo=0x7E7 "${options[@]}" -o "$work/p.mc"
        expect_in "$out" "$entries added, 0 changed"
        texts=$(texts_of "$path" "$source")
        [ "$(texts_of "$work/p.mc" Pseudo)" = "$texts" ] || fail "$file: the new texts differ"
        [ "$(texts_of "$work/p.mc" "$source")" = "$texts" ] || fail "$file: the source changed"
    done > "$work/corpus.log"
    grep FAIL "$work/corpus.log" && failures=1
}

# Real files whose translations already differ from their source in inserts
# (nssm's French text without the English %2, netmsgmsg's Russian one without
# %1), converted by port: an unchanged export re-imports byte for byte; the
# same texts as new ones, in a language the file lacks, are refused.
case_ported_corpus() {
    [ -f "$corpus/MANIFEST.tsv" ] || { echo "no corpus at '$corpus': skipped"; return; }
    while IFS='|' read -r file language lost; do
        [ -f "$corpus/$file" ] || { fail "$file is missing from the corpus"; continue; }
        run port "$corpus/$file" -o "$work/ported.mc"
        expect_status 0 "port $file"
        run po export "$work/ported.mc" --language "$language" -o "$work/l.po"
        run po import "$work/l.po" "$work/ported.mc" --language "$language" -o "$work/l.mc"
        expect_status 0 "$file: re-importing $language"
        cmp -s "$work/ported.mc" "$work/l.mc" || fail "$file: re-importing $language changed the file"
        run po import "$work/l.po" "$work/ported.mc" --language Pseudo=0x7E7 --force-language \
            -o "$work/p.mc"
        expect_status 1 "$file: $language texts as new ones"
        expect_in "$err" ": the translation loses $lost"
    done <<'EOT'
nssm__messages.mc|French|%2
reactos__sdk_include_reactos_mc_netmsgmsg.mc|Russian|%1
EOT
}

# A PO file whose header names another language than --language is refused,
# unless forced; and the duplicate of an entry is reported with its first place.
case_language_and_duplicates() {
    local po=$data/messages.German.po  # Language: de
    while IFS='|' read -r expected_status message args; do
        run po import "$po" "$mc" $args -o "$work/out.mc"
        expect_status "$expected_status" "$args"
        expect_in "$err$out" "$message"
    done <<'EOT'
1|is in language de (0x407), not English (0x409): check --language, or give --force-language|--language English
1|is in language de (0x407), not Swiss (0x100C)|--language Swiss=0x100C
0|0 added, 0 changed, 7 unchanged|--language German
0|0 added, 0 changed, 7 unchanged|--language German=0x407
0|7 added, 0 changed, 0 unchanged, language declared|--language Swiss=0x807
0|7 changed|--language English --force-language
EOT
    { cat "$po"; sed -n '/^msgctxt "MSG_JOB_LATE"/,/^msgstr/p' "$po"; } >"$work/dup.po"
    run po import "$work/dup.po" "$mc" --language German -o "$work/out.mc"
    expect_status 1 "a duplicate entry"
    first=$(grep -n '^msgctxt "MSG_JOB_LATE"' "$work/dup.po" | head -1 | cut -d: -f1)
    first_msgstr=$(awk -v from="$first" 'NR > from && /^msgstr/ { print NR; exit }' "$work/dup.po")
    expect_in "$err" "$work/dup.po:$first_msgstr: this is the location of the first definition"
}

# A first text line holding a header keyword 200,000 times (1.8 MB) imports
# as fast as any other line; it once took time quadratic in its length (13 s
# for 40,000, minutes for this one): CTest's timeout is the guard. Larger
# shapes would test libgettextpo's reader, whose buffer grows by copying under
# AddressSanitizer.
case_long_keyword_line() {
    printf 'LanguageNames=(English=0x409:M)\nMessageId=1\nSymbolicName=A\nA short text\n.\n' \
        >"$work/long.mc"
    run po template "$work/long.mc" -o "$work/long.pot"
    python3 - "$work/long.pot" "$work/long.po" <<'PY'
import sys
text = open(sys.argv[1]).read().replace('"Language: \\n"', '"Language: en\\n"')
at = text.rindex('msgstr ""')
open(sys.argv[2], "w").write(text[:at] + 'msgstr "' + "Language " * 200000 + '"\n')
PY
    run po import "$work/long.po" "$work/long.mc" --language English -o "$work/out.mc"
    expect_status 0 "the long line"
    expect_in "$out" "0 added, 1 changed"
    $emulator "$tool" format "$work/out.mc" A --lang English >"$work/formatted" ||
        fail "the imported line does not format"
    [ "$(grep -o 'Language' "$work/formatted" | wc -l)" = 200000 ] ||
        fail "the long line does not format as imported"
}

run_case
