#!/usr/bin/env bash
# The catalogue of `tqmsg catalog`, indexed and read back by journalctl under
# a root directory of its own (no root rights needed, the machine's catalogue
# untouched). Each case_NAME is one CTest test, run as
#   catalog-cases.sh NAME TOOL TESTDIR WORKDIR
set -euo pipefail

name=$1 tool=$2 testdir=$3 workdir=$4
base=0123456789ABCDEF0123456789abcdef
disk_full=0123456789abcdef01234567c1010010
disk_low=0123456789abcdef0123456781010011
root=$workdir/catalog-$name
rm -rf "$root"
mkdir -p "$root/usr/lib/systemd/catalog"

fail() {
    echo "FAILED: $*"
    exit 1
}

# Generates the catalogue of the test events and indexes it.
indexed_catalogue() {
    command -v journalctl >/dev/null || { echo "SKIPPED: journalctl is not installed"; exit 77; }
    "$tool" catalog "$testdir/data/events.mc" --base "$base" \
        -o "$root/usr/lib/systemd/catalog/events.catalog"
    journalctl --root="$root" --update-catalog
    [ -s "$root/var/lib/systemd/catalog/database" ] || fail "no catalogue database was written"
}

# Compares journalctl's output for `$@` with the expected text on stdin
# (dump-catalog ends each entry with an empty line).
expect_output() {
    diff -u - <(journalctl --root="$root" "$@") || fail "journalctl $* differs"
}

# journalctl in Dutch, from the test's own locale directory.
in_dutch() {
    LOCPATH=$root/locale LC_ALL=nl_NL.UTF-8 "$@"
}

case_default_language() {
    indexed_catalogue
    LC_ALL=C expect_output --list-catalog <<'EXPECTED'
0123456789abcdef0123456701010012 events: Job @TQMSG_INSERT_1@ finished: @TQMSG_INSERT_2@.
0123456789abcdef0123456741010001 events: The storage service started (version @TQMSG_INSERT_1@).
0123456789abcdef0123456781010011 events: Volume @TQMSG_INSERT_1@ has @TQMSG_INSERT_2@ MB free (@TQMSG_INSERT_3@%).
0123456789abcdef01234567c1010010 events: Volume @TQMSG_INSERT_1@ is full: @TQMSG_INSERT_2@ bytes needed.
EXPECTED
    LC_ALL=C expect_output --dump-catalog "$disk_full" <<'EXPECTED'
-- 0123456789abcdef01234567c1010010
Subject: Volume @TQMSG_INSERT_1@ is full: @TQMSG_INSERT_2@ bytes needed.
Defined-By: events

Volume @TQMSG_INSERT_1@ is full: @TQMSG_INSERT_2@ bytes needed.
Free some space and start @TQMSG_INSERT_1@ again.

EXPECTED
}

# Dutch, from a locale built for the test alone (LOCPATH), so that the
# machine's generated locales do not matter.
case_second_language() {
    indexed_catalogue
    command -v localedef >/dev/null || { echo "SKIPPED: localedef is not installed"; exit 77; }
    mkdir -p "$root/locale"
    localedef -i nl_NL -f UTF-8 "$root/locale/nl_NL.UTF-8" >/dev/null 2>&1 ||
        { echo "SKIPPED: cannot build the nl_NL.UTF-8 locale (Debian package locales)"; exit 77; }
    in_dutch expect_output --dump-catalog "$disk_full" <<'EXPECTED'
-- 0123456789abcdef01234567c1010010
Subject: Volume @TQMSG_INSERT_1@ is vol: @TQMSG_INSERT_2@ bytes nodig.
Defined-By: events

Volume @TQMSG_INSERT_1@ is vol: @TQMSG_INSERT_2@ bytes nodig.
Maak ruimte vrij en start @TQMSG_INSERT_1@ opnieuw.

EXPECTED
    # A message without a Dutch text falls back to the default entry.
    in_dutch journalctl --root="$root" --dump-catalog "$disk_low" | grep -qx \
        'Subject: Volume @TQMSG_INSERT_1@ has @TQMSG_INSERT_2@ MB free (@TQMSG_INSERT_3@%).' ||
        fail "the default entry of $disk_low is not shown in Dutch"
}

# The text as the formatter reads it: formatted inserts become their field
# reference whole (padding, hexadecimal, a character), an insert used twice
# twice, escapes resolved; without English the first declared language is
# the default entry.
case_text_rendering() {
    cat >"$root/formats.mc" <<'MC'
LanguageNames=(German=0x407:MSG00407)
LanguageNames=(Dutch=0x413:MSG00413)
MessageId=0x1
Severity=Warning
SymbolicName=MSG_FORMATS
Language=German
[%1!-10s!|%2!08X!|%3!c!] 100%% %1%nnext %0
.
Language=Dutch
%2 before %1
.
MC
    "$tool" catalog "$root/formats.mc" --base "$base" -o "$root/formats.catalog"
    diff -u - <(grep -v '^#' "$root/formats.catalog") <<'EXPECTED' || fail "catalogue text differs"

-- 0123456789abcdef0123456780000001
Subject: [@TQMSG_INSERT_1@|@TQMSG_INSERT_2@|@TQMSG_INSERT_3@] 100% @TQMSG_INSERT_1@
Defined-By: formats

[@TQMSG_INSERT_1@|@TQMSG_INSERT_2@|@TQMSG_INSERT_3@] 100% @TQMSG_INSERT_1@
next 

-- 0123456789abcdef0123456780000001 nl
Subject: @TQMSG_INSERT_2@ before @TQMSG_INSERT_1@
Defined-By: formats

@TQMSG_INSERT_2@ before @TQMSG_INSERT_1@

EXPECTED
}

# tqmsg_add_messages(... CATALOG <base>) writes the catalogue at build time
# and installs it where journalctl looks for catalogues.
case_cmake_option() {
    local proj=$root/project
    mkdir -p "$proj"
    cp "$testdir/data/events.mc" "$proj/"
    echo 'int main(void) { return 0; }' >"$proj/service.c"
    cat >"$proj/CMakeLists.txt" <<CMAKE
cmake_minimum_required(VERSION 3.16)
project(catalog_option LANGUAGES C)
add_executable(tqmsg::tool IMPORTED)
set_target_properties(tqmsg::tool PROPERTIES IMPORTED_LOCATION $tool)
include($testdir/../../cmake/TqmsgMessages.cmake)
add_executable(service service.c)
tqmsg_add_messages(service events.mc CATALOG $base)
CMAKE
    cmake -S "$proj" -B "$proj/build" >"$root/cmake.log" 2>&1 || fail "configure: $(cat "$root/cmake.log")"
    cmake --build "$proj/build" >"$root/build.log" 2>&1 || fail "build: $(cat "$root/build.log")"
    cmake --install "$proj/build" --prefix "$root/usr" >/dev/null || fail "install"
    local installed=$root/usr/lib/systemd/catalog/service.catalog
    [ -s "$installed" ] || fail "no catalogue installed into lib/systemd/catalog"
    grep -qx "Defined-By: service" "$installed" || fail "Defined-By is not the target's name"
    journalctl --root="$root" --update-catalog || fail "journalctl cannot index $installed"
    journalctl --root="$root" --list-catalog | grep -q "^$disk_full service: Volume" ||
        fail "the installed catalogue is not listed: $(journalctl --root="$root" --list-catalog)"
}

"case_$name"
