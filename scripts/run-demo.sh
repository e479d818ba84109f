#!/usr/bin/env bash
# The main job on a fresh machine: installs what is missing, builds, and runs `framix demo`
# in the current folder.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
FRAMIX_WITH_EXTRAS=0 "$root/scripts/install-deps.sh"
(cd "$root" && scripts/build.sh release -DFRAMIX_BUILD_TESTS=OFF -DFRAMIX_BUILD_BENCH=OFF)
exec "$root/build/release/framix" demo "$@"
