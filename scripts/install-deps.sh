#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, when missing.
set -euo pipefail
# A mirror caught mid-sync fails some indexes; the install that follows says
# clearly whether the ones it needs arrived.
update_indexes() {
    apt-get update -qq || echo "warning: some package indexes did not update"
}
packages=(build-essential cmake g++-multilib qemu-user libgtest-dev libbenchmark-dev
          libcli11-dev clang libclang-rt-14-dev valgrind gettext clang-format pkg-config
          python3 file locales lintian systemd
          "libgettextpo-dev:$(dpkg --print-architecture)" "libsystemd-dev:$(dpkg --print-architecture)")
missing=()
for p in "${packages[@]}"; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if ((${#missing[@]})); then
    echo "installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    update_indexes
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
# The i386 build of the tool links Debian's i386 libgettextpo, and that of
# libtqmsg-journal Debian's i386 libsystemd (Multi-Arch: same, installed beside
# the native ones); that needs the i386 architecture enabled.
i386_missing=()
for p in libgettextpo-dev:i386 libsystemd-dev:i386; do
    dpkg -s "$p" >/dev/null 2>&1 || i386_missing+=("$p")
done
if [ "$(dpkg --print-architecture)" = amd64 ] && ((${#i386_missing[@]})); then
    echo "installing: ${i386_missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    dpkg --print-foreign-architectures | grep -qx i386 || dpkg --add-architecture i386
    update_indexes
    # Both architectures of a Multi-Arch: same library must have one version:
    # naming the native liblzma5 (which libsystemd needs) lets apt upgrade it
    # to the version the i386 one arrives with, instead of refusing.
    apt-get install -y -qq --no-install-recommends liblzma5 "${i386_missing[@]}" >/dev/null
fi
