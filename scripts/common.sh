# What run, test, bench and fuzz.sh share: installing what is missing, building a preset, running Windows programs.
# Sourced from the top folder of the tree.
set -euo pipefail

say() { printf '%s\n' "$*" >&2; }
die() {
    say "$*"
    exit 1
}

# ensure_packages NAME...: installs the Debian packages that are missing. Asks the package manager for nothing when
# none is.
ensure_packages() {
    local missing=()
    local name
    for name in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    say "Installing: ${missing[*]}"
    local sudo=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { say "Not root and no sudo: install these packages by hand."; return 1; }
        sudo=(sudo)
    fi
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq >&2 &&
        "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" \
            >&2
}

build_packages=(cmake ninja-build g++ libcli11-dev nlohmann-json3-dev googletest)
windows_packages=(g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64)
wine_packages=(wine64)
package_packages=(llvm lld python3)
test_packages=(clang-format clang-tidy cppcheck valgrind python3 xvfb imagemagick groff-base locales)

# build_preset PRESET [TARGET...]: configures once and builds; shows the output only when something fails.
build_preset() {
    local preset=$1
    shift
    local log=build/$preset.log
    mkdir -p build
    if [ ! -f "build/$preset/build.ninja" ]; then
        cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2; die "Configuring $preset failed."; }
    fi
    [ $# -gt 0 ] && set -- --target "$@"
    cmake --build --preset "$preset" "$@" >"$log" 2>&1 || { cat "$log" >&2; die "Building $preset failed."; }
}

find_wine() { command -v wine64 || { [ -x /usr/lib/wine/wine64 ] && echo /usr/lib/wine/wine64; }; }

# prepare_wine: a Wine prefix of the build folder's own. Fails when there is no Wine.
prepare_wine() {
    ensure_packages "${wine_packages[@]}" || return 1
    wine=$(find_wine) || return 1
    export WINEPREFIX=$PWD/build/wine WINEARCH=win64 WINEDEBUG=-all
    mkdir -p "$WINEPREFIX"
    [ -f "$WINEPREFIX/system.reg" ] || "$wine" cmd /c exit >/dev/null 2>&1
}

# windows_path PATH: a path of this system as a Windows program under Wine names it.
windows_path() { printf 'Z:%s' "$(realpath -m "$1")"; }
