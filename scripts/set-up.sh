#!/bin/sh
# Installs what building, running and testing need on Debian 12 and 13; does nothing if all is there,
# and says what is missing if it cannot install.
#
#   scripts/set-up.sh [run|test|fuzz|bench]
#
# `run` is what `make run` needs; the others add what their command needs.
set -eu

purpose=${1:-run}

packages="
  cmake g++ make ninja-build pkg-config
  qt6-base-dev qt6-wayland qt6-translations-l10n libxcb1-dev libfontconfig-dev libgl-dev
  nlohmann-json3-dev libcli11-dev libedit-dev libncurses-dev libgmp-dev libicu-dev
  dpkg-dev file
  fonts-dejavu-core"

case $purpose in
  test) packages="$packages
    libgtest-dev clang libclang-rt-dev lld llvm clang-format clang-tidy gcovr
    xvfb xdotool openbox x11-utils x11-xserver-utils xauth xclip
    at-spi2-core dbus-bin dbus-daemon orca weston
    libvterm-dev
    locales" ;;
  fuzz) packages="$packages clang libclang-rt-dev llvm libgtest-dev libvterm-dev" ;;
  bench) packages="$packages libbenchmark-dev sqlite3 libxcb-damage0-dev xvfb zenity yad kdialog
    dialog whiptail" ;;
esac

# Says what to do by hand, since this script cannot.
give_up() {
  echo "$1" >&2
  echo "What is needed goes by these names on Debian:" >&2
  printf '%s\n' "$2" | fmt >&2
  echo "When it is there: cmake -B build && cmake --build build && ctest --test-dir build" >&2
  exit 1
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
  # shellcheck disable=SC2086 # a list of words
  give_up "This system has no apt-get, so nothing can be installed from here." "$(echo $packages)"
fi

is_installed() {
  dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed
}

missing=
for package in $packages; do
  is_installed "$package" || missing="$missing $package"
done
if [ -n "$missing" ]; then
  if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
    give_up "Packages are missing, and only root installs them: apt-get install$missing" "$missing"
  fi
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
      if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
        give_up "The locale $name is missing, and only root makes it." locales
      fi
      as_root localedef -i "${locale%/*}" -f "${locale#*/}" "$name"
    fi
  done
fi
