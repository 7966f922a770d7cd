#!/usr/bin/env bash
# Installs what the two builds need: the i686 MinGW cross compiler, Wine with
# its 32-bit half, and the 32-bit multilib toolchain for the native build.
# Safe to run again: it does nothing when everything is already there.
set -euo pipefail

# The date and time formatting tests also run under a second host locale
# (Wine takes the user's locale from LANG), so glibc must have both built.
missing_locales=()
for wanted in en_US.UTF-8 ru_RU.UTF-8; do
  locale -a 2>/dev/null | grep -qix "${wanted%.UTF-8}.utf8" || missing_locales+=("$wanted")
done
if [ ${#missing_locales[@]} -gt 0 ]; then
  LOCALE_SUDO=""
  [ "$(id -u)" -eq 0 ] || LOCALE_SUDO="sudo"
  if ! command -v locale-gen >/dev/null 2>&1; then
    $LOCALE_SUDO apt-get update -qq || true
    DEBIAN_FRONTEND=noninteractive $LOCALE_SUDO apt-get install -y -qq --no-install-recommends locales >/dev/null
  fi
  for wanted in "${missing_locales[@]}"; do
    grep -qx "$wanted UTF-8" /etc/locale.gen 2>/dev/null ||
      echo "$wanted UTF-8" | $LOCALE_SUDO tee -a /etc/locale.gen >/dev/null
  done
  echo "install-deps: generating the locales ${missing_locales[*]}" >&2
  $LOCALE_SUDO locale-gen >/dev/null
fi

need=()
command -v i686-w64-mingw32-g++-posix >/dev/null 2>&1 || need+=(gcc-mingw-w64-i686 g++-mingw-w64-i686 mingw-w64-tools)
command -v wine >/dev/null 2>&1 || need+=(wine libwine-dev)
dpkg -s wine32:i386 >/dev/null 2>&1 || need+=(wine32:i386)
dpkg -s g++-multilib >/dev/null 2>&1 || need+=(gcc-multilib g++-multilib)
command -v cmake >/dev/null 2>&1 || need+=(cmake)
[ -d /usr/src/googletest ] || need+=(googletest)
command -v objdump >/dev/null 2>&1 || need+=(binutils)

if [ ${#need[@]} -eq 0 ]; then
  exit 0
fi

SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
echo "install-deps: installing ${need[*]}" >&2
if ! dpkg --print-foreign-architectures | grep -qx i386; then
  $SUDO dpkg --add-architecture i386
fi
export DEBIAN_FRONTEND=noninteractive
# An index that fails to download (the security suite has no i386 one) is
# not fatal: the packages come from the main suite.
$SUDO apt-get update -qq || echo "install-deps: apt-get update reported errors; going on" >&2
# The security suite carries no i386 index; pinning to bookworm keeps the
# 64-bit and 32-bit halves of Wine at one version.
$SUDO apt-get install -y -qq -t bookworm --no-install-recommends "${need[@]}" >/dev/null
