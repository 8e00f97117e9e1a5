#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs every Debian package that building, testing or running the console needs and that is
# missing. Uses sudo where the caller is not root. Does nothing, and needs no network, where all
# of them are there.
set -euo pipefail

packages=(
    # compiler and build
    g++ cmake ninja-build ccache pkg-config git
    # libraries
    qt6-base-dev qt6-svg-dev qt6-tools-dev qt6-charts-dev libqt6opengl6-dev
    libsqlite3-dev libtomlplusplus-dev libxlsxwriter-dev libzip-dev zlib1g-dev libcups2-dev
    # running: fonts, pictures, the help file's reader, the printers' client
    fonts-dejavu-core qt6-qpa-plugins libqt6sql6-sqlite cups-client
    # tests, benches, fuzzing, checks
    libgtest-dev libgmock-dev poppler-utils tidy unzip
    clang clang-format clang-tidy cppcheck libclang-rt-dev
    # a display where there is none, a hand and an eye for it
    xvfb xauth openbox xdotool x11-utils imagemagick sqlite3
)

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

elevate=()
[ "$(id -u)" -eq 0 ] || elevate=(sudo)
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
# A package list that is missing or old is fetched anew, and only then.
if ! "${elevate[@]}" apt-get install --yes --no-install-recommends "${missing[@]}"; then
    "${elevate[@]}" apt-get update
    "${elevate[@]}" apt-get install --yes --no-install-recommends "${missing[@]}"
fi
