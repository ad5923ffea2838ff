#!/usr/bin/env bash
# Installs tqmsg into a temporary prefix, for x86-64 and for i386, and builds
# and runs the example against it twice: with find_package(tqmsg) and with
# pkg-config. Then builds the Debian package and checks its contents, and
# builds the example against the package's tree.
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$PWD
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
expected=$root/examples/expected-output.txt
jobs=$(nproc)

# Prints the command that runs i386 programs here: nothing when the kernel
# runs them, qemu-i386 when it refuses them.
i386_runner() {
    printf 'int main(void) { return 0; }\n' >"$tmp/probe.c"
    cc -m32 "$tmp/probe.c" -o "$tmp/probe"
    if "$tmp/probe" 2>/dev/null; then
        return
    fi
    command -v qemu-i386 >/dev/null || { echo "i386 programs do not run and qemu-i386 is missing" >&2; exit 1; }
    echo qemu-i386
}

# check_run LABEL RUNNER PROGRAM: runs the example and compares its output.
check_run() {
    local label=$1 runner=$2 program=$3
    $runner "$program" >"$tmp/actual.txt"
    if ! diff -u "$expected" "$tmp/actual.txt"; then
        echo "FAIL: the example built with $label printed something else" >&2
        exit 1
    fi
    echo "ok: example built with $label"
}

# build_pkgconfig PC_DIR TOOL_COMMAND FLAGS OUT: the example through pkg-config.
build_pkgconfig() {
    PKG_CONFIG_PATH=$1 make -s -C examples OUT="$4" TQMSG="$2" CXXFLAGS="-O2 $3"
}

for arch in native i386; do
    echo "== install and consume: $arch"
    flags="" runner=""
    if [ "$arch" = i386 ]; then
        flags=-m32
        runner=$(i386_runner)
    fi
    cmake --preset "$arch" >/dev/null
    cmake --build --preset "$arch" -j "$jobs" --target tqmsg tqmsg_tool
    prefix=$tmp/$arch/prefix
    cmake --install "build/$arch" --prefix "$prefix" >/dev/null

    cmake -S examples -B "$tmp/$arch/cmake" -DCMAKE_PREFIX_PATH="$prefix" \
        -DCMAKE_CXX_FLAGS="$flags" -DTQMSG_TOOL_EMULATOR="$runner" >/dev/null
    cmake --build "$tmp/$arch/cmake" -j "$jobs" >/dev/null
    check_run "find_package ($arch)" "$runner" "$tmp/$arch/cmake/backup_report"

    pcdir=$(dirname "$(find "$prefix" -name tqmsg.pc)")
    build_pkgconfig "$pcdir" "$runner $prefix/bin/tqmsg" "$flags" "$tmp/$arch/pc"
    check_run "pkg-config ($arch)" "$runner" "$tmp/$arch/pc/backup_report"
done

echo "== Debian package"
cpack -G DEB --config build/native/CPackConfig.cmake -B "$tmp/deb" >/dev/null
deb=$(ls "$tmp"/deb/*.deb)
dpkg-deb -c "$deb" >"$tmp/contents.txt"
for path in usr/bin/tqmsg 'usr/lib/.*libtqmsg\.so\.1 ' usr/include/tqmsg/MessageModule.h \
    usr/include/tqmsg/MessageTable.h usr/include/tqmsg/MessageModuleMaps.h \
    cmake/tqmsg/tqmsgConfig.cmake cmake/tqmsg/tqmsgConfigVersion.cmake pkgconfig/tqmsg.pc \
    man/man1/tqmsg.1; do
    grep -q -- "$path" "$tmp/contents.txt" || { echo "FAIL: $path missing from $deb" >&2; exit 1; }
done
echo "ok: $(basename "$deb") holds the library, headers, tool, man page and package files"
dpkg-deb -x "$deb" "$tmp/debroot"
pcdir=$(dirname "$(find "$tmp/debroot" -name tqmsg.pc)")
build_pkgconfig "$pcdir" "$tmp/debroot/usr/bin/tqmsg" "" "$tmp/debroot-example"
check_run "pkg-config (unpacked Debian package)" "" "$tmp/debroot-example/backup_report"
