#!/usr/bin/env bash
# Runs fuzz targets, by default all: fuzz.sh SECONDS [target ...]. Called by ./dev fuzz, inside the build environment,
# with the fuzz preset built. Exits with an error if there are findings.
set -eu
cd "$(dirname "$0")/../.."
top=$PWD # the fuzzer changes its directory, so all its paths are absolute
build=$top/build/fuzz
seconds=$1
shift

export SDL_VIDEO_DRIVER=dummy SDL_AUDIO_DRIVER=dummy SDL_RENDER_DRIVER=software
export LSAN_OPTIONS="suppressions=$top/tests/leaks.supp:print_suppressions=0"
export ASAN_OPTIONS=external_symbolizer_path=/usr/bin/addr2line UBSAN_OPTIONS=print_stacktrace=1
mkdir -p "$build/logs"
# In memory if possible, because some targets write a file in each run. A crashing fuzzer leaves its folder behind.
TMPDIR=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT

row() { awk -v target="$1" '$1 == target' fuzz/targets.list; }

fuzz() { # fuzz TARGET: logs to build/fuzz/logs/TARGET.log; a finding ends the run
    local target=$1 name length folders folder options=()
    read -r name length folders < <(row "$target")
    mkdir -p "$build/corpus/$name" "$build/findings/$name"
    for folder in $folders; do options+=("$top/$folder"); done
    [ ! -e "fuzz/$name.dict" ] || options+=("-dict=$top/fuzz/$name.dict")
    LUMARIND_FUZZ=$name "$build/run/lumarind_fuzz" -max_total_time="$seconds" -max_len="$length" -timeout=10 \
        -rss_limit_mb=2048 -close_fd_mask=1 -print_final_stats=1 -artifact_prefix="$build/findings/$name/" \
        "$build/corpus/$name" "$top/fuzz/seeds/$name" "${options[@]}" >"$build/logs/$name.log" 2>&1
}

findings() { sed -n 's/.*Test unit written to //p' "$build/logs/$1.log"; }

report() { # report TARGET: prints one line, then the findings
    local log=$build/logs/$1.log runs rate coverage
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")
    coverage=$(grep -o 'cov: [0-9]*' "$log" | tail -n 1)
    printf '%-14s %10s runs %8s per second  %-10s %s findings\n' \
        "$1" "${runs:-?}" "${rate:-?}" "${coverage:-cov: ?}" "$(findings "$1" | wc -l)"
    findings "$1"
    [ ! -e "$build/logs/$1.failed" ] || { printf '%s failed, see %s\n' "$1" "$log"; return 1; }
}

[ $# -gt 0 ] || mapfile -t all < <(awk '!/^#/ && NF { print $1 }' fuzz/targets.list)
[ $# -gt 0 ] || set -- "${all[@]}"
for target in "$@"; do
    [ "$(jobs -rp | wc -l)" -lt "$(nproc)" ] || wait -n || true
    rm -f "$build/logs/$target.failed"
    echo "fuzzing $target for $seconds s" >&2
    { fuzz "$target" || touch "$build/logs/$target.failed"; } &
done
wait
failed=0
for target in "$@"; do report "$target" || failed=1; done
exit "$failed"
