#!/usr/bin/env bash
# Builds everything and runs every test: the unit tests and the scenario files. Then the same tests once
# more, built in build-asan with AddressSanitizer and UndefinedBehaviorSanitizer: any finding fails.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j2
(cd build && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2)

cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DHALVENOR_SANITIZE=ON >/dev/null
cmake --build build-asan -j2
cd build-asan
export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1:detect_stack_use_after_return=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2
