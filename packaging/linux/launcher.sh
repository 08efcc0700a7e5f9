#!/bin/sh
# SPDX-License-Identifier: MIT
# Starts the installed program of this script's name from a folder of the user's own.
#
# The program keeps its settings, the configuration of each relay box and its map beside its executable. Where a package
# puts that only root may write, so each user gets a copy of the executable, and with it settings and a map of his own:
#
#   ${XDG_DATA_HOME:-~/.local/share}/<name of the program>/
#
# The executable is copied again whenever the installed one differs. The map is copied only where there is none: it may
# be the user's.
set -eu

script=$(readlink -f "$0")
name=${script##*/}
installed=${script%/bin/*}/lib/vextral-remote-control
case ${XDG_DATA_HOME:-} in
/*) own=$XDG_DATA_HOME/$name ;;
*) own=$HOME/.local/share/$name ;;
esac

# A running program keeps the file it was started from, and a broken copy never stands under the program's name.
copy() {
    cp "$1" "$2.$$" && mv -f "$2.$$" "$2" && return
    rm -f "$2.$$"
    return 1
}

refresh() {
    mkdir -p "$own" || return
    cmp -s "$installed/$name" "$own/$name" || copy "$installed/$name" "$own/$name" || return
    [ -e "$own/AzimuthalMap.png" ] || copy "$installed/AzimuthalMap.png" "$own/AzimuthalMap.png" || return
    # Not so on a file system that runs no programs.
    [ -x "$own/$name" ]
}

if refresh; then
    exec "$own/$name" "$@"
fi
echo "$name: $own cannot hold the program; what you set will be forgotten." >&2
exec "$installed/$name" "$@"
