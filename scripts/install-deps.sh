#!/usr/bin/env bash
# Installs what the build needs: the i686 MinGW cross compiler (Win32 thread
# model), Wine with its 32-bit half, CMake, and GoogleTest's sources, which
# the cross compiler builds for the tests. Where the
# kernel runs no 32-bit x86 code, it also makes i386 programs run through
# qemu-user (version 10, from bookworm-backports) registered with binfmt_misc,
# and adds the 64-bit wineserver so that only the Win32 programs are emulated.
# Safe to run again: it does nothing, quietly, when everything is already there.
set -euo pipefail

SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
say() { echo "install-deps: $*" >&2; }

apt_updated=0
apt_update() {
  [ $apt_updated -eq 1 ] && return 0
  # An index that fails to download (the security suite has no i386 one) is
  # not fatal: the packages come from the main suite.
  $SUDO apt-get update -qq || say "apt-get update reported errors; going on"
  apt_updated=1
}

# apt_install SUITE PACKAGE...: the packages from that suite. Pinning Wine to
# bookworm keeps its 64-bit and 32-bit halves at one version.
apt_install() {
  local suite=$1
  shift
  say "installing $*"
  apt_update
  $SUDO apt-get install -y -qq -t "$suite" --no-install-recommends "$@" >/dev/null
}

# The date and time formatting tests also run under a second host locale
# (Wine takes the user's locale from LANG), so glibc must have both built.
missing_locales=()
for wanted in en_US.UTF-8 ru_RU.UTF-8; do
  locale -a 2>/dev/null | grep -qix "${wanted%.UTF-8}.utf8" || missing_locales+=("$wanted")
done
if [ ${#missing_locales[@]} -gt 0 ]; then
  command -v locale-gen >/dev/null 2>&1 || apt_install bookworm locales
  for wanted in "${missing_locales[@]}"; do
    grep -qx "$wanted UTF-8" /etc/locale.gen 2>/dev/null ||
      echo "$wanted UTF-8" | $SUDO tee -a /etc/locale.gen >/dev/null
  done
  say "generating the locales ${missing_locales[*]}"
  $SUDO locale-gen >/dev/null
fi

need=()
command -v i686-w64-mingw32-g++-win32 >/dev/null 2>&1 || need+=(gcc-mingw-w64-i686-win32 g++-mingw-w64-i686-win32 mingw-w64-tools)
command -v wine >/dev/null 2>&1 || need+=(wine)
dpkg -s wine32:i386 >/dev/null 2>&1 || need+=(wine32:i386)
command -v cmake >/dev/null 2>&1 || need+=(cmake)
[ -d /usr/src/googletest ] || need+=(googletest)
command -v objdump >/dev/null 2>&1 || need+=(binutils)
command -v python3 >/dev/null 2>&1 || need+=(python3)
command -v i686-w64-mingw32-widl >/dev/null 2>&1 || need+=(mingw-w64-tools)
if [ ${#need[@]} -gt 0 ]; then
  dpkg --print-foreign-architectures | grep -qx i386 || $SUDO dpkg --add-architecture i386
  apt_install bookworm "${need[@]}"
fi

# ---- Can this host run i386 code? ------------------------------------------
# A five-instruction static i386 program (exit(0) through int 0x80), made with
# the host's own binutils: no 32-bit libraries are needed to build it.
probe_dir=$(mktemp -d)
trap 'rm -rf "$probe_dir"' EXIT
printf '.globl _start\n_start:\n movl $1, %%eax\n xorl %%ebx, %%ebx\n int $0x80\n' >"$probe_dir/probe.s"
as --32 -o "$probe_dir/probe.o" "$probe_dir/probe.s"
ld -m elf_i386 -o "$probe_dir/probe" "$probe_dir/probe.o"
runs_i386() { "$probe_dir/probe" 2>/dev/null; }

binfmt=/proc/sys/fs/binfmt_misc
entry=$binfmt/qemu-i386
qemu=/usr/bin/qemu-i386-static
stamp=/run/csk-qemu-i386.stamp

# The version of qemu-user that Wine needs: 7.2 takes about 50 s of CPU to
# start each Wine process.
qemu_is_current() {
  [ -x "$qemu" ] || return 1
  local major
  major=$("$qemu" --version 2>/dev/null | sed -n 's/^qemu-i386 version \([0-9]*\).*/\1/p')
  [ -n "$major" ] && [ "$major" -ge 10 ]
}

# With the F flag the kernel opens the interpreter once, at registration; the
# stamp records which file that was, so that an upgraded qemu is registered
# again.
registration_is_current() {
  [ -f "$entry" ] && grep -qx enabled "$entry" && grep -qx "interpreter $qemu" "$entry" &&
    grep -q '^flags:.*F' "$entry" && [ "$(cat "$stamp" 2>/dev/null)" = "$(stat -Lc '%d:%i:%Y' "$qemu")" ]
}

if [ ! -f "$entry" ] && runs_i386; then
  exit 0 # the kernel runs i386 code itself: nothing more is needed
fi

if ! qemu_is_current; then
  if ! apt-cache policy 2>/dev/null | grep -q 'bookworm-backports'; then
    say "adding the bookworm-backports suite"
    echo "deb http://deb.debian.org/debian bookworm-backports main" |
      $SUDO tee /etc/apt/sources.list.d/csk-bookworm-backports.list >/dev/null
    apt_updated=0
  fi
  apt_install bookworm-backports qemu-user-static
  qemu_is_current || { say "qemu-user-static 10 or later is needed to run Wine on this host; apt installed $("$qemu" --version | head -1)"; exit 1; }
fi
dpkg -s wine64 >/dev/null 2>&1 || apt_install bookworm wine64

if [ ! -f "$binfmt/register" ]; then
  $SUDO mount -t binfmt_misc binfmt_misc "$binfmt" 2>/dev/null ||
    { say "this host runs no i386 code and binfmt_misc cannot be mounted at $binfmt, so Wine cannot run here"; exit 1; }
fi
if ! registration_is_current; then
  say "registering i386 programs with $qemu"
  [ -f "$entry" ] && echo -1 | $SUDO tee "$entry" >/dev/null
  # The ELF header of an i386 executable or shared object, and its mask.
  magic='\x7fELF\x01\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\x03\x00'
  mask='\xff\xff\xff\xff\xff\xfe\xfe\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff'
  printf '%s\n' ":qemu-i386:M::$magic:$mask:$qemu:F" | $SUDO tee "$binfmt/register" >/dev/null
  stat -Lc '%d:%i:%Y' "$qemu" | $SUDO tee "$stamp" >/dev/null
fi
runs_i386 || { say "i386 programs still do not run after registering $qemu with binfmt_misc"; exit 1; }
