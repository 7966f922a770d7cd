# Sourced by the scripts that run Win32 programs: one Wine prefix under
# build/, quiet, without the .NET and HTML installers, and with the null
# graphics driver so that windows, message boxes and metrics work with no
# display. Creates the prefix on first use.
CSK_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
export WINEPREFIX="${WINEPREFIX:-$CSK_ROOT/build/wineprefix}"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="mscoree,mshtml="
export WINEARCH=win32

csk_wine_prefix() {
  [ -f "$WINEPREFIX/.csk-ready" ] && return 0
  mkdir -p "$(dirname "$WINEPREFIX")"
  (
    flock 9
    [ -f "$WINEPREFIX/.csk-ready" ] && exit 0
    echo "wine: creating the prefix $WINEPREFIX" >&2
    rm -rf "$WINEPREFIX"
    wineboot -i </dev/null >/dev/null 2>&1
    wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f </dev/null >/dev/null 2>&1
    wineserver -w
    touch "$WINEPREFIX/.csk-ready"
  ) 9>"$WINEPREFIX.lock"
}

# Starts one persistent wineserver and the prefix's own services, with every
# standard stream redirected: a service that inherited the caller's pipe
# would keep whatever reads it (ctest, a pipe into tee) waiting forever.
# Drive T: is an empty folder beside the prefix at every start and stop, for
# the file system tests to fill. What Wine cannot make itself or reads only
# when it starts is made here: the folder link that Wine shows as a reparse
# point, and the drive's label and serial number.
csk_wine_drive() {
  local drive
  drive="$(dirname "$WINEPREFIX")/wine-drive-t"
  rm -rf "$drive"
  mkdir -p "$drive/LinkTarget"
  ln -s LinkTarget "$drive/LinkDir"
  printf 'MyLabel\n' >"$drive/.windows-label"
  printf '0A2B03C4\n' >"$drive/.windows-serial"
  ln -sfn "$drive" "$WINEPREFIX/dosdevices/t:"
}

csk_wine_start() {
  csk_wine_prefix
  csk_wine_drive
  wineserver -p </dev/null >/dev/null 2>&1 &
  wine wineboot </dev/null >/dev/null 2>&1 || true
  export CSK_WINE_STARTED=1
}

csk_wine_stop() {
  wineserver -k </dev/null >/dev/null 2>&1 || true
  wineserver -w </dev/null >/dev/null 2>&1 || true
  rm -rf "$(dirname "$WINEPREFIX")/wine-drive-t"
  mkdir -p "$(dirname "$WINEPREFIX")/wine-drive-t"
}
