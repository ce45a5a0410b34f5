#!/usr/bin/env bash
# Builds the Debian package, installs it on this machine with apt-get and checks the store its
# post-install step laid down. Run by hand on a Debian 12 machine (as root or with sudo); it changes the
# machine: the package stays installed (remove it with `apt-get purge halvenorts`).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
command -v dpkg-shlibdeps >/dev/null || $sudo apt-get install -y -qq --no-install-recommends dpkg-dev file
cmake -S . -B build-package -DCMAKE_BUILD_TYPE=Release ${CMAKE_CXX_COMPILER_LAUNCHER:+-DCMAKE_CXX_COMPILER_LAUNCHER=$CMAKE_CXX_COMPILER_LAUNCHER} >/dev/null
cmake --build build-package -j2
(cd build-package && cpack -G DEB)
deb=$(ls -t build-package/halvenorts_*.deb | head -n 1)
echo "built $deb"
dpkg-deb --info "$deb" | sed -n '/Depends/p'
$sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "./$deb"
halvenorts-admin check
man -w halvenorts-admin >/dev/null && echo "man page installed"
test -f /usr/share/applications/halvenorts.desktop && echo "desktop entry installed"
