#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for a bounded time; fails on a crash.
# Usage: scripts/run-fuzz.sh [seconds per target, default 60] [target...]   (form, y4m, pnm)
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
shift || true
targets=("$@")
((${#targets[@]})) || targets=(form y4m pnm)

build=build/fuzz
generator=()
command -v ninja >/dev/null && generator=(-G Ninja)
CC=clang CXX=clang++ cmake -S . -B "$build" "${generator[@]}" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DFRAMIX_BUILD_FUZZ=ON -DFRAMIX_BUILD_TESTS=OFF -DFRAMIX_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --target "${targets[@]/#/fx_fuzz_}"

status=0
for target in "${targets[@]}"; do
    # New inputs go to a working corpus in the build folder; the seeds in the tree stay small.
    corpus=$build/corpus/$target
    artifacts=$build/artifacts/$target
    mkdir -p "$corpus" "$artifacts"
    echo "== fuzzing $target for ${seconds}s"
    if ! "$build/fuzz/fx_fuzz_$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
            -print_final_stats=1 \
            -artifact_prefix="$artifacts/" "$corpus" "tests/corpus/$target" 2>"$build/$target.log"; then
        echo "!! $target failed; see $build/$target.log and $artifacts/" >&2
        tail -n 40 "$build/$target.log" >&2
        status=1
    else
        grep -E '^stat::(number_of_executed_units|new_units_added)' "$build/$target.log" || true
    fi
done
exit $status
