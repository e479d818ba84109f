#!/usr/bin/env bash
# The whole test suite on a fresh machine: installs what is missing (ffmpeg included, for the
# interop tests), then builds and tests an optimised build and an AddressSanitizer +
# UndefinedBehaviorSanitizer build, runs the threading tests under ThreadSanitizer, and fuzzes
# each reader of untrusted input for a bounded time.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
# The real Intel IPP from PyPI is the primitive layer's oracle; without it (no network) the
# differential tests skip with a message.
scripts/install-ipp.sh || echo "Intel IPP could not be installed: differential tests will be skipped"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
echo "== fuzzing (60 s per target)"
scripts/run-fuzz.sh 60
echo "== tsan build (threading tests)"
scripts/build.sh tsan
TSAN_OPTIONS=halt_on_error=1 ctest --test-dir build/tsan --output-on-failure -j "$(nproc)" \
    -R 'Thread|Concurren'
# The full suite last, so its summary closes the log.
for flavour in asan release; do
    echo "== $flavour build"
    scripts/build.sh "$flavour"
    ctest --test-dir "build/$flavour" --output-on-failure -j "$(nproc)"
done
