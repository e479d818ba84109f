#!/usr/bin/env bash
# Installs the Intel IPP runtime and headers from PyPI into .deps/ipp (no system change); the
# primitive tests and benchmarks use them as an oracle when present.
# Usage: scripts/install-ipp.sh [version]      (FRAMIX_IPP_DIR overrides the target folder)
set -euo pipefail
cd "$(dirname "$0")/.."
version=${1:-${FRAMIX_IPP_VERSION:-2022.3.1}}
target=${FRAMIX_IPP_DIR:-$PWD/.deps/ipp}
if [[ -f "$target/.installed-$version" ]]; then
    echo "IPP $version already in $target"
    exit 0
fi
rm -rf "$target"
mkdir -p "$target"
# The wheels are data wheels: --prefix puts their payload under $target/lib and $target/include.
python3 -m pip install --quiet --disable-pip-version-check --no-deps --no-compile \
    --prefix "$target" "ipp==$version" "ipp-devel==$version" "ipp-include==$version"
lib=$(find "$target" -name 'libippi.so*' -print -quit)
header=$(find "$target" -name 'ippi.h' -print -quit)
if [[ -z "$lib" || -z "$header" ]]; then
    echo "IPP wheels installed, but libippi or ippi.h is missing under $target" >&2
    exit 1
fi
# The dispatcher libraries open their processor-specific variants (libippik0.so.11 ...) under
# the interface's full version (libippik0.so.11.3); the wheels ship only the major name.
libdir=$(dirname "$lib")
minor=$(sed -n 's/^#define IPP_INTERFACE_VERSION_MINOR *\([0-9]*\).*/\1/p' \
    "$(dirname "$header")/ippversion.h")
for so in "$libdir"/libipp*.so.[0-9]*; do
    [[ -L "$so" || -z "$minor" ]] && continue
    [[ "$so" =~ \.so\.[0-9]+$ ]] && ln -sf "$(basename "$so")" "$so.$minor"
done
touch "$target/.installed-$version"
echo "IPP $version: libraries in $(dirname "$lib"), headers in $(dirname "$header")"
