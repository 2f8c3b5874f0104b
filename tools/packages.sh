# Debian packages by name, for ./run and ./test. Sourced, not run.

# To build, and to show the notch on a screen of its own where there is none.
run_packages=(
    g++ cmake ninja-build pkg-config
    libboost1.81-dev libicu-dev
    qt6-base-dev libxcb1-dev libxcb-shape0-dev libxcb-xfixes0-dev libxcb-xinput-dev
    libxcb-ewmh-dev libxcb-res0-dev libxcb-xtest0-dev
    libglib2.0-dev libsystemd-dev at-spi2-core dbus fonts-noto-cjk
    xvfb openbox picom x11-utils imagemagick
    libgtest-dev libgmock-dev libbenchmark-dev librapidcheck-dev
)

# What only the tests need beyond these.
test_packages=(clang-format clang-tidy x11-xserver-utils libnss-wrapper gir1.2-gtk-3.0 python3-gi)

# What only the Debian package needs: to find its dependencies, and to be checked.
package_packages=(dpkg-dev file lintian desktop-file-utils appstream fakeroot)

# What only the fuzz targets need beyond these.
fuzz_packages=(clang libclang-rt-14-dev)

# ensure_packages NAME…: installs those that are missing, and says so.
ensure_packages() {
    local missing=()
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "Missing packages, and no sudo to install them: ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        echo "The packages could not be installed; the whole output is in $log." >&2
        return 1
    fi
    rm -f "$log"
}
