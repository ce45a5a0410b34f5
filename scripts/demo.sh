#!/usr/bin/env bash
# Builds the console, lays down a demo store in ./demo and starts the console on it.
# The password of a new store is Watchman.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j2 --target halvenorts halvenorts-setup hvsock
build/src/halvenorts-setup demo demo --force
HALVENORTS_WINDIR="$PWD/demo" exec build/src/halvenorts
