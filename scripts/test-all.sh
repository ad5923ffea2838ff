#!/usr/bin/env bash
# Runs every test: formatting check, then the native, i386 and sanitizer
# builds with their test suites, then the further stages in scripts/stages/
# (in name order). Any failure fails the whole run.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
jobs=$(nproc)

if [ "$(id -u)" = 0 ]; then
    bash scripts/install-deps.sh
fi

echo "== clang-format"
files=$(git ls-files '*.cpp' '*.h' '*.cc' '*.c' | grep -v '^examples/generated/' || true)
if [ -n "$files" ]; then
    clang-format --dry-run --Werror $files
fi

run_variant() {
    local preset=$1
    echo "== build and test: $preset"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" -j "$jobs"
    ctest --preset "$preset" -j "$jobs"
}

run_variant native
run_variant i386
run_variant asan-ubsan

for stage in scripts/stages/*.sh; do
    [ -e "$stage" ] || continue
    echo "== stage: $(basename "$stage")"
    (cd "$root" && bash "$stage")
done
echo "== all tests passed"
