#!/usr/bin/env bash
# Installs the Debian packages the build needs, only those that are missing. clang and its runtime
# (libFuzzer and the sanitizers) build the fuzz targets.
set -euo pipefail
pkgs=(cmake make g++ qt6-base-dev libgl-dev libsqlite3-dev sqlite3 googletest libgtest-dev libgmock-dev fonts-dejavu-core
      clang libclang-rt-14-dev)
missing=()
for p in "${pkgs[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    sudo=""
    [ "$(id -u)" -eq 0 ] || sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
