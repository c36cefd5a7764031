#!/usr/bin/env bash
# The commands of a game's ./dev, which calls this script:
#   game.sh FOLDER PROGRAM command ...
# FOLDER is the game's, PROGRAM is the executable built by its presets.
set -euo pipefail

engine=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)
top=$1 program=$2
shift 2
assume_yes=0
# shellcheck source=tools/dev/environment.sh
. "$engine/tools/dev/environment.sh"
# shellcheck source=tools/dev/package.sh
. "$engine/tools/dev/package.sh"

usage() {
    cat <<'TXT'
Usage: ./dev [--yes] command

  run [options]    build the release preset and run the game; without a display under Xvfb
  test             build the debug preset and run the game without a window, for 120 frames
  build [preset]   build release (default) or debug
  package          make a Debian package and a portable archive of the game in build/packages
  shell [command]  open a shell, or run one command string, inside the build environment

--yes confirms the installation of packages on this machine.
TXT
}

build() {
    mkdir -p "$top/build"
    environment_setup
    configure_and_build "${1:-release}" >&2
}

run() {
    build release
    local start=''
    if ! has_display; then
        say 'no display here: running under Xvfb'
        start="$(quote "$engine/tools/dev/with_xvfb.sh") --answer-boxes"
    fi
    inside "exec $start $(quote "build/release/$program" "$@")"
}

run_tests() { # user files are stored in build/test
    build debug
    inside "SDL_VIDEO_DRIVER=dummy SDL_AUDIO_DRIVER=dummy SDL_RENDER_DRIVER=software XDG_DATA_HOME=$(quote "$top/build/test") \
        exec $(quote "build/debug/$program") --quit-at 120 $(quote "$@")"
    say "$program ran for 120 frames"
}

if [ "${1:-}" = --yes ]; then
    assume_yes=1
    shift
fi
name=${1:-help}
[ $# = 0 ] || shift
case $name in
    run) run "$@" ;;
    test) run_tests "$@" ;;
    build) build "$@" ;;
    package)
        package_make
        package_list
        ;;
    shell)
        environment_setup
        inside "${1:-exec bash}"
        ;;
    help | -h | --help) usage ;;
    *)
        usage >&2
        die "no such command: $name"
        ;;
esac
