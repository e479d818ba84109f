#!/usr/bin/env bash
# The main job on a fresh machine: installs what is missing, builds, and runs `framix demo`
# in the current folder.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
FRAMIX_WITH_EXTRAS=0 "$root/scripts/install-deps.sh"
# Only the program is built, in the tree the tests use too, with the same options, so running
# the demo first leaves nothing for scripts/run-tests.sh to undo.
(cd "$root" && FRAMIX_BUILD_TARGET=framix_host scripts/build.sh release)
exec "$root/build/release/framix" demo "$@"
