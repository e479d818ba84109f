#!/usr/bin/env bash
# Installs the build into a temporary prefix and builds a consumer with find_package(Framix)
# and with pkg-config, then runs it. Usage: install-test.sh BUILD_DIR SOURCE_DIR
set -euo pipefail
build=$1
source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/prefix" >/dev/null
mkdir "$work/consumer"
cp "$source/tests/install/CMakeLists.txt.in" "$work/consumer/CMakeLists.txt"
cp "$source/tests/install/consumer.cpp" "$work/consumer/"
cmake -S "$work/consumer" -B "$work/consumer/build" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/consumer/build" >/dev/null
LD_LIBRARY_PATH="$work/prefix/lib" "$work/consumer/build/consumer"
flags=$(PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig" pkg-config --cflags --libs framix)
# shellcheck disable=SC2086
c++ "$source/tests/install/consumer.cpp" $flags -o "$work/consumer-pc"
LD_LIBRARY_PATH="$work/prefix/lib" "$work/consumer-pc"
