#!/usr/bin/env bash
# Proves that what we install can be used:
#  1. a relocatable install: the x86-64 build installed into a temporary
#     prefix, and the example built against it with find_package(tqmsg) and
#     with pkg-config;
#  2. the Debian packages: libtqmsg1, libtqmsg-dev and tqmsg built for amd64
#     and i386, their contents and fields checked, and lintian run on them
#     (any error fails);
#  3. as root: the three amd64 packages and the i386 libtqmsg1 and
#     libtqmsg-dev installed side by side, the example built against them for
#     each architecture in both ways and run, and everything this script
#     installed removed again (with the i386 architecture, if it added it).
# The C example (examples/c) is built as C in the same ways, wherever the C++
# example is. The libtqmsg-journal packages are built, checked and installed
# beside the others, and the C example, built against them, reports its events
# to a live journald in a private mount namespace (amd64, as root).
# Building the i386 packages needs the i386 C++ libraries (libstdc++6:i386),
# which dpkg-shlibdeps reads; as root the script installs them for the run.
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$PWD
tmp=$(mktemp -d)
expected=$root/examples/expected-output.txt
jobs=$(nproc)
ours=(libtqmsg1 libtqmsg-dev tqmsg libtqmsg-journal1 libtqmsg-journal-dev)
ours_re='^(libtqmsg1|libtqmsg-dev|tqmsg|libtqmsg-journal1|libtqmsg-journal-dev):'

# Prints the command that runs i386 programs here: nothing when the kernel
# runs them, qemu-i386 when it refuses them or when TQMSG_FORCE_QEMU_I386=1
# asks for the emulator anyway (so that one machine can check both paths).
i386_runner() {
    if [ "${TQMSG_FORCE_QEMU_I386:-}" != 1 ]; then
        printf 'int main(void) { return 0; }\n' >"$tmp/probe.c"
        cc -m32 "$tmp/probe.c" -o "$tmp/probe"
        if "$tmp/probe" 2>/dev/null; then
            return
        fi
    fi
    command -v qemu-i386 >/dev/null || { echo "i386 programs need qemu-i386, which is missing" >&2; exit 1; }
    echo qemu-i386
}

# loaded_objects RUNNER PROGRAM: the dynamic loader's list of what PROGRAM
# loads. Under the emulator the variable must reach the emulated program
# (qemu-i386 -E); set around qemu-i386 itself, it would trace the emulator's
# own x86-64 libraries instead.
loaded_objects() {
    local runner=$1 program=$2
    if [ -n "$runner" ]; then
        $runner -E LD_TRACE_LOADED_OBJECTS=1 "$program"
    else
        LD_TRACE_LOADED_OBJECTS=1 "$program"
    fi
}

# check_run LABEL RUNNER PROGRAM [LIBRARY]: runs the example and compares its
# output; with LIBRARY, also checks that the program loads that libtqmsg.
check_run() {
    local label=$1 runner=$2 program=$3 library=${4:-}
    $runner "$program" >"$tmp/actual.txt"
    expect_output "the example built with $label" "$expected" "$tmp/actual.txt"
    [ -z "$library" ] || expect_library "$label" "$runner" "$program" "$library"
    echo "ok: example built with $label"
}

# expect_output WHAT EXPECTED ACTUAL: what WHAT printed (ACTUAL) is EXPECTED.
expect_output() {
    if ! diff -u "$2" "$3"; then
        echo "FAIL: $1 printed something else" >&2
        exit 1
    fi
}

# expect_library LABEL RUNNER PROGRAM LIBRARY: PROGRAM loads that libtqmsg.
expect_library() {
    local label=$1 runner=$2 program=$3 library=$4 loaded
    loaded=$(loaded_objects "$runner" "$program" | awk '$1 == "libtqmsg.so.1" {print $3}')
    if [ "$(realpath "$loaded")" != "$(realpath "$library")" ]; then
        echo "FAIL: $(basename "$program") built with $label loads '$loaded', not $library" >&2
        exit 1
    fi
}

# check_events LABEL RUNNER PROGRAM [FILE]: runs the second example, whose
# Windows message file tqmsg_add_messages() converted at build time (FILE:
# the converted file to load, such as its installed copy).
check_events() {
    local label=$1 runner=$2 program=$3 file=${4:-}
    $runner "$program" $file >"$tmp/events.txt"
    if ! diff -u "$root/examples/expected-service-events.txt" "$tmp/events.txt"; then
        echo "FAIL: the converted-messages example built with $label printed something else" >&2
        exit 1
    fi
    echo "ok: converted-messages example built with $label"
}

# build_cmake OUT FLAGS [CMAKE ARGS...]: the example through find_package.
build_cmake() {
    local out=$1 flags=$2
    shift 2
    cmake -S examples -B "$out" -DCMAKE_CXX_FLAGS="$flags" "$@" >/dev/null
    cmake --build "$out" -j "$jobs" >/dev/null
}

# build_pkgconfig OUT TOOL_COMMAND FLAGS: the example through pkg-config,
# which searches PKG_CONFIG_LIBDIR when the caller sets it.
build_pkgconfig() {
    make -s -C examples OUT="$1" TQMSG="$2" CXXFLAGS="-O2 $3"
}

relocatable_install() {
    echo "== relocatable install (x86-64, temporary prefix)"
    cmake --preset native >/dev/null
    cmake --build --preset native -j "$jobs" --target tqmsg tqmsg_tool
    local prefix=$tmp/prefix
    cmake --install build/native --prefix "$prefix" >/dev/null
    build_cmake "$tmp/prefix-cmake" "" -DCMAKE_PREFIX_PATH="$prefix"
    check_run "find_package (temporary prefix)" "" "$tmp/prefix-cmake/backup_report"
    check_events "find_package (temporary prefix)" "" "$tmp/prefix-cmake/service_events"
    # Installed with the program: the converted file, loaded from there.
    cmake --install "$tmp/prefix-cmake" --prefix "$tmp/app" >/dev/null
    check_events "find_package (installed program)" "" "$tmp/app/bin/service_events" \
        "$tmp/app/share/service_events/service_events.mc"
    PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name tqmsg.pc)") \
        build_pkgconfig "$tmp/prefix-pc" "$prefix/bin/tqmsg" ""
    check_run "pkg-config (temporary prefix)" "" "$tmp/prefix-pc/backup_report"
}

# build_packages PRESET: the three packages of one build, into $tmp/deb/PRESET.
build_packages() {
    local preset=$1
    echo "== Debian packages: $preset"
    cmake --preset "$preset" >/dev/null
    if ! grep -q '^CMAKE_INSTALL_LIBDIR:PATH=lib/' "build/$preset/CMakeCache.txt"; then
        echo "FAIL: build/$preset does not install into lib/<triplet>; a build tree configured" \
            "by an older version keeps its old choice: delete build/$preset/CMakeCache.txt" >&2
        exit 1
    fi
    cmake --build --preset "$preset" -j "$jobs"
    cpack -G DEB --config "build/$preset/CPackConfig.cmake" -B "$tmp/deb/$preset" >/dev/null
    rm -rf "$tmp/deb/$preset/_CPack_Packages"
    # apt reads local packages as its own unprivileged user.
    chmod 755 "$tmp" "$tmp/deb" "$tmp/deb/$preset"
    ls "$tmp/deb/$preset"
}

# expect_files DEB PATTERN...: every pattern matches a path in the package.
expect_files() {
    local deb=$1
    shift
    dpkg-deb -c "$deb" | awk '{print $6}' >"$tmp/contents.txt"
    for pattern in "$@"; do
        grep -qx -- "$pattern" "$tmp/contents.txt" || { echo "FAIL: $pattern missing from $deb" >&2; exit 1; }
    done
}

# expect_field DEB FIELD PATTERN: the control field matches the pattern.
expect_field() {
    local value
    value=$(dpkg-deb -f "$1" "$2")
    [[ $value =~ $3 ]] || { echo "FAIL: $(basename "$1") has $2: '$value', expected /$3/" >&2; exit 1; }
}

# The full version of the shared library, as the project declares it.
version=$(sed -n 's/^project(tqmsg VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)

check_packages() {
    local preset=$1 triplet=$2 dir=$tmp/deb/$1
    local lib=./usr/lib/$triplet
    local runtime dev tool
    runtime=$(ls "$dir"/libtqmsg1_*.deb) dev=$(ls "$dir"/libtqmsg-dev_*.deb) tool=$(ls "$dir"/tqmsg_*.deb)
    # The runtime package holds the SONAME library and nothing else.
    dpkg-deb -c "$runtime" | awk '$1 !~ /^d/ {print $6}' | sort >"$tmp/runtime.txt"
    printf '%s\n' "$lib/libtqmsg.so.1" "$lib/libtqmsg.so.$version" \
        ./usr/share/doc/libtqmsg1/changelog.gz ./usr/share/doc/libtqmsg1/copyright | sort |
        diff -u - "$tmp/runtime.txt" || { echo "FAIL: unexpected contents of $runtime" >&2; exit 1; }
    expect_files "$dev" "$lib/libtqmsg.so" ./usr/include/tqmsg/MessageModule.h \
        ./usr/include/tqmsg/MessageTable.h ./usr/include/tqmsg/MessageModuleMaps.h \
        ./usr/include/tqmsg/tqmsg.h ./usr/share/man/man3/tqmsg.3.gz \
        "$lib/cmake/tqmsg/tqmsgConfig.cmake" "$lib/cmake/tqmsg/tqmsgConfigVersion.cmake" \
        "$lib/cmake/tqmsg/TqmsgMessages.cmake" \
        "$lib/pkgconfig/tqmsg.pc" ./usr/share/doc/libtqmsg-dev/copyright
    expect_files "$tool" ./usr/bin/tqmsg ./usr/share/man/man1/tqmsg.1.gz ./usr/share/doc/tqmsg/copyright
    expect_c_symbols "$runtime"
    expect_field "$runtime" Multi-Arch '^same$'
    expect_field "$dev" Multi-Arch '^same$'
    expect_field "$tool" Multi-Arch '^foreign$'
    expect_field "$dev" Depends '^libtqmsg1 \(= [0-9.]+\)'
    expect_field "$tool" Depends 'libtqmsg1 \(= [0-9.]+\)'
    for deb in "$runtime" "$dev" "$tool"; do
        echo "   $(dpkg-deb -f "$deb" Package Architecture Multi-Arch Depends | tr '\n' ' ')"
    done
    echo "ok: contents and control fields of the $preset packages"
    echo "-- lintian ($preset)"
    local status=0
    lintian --fail-on error "$runtime" "$dev" "$tool" >"$tmp/lintian.txt" 2>&1 || status=$?
    grep -v 'root privileges' "$tmp/lintian.txt" || true
    [ "$status" = 0 ] || { echo "FAIL: lintian reports errors for the $preset packages" >&2; exit 1; }
    echo "ok: lintian reports no error for the $preset packages"
}

installed_packages() {
    dpkg-query -W -f '${db:Status-Status} ${Package}:${Architecture}\n' |
        awk '$1 == "installed" {print $2}' | sort
}

# apt_install ARGS...: installs with apt and appends to $tmp/added.txt the
# packages that were new, so that restore_machine removes exactly those.
apt_install() {
    installed_packages >"$tmp/before.txt"
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        -o DPkg::Lock::Timeout=300 "$@" >/dev/null
    installed_packages | comm -13 "$tmp/before.txt" - >>"$tmp/added.txt"
}

# Makes i386 packages installable: the architecture, and apt's lists for it.
enable_i386() {
    dpkg --print-foreign-architectures | grep -qx i386 && return
    dpkg --add-architecture i386
    touch "$tmp/added-i386"
    # A mirror that is being synchronised may fail one list; the others do.
    apt-get update -qq || echo "warning: apt-get update reported errors; going on"
}

# Puts the machine back as it was: removes what apt_install added, and the
# i386 architecture when enable_i386 added it and nothing else uses it.
# dpkg, unlike apt, refuses to remove a package that something else still
# needs rather than removing that too. libgcc-s1 is protected, a guard meant
# for the machine's own architecture: removing the i386 one is safe.
restore_machine() {
    if [ -s "$tmp/added.txt" ]; then
        echo "-- removing: $(tr '\n' ' ' <"$tmp/added.txt")"
        local added
        mapfile -t added <"$tmp/added.txt"
        local tries=0
        # Another apt or dpkg run holds the lock for a while at most.
        until dpkg --purge --force-remove-protected "${added[@]}" >"$tmp/purge.txt" 2>&1; do
            grep -q 'lock' "$tmp/purge.txt" && [ $((tries += 1)) -lt 60 ] && { sleep 5; continue; }
            cat "$tmp/purge.txt" >&2
            echo "FAIL: could not remove what this check installed" >&2
            exit 1
        done
        : >"$tmp/added.txt"
    fi
    if [ -e "$tmp/added-i386" ]; then
        dpkg --remove-architecture i386 2>/dev/null ||
            echo "note: i386 stays enabled: other i386 packages are installed"
        rm -f "$tmp/added-i386"
    fi
}

install_packages() {
    if installed_packages | grep -E "$ours_re"; then
        echo "FAIL: tqmsg packages are installed already; remove them before this check" >&2
        exit 1
    fi
    echo "== installing the amd64 packages and the i386 libtqmsg1 and libtqmsg-dev side by side"
    apt_install "$tmp"/deb/native/*.deb "$tmp"/deb/i386/libtqmsg1_*.deb \
        "$tmp"/deb/i386/libtqmsg-dev_*.deb "$tmp"/deb/i386/libtqmsg-journal*.deb
    dpkg -l "${ours[@]}" | grep '^ii'
}

consume_packages() {
    local arch=$1 triplet=$2 flags=$3 runner=$4
    echo "== the example against the installed packages: $arch"
    local out=$tmp/installed-$arch
    build_cmake "$out/cmake" "$flags" -DCMAKE_LIBRARY_ARCHITECTURE="$triplet" \
        -DCMAKE_FIND_PACKAGE_NO_PACKAGE_REGISTRY=ON
    grep -q "tqmsg_DIR:PATH=/usr/lib/$triplet/cmake/tqmsg" "$out/cmake/CMakeCache.txt" ||
        { echo "FAIL: find_package did not use /usr/lib/$triplet/cmake/tqmsg" >&2; exit 1; }
    check_run "find_package (installed, $arch)" "$runner" "$out/cmake/backup_report" \
        "/usr/lib/$triplet/libtqmsg.so.1"
    check_events "find_package (installed, $arch)" "$runner" "$out/cmake/service_events"
    PKG_CONFIG_LIBDIR=/usr/lib/$triplet/pkgconfig:/usr/share/pkgconfig \
        build_pkgconfig "$out/pc" /usr/bin/tqmsg "$flags"
    check_run "pkg-config (installed, $arch)" "$runner" "$out/pc/backup_report" \
        "/usr/lib/$triplet/libtqmsg.so.1"
}

# ---- The C example (examples/c) -------------------------------------------
# A C99 program over tqmsg.h alone, built with project(... C) through
# find_package and through pkg-config, and run twice: in German (LANG) and,
# for a locale whose language its file lacks, with the English fallback.

# expect_c_symbols DEB: the symbols file of the library package lists every
# function that tqmsg.h declares.
expect_c_symbols() {
    local deb=$1 name
    dpkg-deb --ctrl-tarfile "$deb" | tar -xO ./symbols >"$tmp/symbols.txt"
    for name in $(grep -o 'TQMSG_C_API [^(]*(' include/tqmsg.h | grep -o 'tqmsg_[a-z_]*'); do
        grep -q "^ $name@Base " "$tmp/symbols.txt" ||
            { echo "FAIL: $name is missing from the symbols file of $deb" >&2; exit 1; }
    done
}

# check_c_run LABEL RUNNER PROGRAM [LIBRARY]: runs the C example in both
# locales and compares its output; with LIBRARY, checks the library it loads.
check_c_run() {
    local label=$1 runner=$2 program=$3 library=${4:-}
    {
        env -u LC_ALL -u LC_MESSAGES LANG=de_DE.UTF-8 $runner "$program"
        env -u LC_MESSAGES LC_ALL=fr_FR.UTF-8 $runner "$program"
    } >"$tmp/c-actual.txt"
    expect_output "the C example built with $label" "$root/examples/c/expected-output.txt" \
        "$tmp/c-actual.txt"
    [ -z "$library" ] || expect_library "$label" "$runner" "$program" "$library"
    echo "ok: C example built with $label"
}

# build_c_example OUT FLAGS TOOL [CMAKE ARGS...]: the C example through
# find_package into OUT/cmake and through pkg-config (searching
# PKG_CONFIG_PATH or PKG_CONFIG_LIBDIR as the caller sets them) into OUT/pc.
build_c_example() {
    local out=$1 flags=$2 tool=$3
    shift 3
    cmake -S examples/c -B "$out/cmake" -DCMAKE_C_FLAGS="$flags" "$@" >/dev/null
    cmake --build "$out/cmake" -j "$jobs" >/dev/null
    make -s -C examples/c OUT="$out/pc" TQMSG="$tool" CFLAGS="-O2 $flags"
}

c_example_relocatable() {
    echo "== the C example against the temporary prefix (x86-64)"
    local prefix=$tmp/prefix
    PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name tqmsg.pc)") \
        build_c_example "$tmp/prefix-c" "" "$prefix/bin/tqmsg" -DCMAKE_PREFIX_PATH="$prefix"
    check_c_run "find_package (temporary prefix)" "" "$tmp/prefix-c/cmake/service_status"
    check_c_run "pkg-config (temporary prefix)" "" "$tmp/prefix-c/pc/service_status"
}

# c_example_installed ARCH TRIPLET FLAGS RUNNER: against the installed packages.
c_example_installed() {
    local arch=$1 triplet=$2 flags=$3 runner=$4 out=$tmp/installed-c-$1
    echo "== the C example against the installed packages: $arch"
    PKG_CONFIG_LIBDIR=/usr/lib/$triplet/pkgconfig:/usr/share/pkgconfig \
        build_c_example "$out" "$flags" /usr/bin/tqmsg -DCMAKE_LIBRARY_ARCHITECTURE="$triplet" \
        -DCMAKE_FIND_PACKAGE_NO_PACKAGE_REGISTRY=ON
    check_c_run "find_package (installed, $arch)" "$runner" "$out/cmake/service_status" \
        "/usr/lib/$triplet/libtqmsg.so.1"
    check_c_run "pkg-config (installed, $arch)" "$runner" "$out/pc/service_status" \
        "/usr/lib/$triplet/libtqmsg.so.1"
}
# ---- end of the C example ---------------------------------------------------

# ---- libtqmsg-journal ---------------------------------------------------------
# Its two packages beside libtqmsg's, and the C example reporting its events
# to a live journald (in a private mount namespace, as the journal tests do).

# check_journal_packages PRESET TRIPLET: contents, fields, symbols, lintian.
check_journal_packages() {
    local dir=$tmp/deb/$1 lib=./usr/lib/$2 runtime dev name
    runtime=$(ls "$dir"/libtqmsg-journal1_*.deb) dev=$(ls "$dir"/libtqmsg-journal-dev_*.deb)
    dpkg-deb -c "$runtime" | awk '$1 !~ /^d/ {print $6}' | sort >"$tmp/journal-runtime.txt"
    printf '%s\n' "$lib/libtqmsg-journal.so.1" "$lib/libtqmsg-journal.so.$version" \
        ./usr/share/doc/libtqmsg-journal1/changelog.gz ./usr/share/doc/libtqmsg-journal1/copyright |
        sort | diff -u - "$tmp/journal-runtime.txt" ||
        { echo "FAIL: unexpected contents of $runtime" >&2; exit 1; }
    expect_files "$dev" "$lib/libtqmsg-journal.so" ./usr/include/tqmsg/tqmsg-journal.h \
        "$lib/cmake/tqmsg/tqmsgJournalTargets.cmake" "$lib/pkgconfig/tqmsg-journal.pc" \
        ./usr/share/man/man3/tqmsg-journal.3.gz ./usr/share/doc/libtqmsg-journal-dev/copyright
    expect_field "$runtime" Multi-Arch '^same$'
    expect_field "$dev" Multi-Arch '^same$'
    expect_field "$runtime" Depends 'libtqmsg1 \(= [0-9.]+\).*libsystemd0'
    expect_field "$dev" Depends 'libtqmsg-journal1 \(= [0-9.]+\)'
    dpkg-deb --ctrl-tarfile "$runtime" | tar -xO ./symbols >"$tmp/journal-symbols.txt"
    for name in $(grep -o 'TQMSG_JOURNAL_API [^(]*(' journal/include/tqmsg-journal.h |
                      grep -o 'tqmsg_[a-z_]*'); do
        grep -q "^ $name@Base " "$tmp/journal-symbols.txt" ||
            { echo "FAIL: $name is missing from the symbols file of $runtime" >&2; exit 1; }
    done
    local status=0
    lintian --fail-on error "$runtime" "$dev" >"$tmp/lintian.txt" 2>&1 || status=$?
    grep -v 'root privileges' "$tmp/lintian.txt" || true
    [ "$status" = 0 ] || { echo "FAIL: lintian reports errors for the $1 journal packages" >&2; exit 1; }
    echo "ok: libtqmsg-journal packages of $1: contents, fields, symbols, lintian"
}

# journal_example_events PROGRAM: the C example, built against the installed
# libtqmsg-journal, run beside a live journald: its four events arrive with
# their MESSAGE_IDs.
journal_example_events() {
    local program=$1 out=$tmp/journal-example
    SERVICE_STATUS_JOURNAL=1 bash journal/tests/with-journal.sh journal "$out" "$program" >/dev/null
    python3 - "$out/entries.json" <<'PY' || { echo "FAIL: the C example's events" >&2; exit 1; }
import json, sys
entries = [json.loads(line) for line in open(sys.argv[1])]
events = [(e["PRIORITY"], e["MESSAGE_ID"], e["TQMSG_SYMBOL"]) for e in entries
          if e.get("SYSLOG_IDENTIFIER") == "service_status"]
base = "3f6a0c1e9b2d4e57a8c1d2e3"
expected = [("6", base + "41000001", "MSG_SERVICE_STARTED"), ("4", base + "81000003", "MSG_JOB_LATE"),
            ("3", base + "c1010010", "MSG_DISK_FULL"), ("5", base + "41000002", "MSG_SERVICE_STOPPING")]
if events != expected:
    sys.exit(f"events {events}, expected {expected}")
PY
    echo "ok: the C example reports its events to a live journal"
}
# ---- end of libtqmsg-journal ----------------------------------------------------

trap 'restore_machine; rm -rf "$tmp"' EXIT
: >"$tmp/added.txt"

relocatable_install
c_example_relocatable
build_packages native
check_packages native x86_64-linux-gnu
check_journal_packages native x86_64-linux-gnu

if [ "$(id -u)" = 0 ]; then
    enable_i386
    # libc6 of both architectures must have the same version: apt upgrades an
    # out-of-date amd64 libc6 here, which stays.
    apt_install libstdc++6:i386
elif ! dpkg-query -W -f '${db:Status-Status}' libstdc++6:i386 2>/dev/null | grep -q installed; then
    echo "SKIPPED: the i386 packages need libstdc++6:i386, and installing it needs root"
    exit 0
fi
build_packages i386
check_packages i386 i386-linux-gnu
check_journal_packages i386 i386-linux-gnu

if [ "$(id -u)" != 0 ]; then
    echo "SKIPPED: installing the packages needs root"
    exit 0
fi
runner32=$(i386_runner)
install_packages
consume_packages amd64 x86_64-linux-gnu "" ""
c_example_installed amd64 x86_64-linux-gnu "" ""
journal_example_events "$tmp/installed-c-amd64/cmake/service_status"
consume_packages i386 i386-linux-gnu -m32 "$runner32"
c_example_installed i386 i386-linux-gnu -m32 "$runner32"
restore_machine
if installed_packages | grep -E "$ours_re"; then
    echo "FAIL: packages left installed" >&2
    exit 1
fi
echo "ok: packages installed, used and removed"
