#!/usr/bin/env bash
# The first command of the README: on a fresh Debian machine (as root) it
# installs what is missing, builds the library and the tqmsg tool, and formats
# a message of the bundled example file.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "$(id -u)" = 0 ]; then
    bash scripts/install-deps.sh
elif ! command -v cmake >/dev/null || ! command -v g++ >/dev/null ||
    [ ! -e /usr/include/CLI/CLI.hpp ] || [ ! -d /usr/src/googletest ]; then
    echo "missing build dependencies: run this script as root, or: sudo bash scripts/install-deps.sh" >&2
    exit 1
fi

echo "== building (preset native)"
cmake --preset native >/dev/null
cmake --build --preset native -j "$(nproc)" --target tqmsg_tool

tool=build/native/tools/tqmsg
show() {
    echo "\$ tqmsg $*"
    "$tool" "$@"
}
echo "== the tool on examples/messages.mc"
show check examples/messages.mc
show format examples/messages.mc MSG_DISK_FULL /srv 1048576 4096 --lang English
show format examples/messages.mc MSG_JOB_LATE nightly 12 --lang German
