#!/bin/sh
# Installs what building, running and testing need on Debian 12; does nothing where all is there.
#
#   scripts/set-up.sh [run|test|fuzz|bench]
#
# `run` is what `make run` needs; the others add what their command needs.
set -eu

purpose=${1:-run}

packages="
  cmake g++ make ninja-build pkg-config
  qt6-base-dev qt6-wayland libxcb1-dev libfontconfig-dev libgl-dev
  nlohmann-json3-dev libcli11-dev libedit-dev
  dpkg-dev file
  fonts-dejavu-core"

case $purpose in
  test) packages="$packages
    libgtest-dev clang-format clang-tidy
    xvfb xdotool openbox x11-utils x11-xserver-utils xauth xclip
    at-spi2-core dbus-daemon weston
    locales" ;;
  fuzz) packages="$packages clang libclang-rt-14-dev" ;;
  bench) packages="$packages libbenchmark-dev libicu-dev libxcb-damage0-dev xvfb zenity yad kdialog" ;;
esac

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

is_installed() {
  dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed
}

missing=
for package in $packages; do
  is_installed "$package" || missing="$missing $package"
done
if [ -n "$missing" ]; then
  echo "Installing:$missing" >&2
  as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq >&2
  # shellcheck disable=SC2086 # a list of words
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -qq -y --no-install-recommends \
    $missing >&2
fi

# A locale whose code set is not UTF-8, for the tests of conversions.
if [ "$purpose" = test ]; then
  for locale in de_DE/ISO-8859-1 ja_JP/EUC-JP; do
    name=${locale%/*}.${locale#*/}
    known=$(locale -a | tr -d - | tr '[:upper:]' '[:lower:]')
    wanted=$(printf %s "$name" | tr -d - | tr '[:upper:]' '[:lower:]')
    if ! printf '%s\n' "$known" | grep -qx "$wanted"; then
      as_root localedef -i "${locale%/*}" -f "${locale#*/}" "$name"
    fi
  done
fi
