#!/usr/bin/env bash
# Static checks. Called by ./dev lint, inside the build environment, with the release preset configured.
# shellcheck disable=SC2016,SC2329 # steps are called by name; the command string is expanded by sh
set -u
cd "$(dirname "$0")/../.." || exit
failed=0

step() { # step NAME COMMAND...: runs it, records a failure and continues
    local name=$1
    shift
    if "$@"; then echo "lint: $name ok"; else echo "lint: $name FAILED" >&2; failed=1; fi
}

mapfile -t sources < <(find src tests bench compat examples fuzz template/main.cpp -name '*.cpp' -o -name '*.h' 2>/dev/null | sort)
mapfile -t compiled < <(find src compat examples -name '*.cpp' 2>/dev/null | sort)
mapfile -t scripts < <(grep -lE '^#!.*\b(ba)?sh|^# shellcheck shell' dev .ci/run template/dev tools/dev/*.sh packaging/launcher.in)

tidy() { # one file per process, one process per core; progress output is discarded, findings go to stdout
    printf '%s\n' "${compiled[@]}" |
        xargs -P "$(nproc)" -n 1 sh -c 'clang-tidy --quiet -p build/release "$1" 2>/dev/null || { echo "in $1"; exit 1; }' tidy
}

header_sets() { cmake --build build/release --target all_verify_interface_header_sets >build/headers.log 2>&1 ||
    { cat build/headers.log; return 1; }; }

examples_listed() { # each example must be built, run by the tests, and listed in docs/README.md
    local file name missing=0
    for file in examples/*.cpp; do
        name=$(basename "$file" .cpp)
        grep -qxE " +$name\)?" examples/CMakeLists.txt || { echo "examples/CMakeLists.txt lacks $name"; missing=1; }
        grep -q "^| \`$name\` |" docs/README.md || { echo "docs/README.md lacks $name"; missing=1; }
    done
    return "$missing"
}

step 'format' clang-format --dry-run --Werror "${sources[@]}"
step 'includes' python3 tools/dev/check_includes.py
step 'headers are self-contained' header_sets
step 'examples are listed' examples_listed
step 'shell scripts' shellcheck -x "${scripts[@]}"
step 'clang-tidy' tidy
exit "$failed"
