#!/usr/bin/env bash
# Fuzzes the readers: every target for some minutes, side by side, with clang's sanitizers.
#
# usage: ./fuzz.sh [MINUTES [TARGET...]]    10 minutes and all targets, if nothing is said
#
# An input that breaks a promise is kept in build/fuzz-findings/, with what the sanitizer says of it beside it. New
# inputs that reach new code are kept in build/fuzz-corpus/ for the next time; ./fuzz.sh 0 takes those that are worth
# keeping over into fuzz/corpus/.
cd "$(dirname "$0")"
. scripts/common.sh

minutes=${1:-10}
shift $(($# > 0 ? 1 : 0))
targets=("$@")
[ ${#targets[@]} -gt 0 ] || mapfile -t targets < <(cd fuzz && ls -1 ./*_fuzzer.cpp | sed -E 's|^\./(.*)_fuzzer\.cpp$|\1|')

ensure_packages "${build_packages[@]}" clang libclang-rt-14-dev || die "Packages are missing."
build_preset fuzz "${targets[@]/%/_fuzzer}"
export ASAN_OPTIONS=detect_leaks=1:handle_abort=1 UBSAN_OPTIONS=print_stacktrace=1

# fuzz TARGET: one target, for the minutes; its last lines are the answer.
fuzz() {
    local corpus=build/fuzz-corpus/$1 findings=build/fuzz-findings/$1
    mkdir -p "$corpus" "$findings"
    "build/fuzz/fuzz/$1_fuzzer" -max_total_time=$((minutes * 60)) -max_len=4096 -timeout=20 -rss_limit_mb=2048 \
        -artifact_prefix="$findings/" "$corpus" "fuzz/corpus/$1" >"build/fuzz-findings/$1.log" 2>&1
}

# take_over TARGET: the fewest inputs that together reach all code that is reached, at most 1 KB each.
take_over() {
    local kept
    kept=$(mktemp -d)
    "build/fuzz/fuzz/$1_fuzzer" -set_cover_merge=1 -use_counters=0 -max_len=1024 "$kept" "fuzz/corpus/$1" "build/fuzz-corpus/$1" >/dev/null 2>&1
    cp -n "$kept"/* "fuzz/corpus/$1/"
    rm -rf "$kept"
    say "$1: $(ls "fuzz/corpus/$1" | wc -l) files in fuzz/corpus/$1"
}

mkdir -p build/fuzz-findings
if [ "$minutes" -eq 0 ]; then
    for target in "${targets[@]}"; do take_over "$target"; done
    exit
fi
status=0
declare -A jobs
for target in "${targets[@]}"; do
    fuzz "$target" &
    jobs[$target]=$!
done
for target in "${targets[@]}"; do
    if wait "${jobs[$target]}"; then
        printf '%-12s %s, no finding\n' "$target" "$(grep -aE '^Done' "build/fuzz-findings/$target.log")"
    else
        printf '%-12s FINDING: see build/fuzz-findings/%s.log\n' "$target" "$target"
        status=1
    fi
done
exit $status
