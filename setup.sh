#!/usr/bin/env bash
# Installs the Debian packages that building and testing Loxmere need, and
# only those that are missing. Sourced by run.sh and test.sh.
set -euo pipefail

loxmere_packages=(
    cmake g++ make git ccache
    qtbase5-dev qtbase5-private-dev qttools5-dev qttools5-dev-tools qttranslations5-l10n
    qt5-image-formats-plugins
    libimage-exiftool-perl fonts-freefont-ttf tzdata
    gpsbabel libkf5archive-dev
    desktop-file-utils appstream lintian dpkg-dev file
    libmarble-dev libmarblewidget-qt5-28 marble-plugins
)

loxmere_install_missing() {
    local missing=()
    local p
    for p in "${loxmere_packages[@]}" "$@"; do
        if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
            missing+=("$p")
        fi
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
}
