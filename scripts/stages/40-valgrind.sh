#!/usr/bin/env bash
# Runs the parser, maps and module (formatter and lookup) test programs under
# valgrind memcheck on the native build: any invalid access, use of
# uninitialised memory or definitely lost block fails the stage. Scenarios run
# in forked children, which stay under valgrind and report the same way. The
# corpus tests, slow under valgrind and covered by the sanitizer build, are
# left out.
set -euo pipefail
cd "$(dirname "$0")/../.."
cmake --preset native >/dev/null
programs=()
for unit in maps parser module; do
    [ -d "tests/$unit" ] && programs+=("tqmsg_${unit}_tests")
done
cmake --build --preset native -j "$(nproc)" --target "${programs[@]}"

valgrind=(valgrind --tool=memcheck --error-exitcode=99 --leak-check=full
          --show-leak-kinds=definite --errors-for-leak-kinds=definite
          --track-origins=yes --quiet)
failed=0
for program in "${programs[@]}"; do
    echo "-- valgrind: $program"
    # Test programs chdir nowhere; temporary files land in the test directory.
    if ! (cd build/native/tests &&
          timeout 600 "${valgrind[@]}" "./$program" --gtest_filter='-*Corpus*:*corpus*' \
              --gtest_brief=1); then
        echo "!! $program failed under valgrind"
        failed=1
    fi
done
exit $failed
