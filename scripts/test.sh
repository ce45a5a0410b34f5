#!/usr/bin/env bash
# Builds everything and runs every test: the unit tests and the scenario files.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j2
cd build
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j2
