#!/usr/bin/env bash
# Runs a command on a separate Xvfb display and returns its exit code:
#   with_xvfb.sh [--screen WxH] [--answer-boxes] command [argument ...]
# --answer-boxes: presses Return in message boxes, such as that of a failed start.
set -u

size=1600x1000
answer_boxes=0
while [ $# -gt 0 ]; do
    case $1 in
        --screen) size=$2; shift 2 ;;
        --answer-boxes) answer_boxes=1; shift ;;
        *) break ;;
    esac
done

command -v Xvfb >/dev/null 2>&1 || { echo "with_xvfb: Xvfb not found; install it or set DISPLAY" >&2; exit 1; }

number_file=$(mktemp)
# -noreset: a server reset when the last client disconnects would lose the first events of the next client.
Xvfb -displayfd 3 -screen 0 "${size}x24" -noreset -nolisten tcp >/dev/null 2>&1 3>"$number_file" &
server=$!
watcher=''
finish() {
    [ -n "$watcher" ] && kill "$watcher" 2>/dev/null
    kill "$server" 2>/dev/null
    rm -f "$number_file"
}
trap finish EXIT
trap 'exit 130' INT TERM

for _ in $(seq 100); do
    [ -s "$number_file" ] && break
    kill -0 "$server" 2>/dev/null || { echo "with_xvfb: Xvfb did not start" >&2; exit 1; }
    sleep 0.05
done
DISPLAY=:$(cat "$number_file")
export DISPLAY
unset WAYLAND_DISPLAY

# Unlike SDL's windows, its message boxes have neither a class nor a name that xdotool can read.
answer() {
    local all classed box
    while sleep 0.5; do
        all=$(xdotool search --onlyvisible --maxdepth 1 '.*' 2>/dev/null | sort)
        classed=$(xdotool search --onlyvisible --maxdepth 1 --class '.' 2>/dev/null | sort)
        for box in $(comm -23 <(echo "$all") <(echo "$classed")); do xdotool key --window "$box" Return 2>/dev/null; done
    done
}
if [ "$answer_boxes" = 1 ] && command -v xdotool >/dev/null 2>&1; then
    answer &
    watcher=$!
fi

"$@"
