# Sourced by the other scripts: installs missing packages and configures a preset.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# install_packages [FILE]: installs the packages of that list in scripts/ that dpkg doesn't know as
# installed; packages.txt, with the locale of the tests, if none is named.
install_packages() {
    local list=${1:-packages.txt} wanted missing=() package
    wanted=$(grep -v '^#' "$root/scripts/$list")
    for package in $wanted; do
        if ! dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed'; then
            missing+=("$package")
        fi
    done
    if [ ${#missing[@]} -gt 0 ]; then
        local as_root=()
        if [ "$(id -u)" -ne 0 ]; then
            command -v sudo >/dev/null || { echo "install first: ${missing[*]}" >&2; exit 1; }
            as_root=(sudo)
        fi
        echo "installing: ${missing[*]}"
        "${as_root[@]}" apt-get -q update
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get -q -y install --no-install-recommends "${missing[@]}"
    fi
    [ "$list" != packages.txt ] || make_comma_locale
}

# The tests run once in a locale with a decimal comma; it has to exist.
make_comma_locale() {
    if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
        local as_root=()
        [ "$(id -u)" -eq 0 ] || as_root=(sudo)
        "${as_root[@]}" localedef -i de_DE -f UTF-8 de_DE.UTF-8
    fi
}

# configure PRESET [CMAKE OPTIONS...], build PRESET [TARGETS...]
configure() {
    local preset=$1
    shift
    cmake --preset "$preset" "$@" >"$root/build/configure-$preset.log" 2>&1 || {
        cat "$root/build/configure-$preset.log" >&2
        return 1
    }
}

build() {
    local preset=$1 log=$root/build/build-$1.log
    shift
    echo "building ($preset) ..."
    cmake --build --preset "$preset" ${@:+--target "$@"} >"$log" 2>&1 || {
        grep -E -A 12 'FAILED|error:' "$log" | head -n 100 >&2
        echo "the build failed, see $log" >&2
        return 1
    }
}

cd "$root" || exit 1
mkdir -p build
