# SPDX-License-Identifier: MIT
# Sourced: a Windows of its own, on Wine. What runs there needs a display (tools/display.sh).

wine_packages=(wine64 fonts-wine unzip "${display_packages[@]}")
# No questions about Wine's own browser and .NET, and nothing put into the menus of this desktop.
export WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='

# Wine opens files whose names have letters beyond ASCII only where the locale is UTF-8.
export LC_ALL=C.UTF-8

wine() {
    timeout 120 /usr/lib/wine/wine64 "$@"
}

# open_windows FOLDER: makes drive C and the registry there, which takes some seconds.
open_windows() {
    export WINEPREFIX=$1
    # Debian's Wine does not find its own fonts, and takes any other for the captions.
    mkdir -p "$1/drive_c/windows/Fonts"
    cp /usr/share/wine/fonts/tahoma*.ttf "$1/drive_c/windows/Fonts"
    timeout 300 /usr/lib/wine/wine64 wineboot -i >/dev/null 2>&1
    # Windows smooths its fonts, Wine does not by itself.
    wine reg add 'HKCU\Control Panel\Desktop' /v FontSmoothing /d 2 /f >/dev/null
    wine reg add 'HKCU\Control Panel\Desktop' /v FontSmoothingType /t REG_DWORD /d 2 /f >/dev/null
}

close_windows() {
    [ -z "${WINEPREFIX:-}" ] || /usr/lib/wine/wineserver64 -k 2>/dev/null || true
}
