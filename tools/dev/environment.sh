# shellcheck shell=bash
# shellcheck disable=SC2154 # the three variables below are set by the caller
# The build environment of ./dev: finds or creates one, and runs commands in it.
# Sourced by ./dev and game.sh, which set `top` (the project that is built), `engine` (this checkout, which may be the
# same) and `assume_yes` (0 or 1).
#
# Tried in this order: installed packages; an existing private root; the package manager; a new private root file system
# of Debian testing, entered with bubblewrap. If all fail, a message lists the packages.

readonly SUITE=forky # Debian testing: the first release with SDL 3.4 and its companions
readonly FETCH_MB=350 ROOT_MB=1700

say() { printf 'dev: %s\n' "$*" >&2; }
die() {
    say "$*"
    exit 1
}

# --- the package list ---

# packages COLUMN: prints a column of packages.list (1 Debian, 2 Fedora, 3 Arch, 4 Homebrew), one name per line.
packages() { awk -v column="$1" '!/^#/ && NF && $column != "-" && !seen[$column]++ { print $column }' "$engine/packages.list"; }

package_words() { packages "$1" | paste -sd ' '; }

# --- installed and available packages ---

at_least() { # at_least MINIMUM VERSION: compares dotted versions
    [ "$(printf '%s\n%s\n' "$1" "$2" | sort -V | head -n 1)" = "$1" ]
}

machine_has_everything() {
    local tool
    for tool in g++ cmake ninja pkg-config; do command -v "$tool" >/dev/null 2>&1 || return 1; done
    at_least 3.25 "$(cmake --version | awk 'NR == 1 { print $3 }')" || return 1
    pkg-config --exists 'sdl3 >= 3.4' 'sdl3-ttf >= 3.2' 'sdl3-image >= 3.2' 'sdl3-mixer >= 3.2' inih gtest || return 1
    # Box2D 3 has no pkg-config file, so the header is tried.
    printf '#include <box2d/box2d.h>\n' | g++ -x c++ -E - >/dev/null 2>&1
}

apt_candidate() { LC_ALL=C apt-cache policy "$1" 2>/dev/null | awk '/Candidate:/ && $2 != "(none)" { print $2 }'; }

apt_offers_everything() {
    command -v apt-get >/dev/null 2>&1 || return 1
    at_least 3.4 "$(apt_candidate libsdl3-dev)" || return 1
    local name
    while read -r name; do [ -n "$(apt_candidate "$name")" ] || return 1; done < <(packages 1)
}

as_root() { # runs a command as root, for installing packages
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null 2>&1; then
        sudo "$@"
    else
        die "neither root nor sudo available; run as root: $*"
    fi
}

confirm() { # confirm QUESTION: true if the user answers yes; --yes and CI imply it
    [ "$assume_yes" = 1 ] || [ "${CI:-}" = true ] && return 0
    [ -t 0 ] || die "$1 No terminal for the answer: pass --yes, or run the command above."
    local answer
    read -r -p "dev: $1 [y/N] " answer
    [ "$answer" = y ] || [ "$answer" = yes ]
}

install_with_apt() {
    local names
    read -r -a names <<<"$(package_words 1)"
    say "all required packages are available from this machine's apt:"
    printf '  apt-get install --no-install-recommends %s\n' "${names[*]}" >&2
    confirm 'Run it now?' || die 'nothing installed'
    as_root apt-get install -y --no-install-recommends "${names[@]}" || die 'apt-get failed'
}

# --- the private root ---

cache_dir() { printf '%s/lumarind-engine' "${XDG_CACHE_HOME:-${HOME:?}/.cache}"; }

# root_dir SUITE PACKAGE...: prints a root's path, which contains a hash of the arguments
root_dir() {
    local suite=$1 key
    shift
    key=$({ echo "$suite"; printf '%s\n' "$@"; } | sha256sum | cut -c1-16)
    printf '%s/root-%s' "$(cache_dir)" "$key"
}

build_root() {
    # shellcheck disable=SC2046 # names of packages
    root_dir "$SUITE" $(packages 1)
}

can_make_root() { # true on Debian and its derivatives, or with both tools installed
    command -v apt-get >/dev/null 2>&1 && return 0
    command -v mmdebstrap >/dev/null 2>&1 && command -v bwrap >/dev/null 2>&1
}

install_root_tools() {
    local names=()
    command -v mmdebstrap >/dev/null 2>&1 || names+=(mmdebstrap)
    command -v bwrap >/dev/null 2>&1 || names+=(bubblewrap)
    # Debian's archive keys are always installed on Debian, but not on Ubuntu.
    [ -e /usr/share/keyrings/debian-archive-keyring.gpg ] || names+=(debian-archive-keyring)
    [ "${#names[@]}" = 0 ] && return 0
    command -v apt-get >/dev/null 2>&1 || return 1
    say "installing ${names[*]} (everything else is installed in the private root)"
    as_root apt-get install -y -q "${names[@]}" >&2 2>/dev/null && return 0
    as_root apt-get update -q >&2 && as_root apt-get install -y -q "${names[@]}" >&2
}

# Prints mmdebstrap options that apply the host's apt settings in the private root.
apt_policy_options() {
    local key value
    for key in Acquire::Check-Valid-Until Acquire::Check-Date Acquire::http::Proxy Acquire::https::Proxy; do
        value=$(apt-config dump --format '%v%n' "$key" 2>/dev/null | head -n 1)
        [ -n "$value" ] && printf -- '--aptopt=%s "%s"\n' "$key" "$value"
    done
    return 0
}

# Created under a temporary name and renamed when complete: an interrupted setup leaves only a *.partial, which the next
# setup removes. Unpacked from a tar stream, so that all files belong to the ordinary user.
make_root() { # make_root DIR SUITE PACKAGE...
    local dir=$1 suite=$2 partial=$1.partial policy slim=() unpack=(tar -x -C "$1.partial")
    shift 2
    # With packages: a slim root, for building. Without: a complete root, for checking packages.
    [ $# = 0 ] || slim=(--include="$(printf '%s,' "$@")"
        --dpkgopt='path-exclude=/usr/share/man/*' --dpkgopt='path-exclude=/usr/share/locale/*'
        --dpkgopt='path-exclude=/usr/share/doc/*' --dpkgopt='path-include=/usr/share/doc/*/copyright')
    rm -rf "$partial"
    mkdir -p "$partial" || return 1
    mapfile -t policy < <(apt_policy_options)
    [ "$(id -u)" = 0 ] || unpack+=(--no-same-owner --no-same-permissions)
    mmdebstrap --variant=apt --format=tar "${policy[@]}" "${slim[@]}" "$suite" - |
        "${unpack[@]}" --exclude='./dev/*' || return 1
    mv "$partial" "$dir"
}

root_is_ready() { [ -d "$(build_root)" ] && command -v bwrap >/dev/null 2>&1; }

ensure_root() { # ensure_root WHY FETCH_MB ROOT_MB SUITE PACKAGE...
    local why=$1 fetch=$2 size=$3 dir cache
    shift 3
    dir=$(root_dir "$@")
    [ -d "$dir" ] && command -v bwrap >/dev/null 2>&1 && return 0
    can_make_root || return 1
    cache=$(cache_dir)
    mkdir -p "$cache" || die "cannot create $cache"
    exec 9>"$cache/lock"
    flock -n 9 || { say 'another setup is running; waiting for it'; flock 9; }
    install_root_tools || return 1
    if [ ! -d "$dir" ]; then
        say "creating a private root of Debian $1 $why"
        say "it downloads about $fetch MB and uses $size MB in $dir; './dev clean --all' removes it"
        make_root "$dir" "$@" || die "the private root could not be created; run the same command again to start over"
        say 'the private root is ready'
    fi
    exec 9>&-
}

ensure_build_root() {
    # shellcheck disable=SC2046 # names of packages
    ensure_root 'for the build' "$FETCH_MB" "$ROOT_MB" "$SUITE" $(packages 1)
}

# --- choosing and entering ---

explain_packages() {
    local column=0 how=''
    if command -v dnf >/dev/null 2>&1; then
        column=2 how='sudo dnf install'
    elif command -v pacman >/dev/null 2>&1; then
        column=3 how='sudo pacman -S --needed'
    elif command -v brew >/dev/null 2>&1; then
        column=4 how='brew install'
    fi
    say 'packages are missing and ./dev cannot install them here. Required: SDL3 3.4, SDL3_ttf, SDL3_image and'
    say 'SDL3_mixer 3.2, inih, Box2D, GoogleTest, CMake 3.25, Ninja and a C++20 compiler (see packages.list).'
    if [ "$column" != 0 ]; then
        say "try: $how $(package_words "$column")"
    else
        say "their names on Debian: $(package_words 1)"
    fi
    exit 1
}

# Sets `environment` to host or root, creating the root if needed.
environment=''
environment_setup() {
    if machine_has_everything; then
        environment=host
    elif root_is_ready; then # before the apt query, which takes a second
        environment=root
    elif apt_offers_everything; then
        install_with_apt
        environment=host
    elif ensure_build_root; then
        environment=root
    else
        explain_packages
    fi
}

# Prints bubblewrap arguments for the display, sound, graphics and controllers that exist.
device_arguments() {
    local run=${XDG_RUNTIME_DIR:-} path
    for path in /dev/dri /dev/snd /dev/input /dev/hidraw*; do
        [ -e "$path" ] && printf '%s\n' --dev-bind "$path" "$path"
    done
    for path in /sys /run/udev "${XAUTHORITY:-${HOME:-/root}/.Xauthority}" "${HOME:-/root}/.config/pulse"; do
        [ -e "$path" ] && printf '%s\n' --ro-bind "$path" "$path"
    done
    [ -n "$run" ] || return 0
    for path in "$run/${WAYLAND_DISPLAY:-wayland-0}" "$run/pulse" "$run/pipewire-0"; do
        [ -e "$path" ] && printf '%s\n' --bind "$path" "$path"
    done
    return 0
}

mounts() { # mounts ROOT: prints bubblewrap arguments that mount it read-only
    printf '%s\n' --ro-bind "$1/usr" /usr --ro-bind "$1/etc" /etc --ro-bind "$1/var" /var \
        --symlink usr/bin /bin --symlink usr/sbin /sbin --symlink usr/lib /lib --symlink usr/lib64 /lib64
}

# inside COMMAND: runs a `sh -c` command string in the environment, in `top`; returns its exit code.
inside() {
    if [ "$environment" = host ]; then
        (cd "$top" && exec sh -c "$1")
        return
    fi
    local arguments data
    data=${XDG_DATA_HOME:-${HOME:-/root}/.local/share}
    mapfile -t arguments < <(mounts "$(build_root)"; device_arguments)
    arguments+=(--dir "${HOME:-/root}")
    if [ -z "${XDG_RUNTIME_DIR:-}" ]; then # without one, sound and Wayland libraries print warnings
        arguments+=(--perms 0700 --dir /run/user --setenv XDG_RUNTIME_DIR /run/user)
    fi
    mkdir -p "$data" 2>/dev/null && arguments+=(--bind "$data" "$data") # the user's files
    bwrap --die-with-parent --unshare-pid \
        --dev /dev --proc /proc --tmpfs /run --bind /tmp /tmp "${arguments[@]}" \
        --bind "$engine" "$engine" --bind "$top" "$top" --chdir "$top" \
        --setenv PATH /usr/local/bin:/usr/bin:/usr/sbin --setenv LANG C.UTF-8 --setenv LC_ALL C.UTF-8 \
        sh -c "$1"
}

# enter ROOT root|player COMMAND [bwrap argument ...]: runs a `sh -c` command string in a root that shares only the
# network with this machine: as its root user, with write access, or as an ordinary user. The arguments may mount a home.
enter() {
    local root=$1 user=$2 command=$3 arguments=()
    shift 3
    if [ "$user" = root ]; then
        [ "$(id -u)" = 0 ] || arguments=(--unshare-user --uid 0 --gid 0)
        arguments+=(--bind "$root" / --ro-bind-try /etc/resolv.conf /etc/resolv.conf)
    else
        mapfile -t arguments < <(mounts "$root")
        arguments+=(--unshare-user --uid 1000 --gid 1000)
    fi
    bwrap --die-with-parent --unshare-pid --unshare-ipc "${arguments[@]}" \
        --dev /dev --proc /proc --tmpfs /run --tmpfs /tmp "$@" \
        /usr/bin/env -i PATH=/usr/local/bin:/usr/bin:/usr/sbin:/usr/games HOME=/home/player LANG=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive sh -c "$command"
}

# --- shared by ./dev and game.sh ---

quote() { [ $# = 0 ] || printf '%q ' "$@"; } # quotes words for a `sh -c` command string

configure_and_build() { # configure_and_build PRESET [TARGET]
    inside "cmake --preset $1 >build/$1.configure.log 2>&1 || { cat build/$1.configure.log >&2; exit 1; }
        cmake --build --preset $1 ${2:+--target $2}"
}

has_display() { [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}${SDL_VIDEO_DRIVER:-}" ]; }
