#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, when missing.
set -euo pipefail
packages=(build-essential cmake g++-multilib qemu-user libgtest-dev libbenchmark-dev
          libcli11-dev clang libclang-rt-14-dev valgrind gettext clang-format pkg-config
          python3 file locales lintian)
missing=()
for p in "${packages[@]}"; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if ((${#missing[@]})); then
    echo "installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
