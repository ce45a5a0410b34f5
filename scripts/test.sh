#!/usr/bin/env bash
# Builds everything and runs every test: the unit tests and the scenario files. Then the same tests once
# more, built in build-asan with AddressSanitizer and UndefinedBehaviorSanitizer (any finding fails), and
# each fuzz target for a minute on its seed corpus (built with clang in a folder of its own; what a run
# finds anew is kept only for that run).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j2
(cd build && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2)

cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DHALVENOR_SANITIZE=ON >/dev/null
cmake --build build-asan -j2
(
    cd build-asan
    export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1:detect_stack_use_after_return=1
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
    QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2
)

cmake -S tests/fuzz -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang \
    -DCMAKE_CXX_COMPILER=clang++ >/dev/null
cmake --build build-fuzz -j2
found=$(mktemp -d)
trap 'rm -rf "$found"' EXIT
for seeds in tests/fuzz/*/; do
    target=$(basename "$seeds")
    mkdir -p "$found/$target"
    echo "fuzzing $target for 60 seconds"
    build-fuzz/"$target" -max_total_time=60 -timeout=30 -print_final_stats=1 \
        -artifact_prefix=build-fuzz/"$target"- "$found/$target" "$seeds" \
        2>"$found/$target.log" || { tail -n 40 "$found/$target.log"; exit 1; }
    grep -E '^(Done|stat::number_of_executed_units)' "$found/$target.log" || true
done
