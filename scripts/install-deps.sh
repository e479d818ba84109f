#!/usr/bin/env bash
# Installs everything the build, the tests and the benchmarks need (Debian packages).
set -euo pipefail
packages=(cmake g++ clang libclang-rt-14-dev ninja-build ccache pkg-config
          libgtest-dev libgmock-dev libbenchmark-dev libpng-dev python3 python3-pip)
# Optional extras used for comparisons and interop tests; the build works without them.
if [[ "${FRAMIX_WITH_EXTRAS:-1}" == 1 ]]; then
    packages+=(ffmpeg libopencv-dev)
fi
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
    SUDO=""
    [[ $(id -u) -ne 0 ]] && SUDO=sudo
    export DEBIAN_FRONTEND=noninteractive
    $SUDO apt-get update -qq
    $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
