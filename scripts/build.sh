#!/usr/bin/env bash
# Configures and builds one flavour of the tree: release (default), asan or tsan.
# Usage: scripts/build.sh [release|asan|tsan] [extra cmake arguments...]
#        FRAMIX_BUILD_TARGET=framix_host scripts/build.sh release   (one target only)
set -euo pipefail
cd "$(dirname "$0")/.."
flavour=${1:-release}
shift || true
case "$flavour" in
    release) args=(-DCMAKE_BUILD_TYPE=Release) ;;
    asan)    args=(-DCMAKE_BUILD_TYPE=RelWithDebInfo "-DFRAMIX_SANITIZE=address;undefined"
                   -DFRAMIX_BUILD_BENCH=OFF) ;;
    tsan)    args=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DFRAMIX_SANITIZE=thread
                   -DFRAMIX_BUILD_BENCH=OFF) ;;
    *) echo "unknown build flavour '$flavour' (release, asan or tsan)" >&2; exit 2 ;;
esac
# Paths relative to the checkout let worktrees and fresh clones share one compiler cache.
export CCACHE_BASEDIR="$PWD"
generator=()
command -v ninja >/dev/null && generator=(-G Ninja)
cmake -S . -B "build/$flavour" "${generator[@]}" "${args[@]}" "$@" >/dev/null
# FRAMIX_BUILD_TARGET builds one target only (the demo script builds just the program).
cmake --build "build/$flavour" -j "$(nproc)" ${FRAMIX_BUILD_TARGET:+--target "$FRAMIX_BUILD_TARGET"}
