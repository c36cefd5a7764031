# shellcheck shell=bash
# shellcheck disable=SC2034,SC2154 # top, engine and environment are set by the caller
# `./dev package`, for the engine and for games. Sourced, after environment.sh.

# Builds are reproducible on any machine: always in the private root, with the time of the last commit and without
# absolute paths in the binaries.
package_make() { # package_make [SOURCE]: packages the project in SOURCE, or in `top`, to its build/packages
    local source=${1:-$top} folder=${1:-$top}/build/packages.build epoch
    ensure_build_root || die 'packages are built in a private root of Debian, which cannot be created on this machine'
    environment=root
    epoch=$(git -C "$top" log -1 --format=%ct 2>/dev/null) || epoch=$(($(date +%s) / 86400 * 86400))
    mkdir -p "$folder"
    rm -rf "$folder"/_CPack_Packages "$source/build/packages"
    inside "
        export SOURCE_DATE_EPOCH=$epoch DEB_BUILD_MAINT_OPTIONS=hardening=+all
        export DEBFULLNAME=$(quote "${DEBFULLNAME:-}") DEBEMAIL=$(quote "${DEBEMAIL:-}")
        maps='$(printf -- '-ffile-prefix-map=%q=. ' "$engine" "$top" "$source" "$folder")' # the last match applies
        export CXXFLAGS=\"\$(dpkg-buildflags --get CPPFLAGS) \$(dpkg-buildflags --get CXXFLAGS) -g0 \$maps\"
        export LDFLAGS=\"\$(dpkg-buildflags --get LDFLAGS)\"
        umask 022
        cd $(quote "$source")
        { cmake --fresh --preset release -B $(quote "$folder") -DCMAKE_INSTALL_PREFIX=/usr -DLUMARIND_EXAMPLES=OFF &&
            cmake --build $(quote "$folder") && cd $(quote "$folder") && cpack -B ../packages; } >$(quote "$folder/package.log") 2>&1 ||
            { tail -n 40 $(quote "$folder/package.log") >&2; exit 1; }
        cd ../packages && rm -rf _CPack_Packages && sha256sum -- *.deb *.tar.xz >SHA256SUMS" || die 'packaging failed'
}

package_list() { # package_list [SOURCE]: prints the packages and their sizes
    (cd "${1:-$top}/build/packages" && wc -c -- *.deb *.tar.xz | awk '$2 != "total" { printf "%s  %.2f MB\n", $2, $1 / 1e6 }')
}
