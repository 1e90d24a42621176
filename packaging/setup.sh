# Sourced by run.sh, test.sh, package.sh and .ci/run: installs the Debian packages that are missing. bash.

packages_build="cmake ninja-build g++ qt6-base-dev libqt6svg6-dev libgl1-mesa-dev libx11-dev libasound2-dev python3 python3-fonttools"
packages_manual="weasyprint python3-markdown python3-pikepdf python3-pil python3-fonttools fonts-liberation2"
packages_display="xvfb xauth openbox xdotool imagemagick x11-utils x11-apps"
packages_tests="gdb dbus-daemon clang zsh fish groff python3-jsonschema at-spi2-core python3-pyatspi"
packages_manual_checks="hunspell hunspell-en-gb hunspell-de-de poppler-utils python3-pikepdf"
packages_desktop="x11-xserver-utils weston xwayland sway mutter qt6-wayland qt6-gtk-platformtheme python3-gi"
packages_system="qemu-system-x86 busybox-static cpio kmod alsa-utils dbus-daemon systemd udev"
packages_checks="clang-format"
packages_package="dpkg-dev file rpm xz-utils"
packages_package_checks="appstream desktop-file-utils libxml2-utils shared-mime-info libglib2.0-bin man-db groff file"
packages_package_run="lintian mmdebstrap"
packages_bench="libxdamage-dev libxtst-dev"
packages_analysis="clang-tidy clazy cppcheck"
packages_clang="clang libclang-rt-dev llvm"

# need_packages LIST...: every package named in the lists is there afterwards, or the script ends with a clear line.
need_packages() {
    local wanted="$*" missing=""
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "This script installs packages on Debian 12 only. On other distributions, install what these contain" >&2
        echo "and build with cmake --preset release: $wanted" >&2
        exit 1
    fi
    local package
    for package in $wanted; do
        if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
            missing="$missing $package"
        fi
    done
    [ -n "$missing" ] || return 0

    local as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing, and there is no sudo to install them with:$missing" >&2
            exit 1
        fi
        as_root=sudo
    fi
    echo "Installing$missing"
    $as_root apt-get update -qq
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# build_preset NAME [TARGET...]: configures one preset and builds these targets, or everything.
build_preset() {
    local preset="$1"
    shift
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" ${1:+--target "$@"}
}
