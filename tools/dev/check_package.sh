# shellcheck shell=bash
# shellcheck disable=SC2016,SC2034,SC2086,SC2154 # command strings for sh; the caller's variables; word lists
# The checks of `./dev package --check` on the packages in build/packages. Sourced by ./dev, after package.sh.
#
# The checks run in minimal root file systems, or in copies with packages installed. The display is the build root's
# Xvfb; there is no sound device, controller or graphics card.

readonly OLD_SUITE=bookworm # Debian 12: C library and SDL are older than those of the build
# One scene of each screen, from tests/test_screens_pictures.cpp.
readonly SCENES='menu text texture tilemap sprite platformer_run gamepad_held logical input audio_music physics_asleep'

packages=$top/build/packages
work=$top/build/package-check

passed() { say "ok: $*"; }

# Checks that the version is the same in all places.
package_versions() {
    local found
    found=$(inside "cd build/packages
        take() { dpkg-deb --fsys-tarfile \"\$1\" | tar -xO \"\$2\"; }
        echo \"CMakeLists.txt \$(sed -n 's/^project(lumarind VERSION \([^ ]*\).*/\1/p' ../../CMakeLists.txt)\"
        echo \"CHANGELOG.md \$(sed -n 's/^## \[\([0-9.]*\)\].*/\1/p' ../../CHANGELOG.md | head -n 1)\"
        echo \"version.h \$(take liblumarind-dev_*.deb ./usr/include/lumarind/version.h | sed -n 's/.*LUMARIND_VERSION \"\(.*\)\"/\1/p')\"
        echo \"metainfo \$(take lumarind-engine_*.deb ./usr/share/metainfo/invalid.lumarind_engine.lumarind_engine.metainfo.xml |
            sed -n 's/.*<release version=\"\([^\"]*\)\".*/\1/p' | head -n 1)\"
        for deb in *.deb; do echo \"\$deb \$(dpkg-deb -f \$deb Version)\"; done
        for tar in *.tar.xz; do echo \"\$tar \$(echo \$tar | sed 's/.*-\([0-9.]*\)-linux.*/\1/')\"; done")
    [ "$(awk '{ print $2 }' <<<"$found" | sort -u | wc -l)" = 1 ] || die "the versions differ:"$'\n'"$found"
}

need_root() { ensure_root "$@" || die 'root file systems cannot be created on this machine'; } # arguments as for ensure_root

# copy_of SUITE PACKAGE...: copies a root, for installing packages, and prints the copy's path
copy_of() {
    local copy=$work/root
    rm -rf "$copy"
    cp -a --reflink=auto "$(root_dir "$@")" "$copy"
    echo "$copy"
}

apt_in() { # apt_in ROOT ARGUMENTS: runs apt as the root's root user; downloads stay in the cache folder
    mkdir -p "$(cache_dir)/archives"
    enter "$1" root "apt-get -o APT::Sandbox::User=root -o Acquire::Languages=none -y -q $2" \
        --bind "$(cache_dir)/archives" /var/cache/apt/archives --ro-bind "$packages" /packages \
        --ro-bind "$work/star-catcher/build/packages" /game >"$work/apt.log" 2>&1 || { cat "$work/apt.log" >&2; die "apt-get $2"; }
}

files_of() { (cd "$1" && find . -path ./var/lib/apt -prune -o -path ./var/cache -prune -o -path ./var/log -prune -o -print |
    grep -vE '^\./(home|tmp|run|dev|proc)(/|$)|^\./var/lib/dpkg/|^\./etc/(ld\.so\.cache|resolv\.conf)$' | sort); }

# as_player ROOT COMMAND [bwrap argument ...]: runs COMMAND from / as an ordinary user with a display; home is $work/home.
as_player() {
    local root=$1 command=$2
    shift 2
    enter "$root" player "export DISPLAY=$(cat "$work/display"); cd / && $command" \
        --bind "$work/home" /home/player --ro-bind /tmp/.X11-unix /tmp/.X11-unix \
        --ro-bind "$work/recordings" /recordings --ro-bind "$work" /check "$@"
}

new_home() {
    rm -rf "${work:?}/home"
    mkdir -p "$work/home"
}

# pictures NAME ROOT PROGRAM RENDERER SHARE: replays one scene of each screen and compares the last frame. SHARE
# thousandths of the pixels may differ: OpenGL rasterises rotated images and lines differently.
pictures() {
    local name=$1 root=$2 program=$3 renderer=$4 share=$5 scene recording frames captures
    rm -rf "${work:?}/$name"
    mkdir -p "$work/$name"
    for scene in $SCENES; do
        recording=$(basename "$work/recordings/$scene".*)
        frames=${recording##*.}
        new_home
        as_player "$root" "LUMARIND_REPLAY=/recordings/$recording LUMARIND_REPLAY_SPEED=50 SDL_RENDER_DRIVER=$renderer \
            $program --no-config-save --capture-at $frames" >"$work/$name/$scene.log" 2>&1 ||
            { cat "$work/$name/$scene.log" >&2; die "$name: $scene ended with an error"; }
        grep -q "renderer: $renderer\$" "$work/$name/$scene.log" || die "$name: $scene was not rendered by $renderer"
        captures=("$work"/home/.local/share/lumarind-engine/captures/*.png)
        [ "${#captures[@]}" = 1 ] && [ -e "${captures[0]}" ] || die "$name: $scene wrote no picture"
        mv "${captures[0]}" "$work/$name/$scene.png"
    done
    inside "python3 tools/dev/compare_pictures.py pictures $(quote "$work/$name") $share" >&2 || die "$name: pictures differ"
    passed "$name: one frame of each of $(wc -w <<<"$SCENES") screens matches its stored picture"
}

# start_time ROOT PROGRAM: prints the time from start to exit after the first frame, in ms, the minimum of five runs
start_time() {
    local times
    new_home
    times=$(as_player "$1" "for i in 1 2 3 4 5; do a=\$(date +%s%N); SDL_RENDER_DRIVER=software $2 --quit-at 1 >/dev/null 2>&1 || exit 1
        b=\$(date +%s%N); echo \$(((b - a) / 1000000)); done") || die "$2 does not start"
    sort -n <<<"$times" | head -n 1
}

check_metadata() { # with the tools of Debian testing
    local tools=(lintian desktop-file-utils appstream)
    need_root 'with the package checkers' 120 470 "$SUITE" "${tools[@]}"
    enter "$(root_dir "$SUITE" "${tools[@]}")" player "cd /tmp
        for deb in /packages/*.deb /game/*.deb; do
            lintian --fail-on error,warning \"\$deb\" || exit 1
            dpkg-deb -x \"\$deb\" all || exit 1
        done
        desktop-file-validate --warn-kde all/usr/share/applications/*.desktop || exit 1
        appstreamcli validate --no-net all/usr/share/metainfo/*.xml" \
        --ro-bind "$packages" /packages --ro-bind "$work/star-catcher/build/packages" /game >&2 ||
        die 'the packages have errors'
    passed 'lintian, desktop-file-validate and appstreamcli'
}

check_same_bytes() { # a second build, in another folder
    local again=$work/again/copy
    rm -rf "$work/again"
    mkdir -p "$again"
    (cd "$top" && git ls-files -co --exclude-standard -z | xargs -0 cp --parents -P -t "$again")
    package_make "$again"
    diff "$packages/SHA256SUMS" "$again/build/packages/SHA256SUMS" >&2 || die 'a second build is not bit-identical'
    rm -rf "$work/again"
    passed 'a second build in another folder is bit-identical'
}

check_debian_package() {
    local root before time
    need_root 'to install packages in' 40 120 "$SUITE"
    root=$(copy_of "$SUITE")
    apt_in "$root" update
    before=$(files_of "$root")
    apt_in "$root" 'install --no-install-recommends /packages/lumarind-engine_*.deb /game/star-catcher_*.deb'
    pictures deb "$root" lumarind-engine software 0
    time=$(start_time "$root" lumarind-engine)
    say "start of the installed program: $time ms"
    new_home
    as_player "$root" 'SDL_RENDER_DRIVER=software star-catcher --screen play --quit-at 30' >"$work/game.log" 2>&1 ||
        { cat "$work/game.log" >&2; die "the template's game does not run"; }
    [ -e "$work/home/.local/share/star-catcher/config/star-catcher.ini" ] || die 'the game has not saved its settings'
    apt_in "$root" 'purge --autoremove lumarind-engine star-catcher'
    diff <(echo "$before") <(files_of "$root") >&2 || die 'removing the Debian package leaves files behind'
    passed "the Debian packages of program and game in Debian $SUITE: installed, run from / as a user, purged"
}

check_archive() {
    local bare gl time
    rm -rf "$work/unpacked"
    mkdir "$work/unpacked"
    inside 'for archive in build/packages/*.tar.xz build/package-check/star-catcher/build/packages/*.tar.xz; do
        tar -xf $archive -C build/package-check/unpacked || exit 1; done'
    local program="/check/unpacked/lumarind-engine-*/lumarind-engine" game="/check/unpacked/star-catcher-*/star-catcher"
    need_root 'to test the archive in' 50 170 "$OLD_SUITE"
    need_root 'with software OpenGL' 100 330 "$OLD_SUITE" libgl1 libgl1-mesa-dri
    bare=$(root_dir "$OLD_SUITE")
    gl=$(root_dir "$OLD_SUITE" libgl1 libgl1-mesa-dri)
    pictures archive "$bare" "$program" software 0
    pictures archive-opengl "$gl" "$program" opengl "4 texture=25" # a rotated image: its edge pixels differ
    pictures archive-new "$(root_dir "$SUITE")" "$program" software 0
    time=$(start_time "$bare" "$program")
    say "start of the archive's program in $OLD_SUITE: $time ms"
    new_home
    as_player "$bare" "SDL_RENDER_DRIVER=software $game --screen play --quit-at 30" >"$work/game.log" 2>&1 ||
        { cat "$work/game.log" >&2; die "the archive of the template's game does not run"; }
    passed "the archives of program and game in Debian $OLD_SUITE, and with the C library of $SUITE"
}

check_library() { # builds a game's project against the installed package
    local tools=(g++ cmake ninja-build dpkg-dev file) root
    need_root 'to build a game in' 170 620 "$SUITE" "${tools[@]}"
    root=$(copy_of "$SUITE" "${tools[@]}")
    apt_in "$root" update
    apt_in "$root" 'install --no-install-recommends /packages/liblumarind-dev_*.deb'
    new_home
    as_player "$root" "cp -r /check/star-catcher /home/player/game && cd /home/player/game && rm -rf build &&
        cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release && cmake --build build &&
        grep -q '^lumarind_DIR:PATH=/usr/lib' build/CMakeCache.txt && SDL_RENDER_DRIVER=software build/star-catcher --quit-at 30 &&
        cd build && cpack && ls star-catcher_*.deb star-catcher-*.tar.xz &&
        cp -r /check/cinder-keep /home/player/keep && cd /home/player/keep &&
        cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release && cmake --build build &&
        SDL_RENDER_DRIVER=software build/cinder-keep --screen level-1 --quit-at 30 &&
        cd build && cpack && ls cinder-keep_*.deb cinder-keep-*.tar.xz" \
        >"$work/library.log" 2>&1 || { cat "$work/library.log" >&2; die 'a game cannot be built with the library package'; }
    passed "the template and the example game find the library's package with find_package, build, run and make packages"
}

package_check() {
    local display
    rm -rf "$work"
    mkdir -p "$work/recordings" "$work/home"
    "$top/dev" new "$work/star-catcher"
    mkdir "$work/cinder-keep"
    (cd "$top/examples/cinder-keep" && cp -r ./*.cpp ./*.h CMakeLists.txt LICENCE assets "$work/cinder-keep")
    "$work/star-catcher/dev" package >&2
    check_metadata
    say 'recording the scenes of the tests'
    sanitized "lumarind_tests --gtest_filter=$(printf ':*PictureTest.*/%s' $SCENES | cut -c 2-)" "LUMARIND_RECORD_SCENES=$(quote "$work/recordings")" \
        >"$work/recordings.log" 2>&1 || { tail -n 40 "$work/recordings.log" >&2; die 'the picture tests fail'; }
    environment=root
    inside "exec tools/dev/with_xvfb.sh sh -c 'echo \$DISPLAY >build/package-check/display; exec sleep infinity'" &
    display=$!
    # shellcheck disable=SC2064 # expands now, to the process id
    trap "kill $display" EXIT
    until [ -s "$work/display" ]; do sleep 0.1; done
    check_debian_package
    check_archive
    check_library
    check_same_bytes
    package_list >&2
    passed 'all checks'
}
