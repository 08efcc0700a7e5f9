# SPDX-License-Identifier: MIT
# Sourced by packaging/windows/build: builds a static Qt for Windows once, into the user's cache.

qt_version=5.15.8
qt_modules=(qtbase qtsvg qtserialport) # in the order of their building
qt_options=(
    -opensource -confirm-license -release -static -static-runtime
    -xplatform win32-g++ -device-option CROSS_COMPILE=x86_64-w64-mingw32-
    -no-opengl -no-dbus -no-openssl -no-icu
    -qt-pcre -qt-zlib -qt-libpng -qt-libjpeg -qt-freetype -qt-harfbuzz
    -no-feature-sql -no-feature-concurrent -no-feature-xml
    # These two do not compile with Debian's MinGW.
    -no-feature-tabletevent -no-feature-direct2d
    -nomake examples -nomake tests)
# Whose licences go with the programs: what these options take from qtbase/src/3rdparty.
qt_libraries=(double-conversion easing freetype harfbuzz-ng icc libjpeg libpng md4c pcre2 pixman rfc6234 sha3 tinycbor
    zlib)
qt_packages=(debian-archive-keyring dpkg-dev g++ g++-mingw-w64-x86-64-posix make perl xz-utils)
debian_mirror=${VEXTRAL_DEBIAN_MIRROR:-http://deb.debian.org}
cache=${XDG_CACHE_HOME:-$HOME/.cache}/vextral-remote-control

# Whatever changes the built Qt changes its folder's name.
qt_folder() {
    local compiler
    compiler=$(x86_64-w64-mingw32-g++-posix -dumpfullversion)
    echo "$cache/qt-$qt_version-windows-$(echo "$compiler ${qt_options[*]}" | sha256sum | cut -c1-8)"
}

qt_source_name() {
    echo "$1-opensource-src"
}

# apt_source ARGUMENT...: apt-get with sources list and state of its own, in the folder $work/apt.
apt_source() {
    local apt=$work/apt
    mkdir -p "$apt"/{state/lists/partial,cache/archives/partial}
    cat >"$apt/sources.list" <<END
deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $debian_mirror/debian bookworm main
deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $debian_mirror/debian-security bookworm-security main
END
    apt-get -q -o "Dir::Etc::SourceList=$apt/sources.list" -o Dir::Etc::SourceParts=- \
        -o "Dir::State=$apt/state" -o "Dir::Cache=$apt/cache" -o APT::Sandbox::User=root "$@"
}

# Unpacks the sources of a module as $work/MODULE: the given archive, or else those of Debian with its security fixes.
fetch_module() {
    local module=$1 name folder archive
    name=$(qt_source_name "$module")
    [ -e "$work/$module" ] && return 0

    folder=$work/fetched-$module
    rm -rf "$folder"
    mkdir -p "$folder/source"
    archive=$(ls "${source_archives:-/nonexistent}/${name}_$qt_version"*.orig.tar.xz 2>/dev/null | head -n 1)
    if [ -n "$archive" ]; then
        tar -xf "$archive" -C "$folder/source" --strip-components 1 || return 1
        basename "$archive" >"$work/$module.source"
    else
        rmdir "$folder/source"
        (cd "$folder" && apt_source source --download-only "$name") || return 1
        dpkg-source --no-check -x "$folder/${name}_$qt_version"*.dsc "$folder/source" || return 1
        sed -n '1s/^\([^ ]*\) (\(.*\)).*/\1 \2/p' "$folder/source/debian/changelog" >"$work/$module.source"
    fi
    mv "$folder/source" "$work/$module"
    rm -rf "$folder"
}

fetch_qt() {
    local module missing=()
    apt_source update || echo "Debian's list of sources could not be fetched from $debian_mirror." >&2
    for module in "${qt_modules[@]}"; do
        echo "Fetching $module $qt_version"
        fetch_module "$module" || missing+=("$(qt_source_name "$module")_$qt_version.orig.tar.xz")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    echo "These sources of Qt $qt_version could not be fetched from $debian_mirror: ${missing[*]}" >&2
    echo "Put the archives into a folder and give it: packaging/windows/build --qt-sources FOLDER" >&2
    return 1
}

# step NAME COMMAND...: once, also when an interrupted build is taken up again.
step() {
    local done=$work/$1.done
    shift
    [ -e "$done" ] && return 0
    "$@" && touch "$done"
}

build_qtbase() {
    mkdir -p "$work/build-qtbase" && cd "$work/build-qtbase" || return 1
    [ -e Makefile ] || "$work/qtbase/configure" -prefix "$work/qt" "${qt_options[@]}" || return 1
    make -j "$jobs" && make install
}

build_module() {
    # The archives as Qt publishes them have no include folder; its own tool makes it.
    [ -d "$work/$1/include" ] || "$work/qt/bin/syncqt.pl" -version "$qt_version" -outdir "$work/$1" "$work/$1" || return 1
    mkdir -p "$work/build-$1" && cd "$work/build-$1" &&
        "$work/qt/bin/qmake" "$work/$1" && make -j "$jobs" && make install
}

# What the packages need beside the libraries: Qt's licence, those of the libraries inside it, and what it was built from.
describe_qt() {
    local licences=$work/qt/licences library licence module
    mkdir -p "$licences"
    cp "$work/qtbase/LICENSE.LGPL3" "$licences/LICENSE.LGPLv3.txt"
    cp "$work/qtbase/LICENSE.GPL3" "$licences/LICENSE.GPLv3.txt"
    for library in "${qt_libraries[@]}"; do
        for licence in "$work/qtbase/src/3rdparty/$library"/*{LICEN,COPYING}*; do
            [ ! -f "$licence" ] || cp "$licence" "$licences/$library-$(basename "$licence" .txt).txt"
        done
    done
    cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$licences/mingw-w64.txt"
    for module in "${qt_modules[@]}"; do
        cat "$work/$module.source"
    done >"$work/qt/sources.txt"
}

# Debian lets the user choose what x86_64-w64-mingw32-g++ is; C++'s threads need the posix one.
choose_compiler() {
    local tool
    mkdir -p "$work/tools"
    for tool in gcc g++; do
        ln -sf "$(command -v x86_64-w64-mingw32-$tool-posix)" "$work/tools/x86_64-w64-mingw32-$tool"
    done
    PATH=$work/tools:$PATH
}

build_qt() {
    choose_compiler
    # A compiler that was killed leaves empty files, which make takes for finished ones.
    find "$work" -name '*.o' -empty -delete
    step qtbase build_qtbase && step qtsvg build_module qtsvg && step qtserialport build_module qtserialport &&
        step description describe_qt
}

# provide_qt [SOURCE_ARCHIVES]: sets qt to the folder of the static Qt, built if it is not in the cache yet.
provide_qt() {
    local source_archives=${1:-} work jobs log
    install_missing "${qt_packages[@]}"
    qt=$(qt_folder)
    [ -d "$qt" ] && return 0

    mkdir -p "$cache"
    exec 9>"$qt.lock"
    flock 9 # another run may be building it
    if [ ! -d "$qt" ]; then
        work=$qt.building
        log=$qt.log
        jobs=$(nproc)
        mkdir -p "$work"
        echo "Building Qt $qt_version for Windows into $qt; this takes a quarter of an hour once. Progress: $log"
        (fetch_qt && build_qt) >>"$log" 2>&1 9>&- || {
            tail -n 30 "$log" >&2
            echo "Qt could not be built. The whole text is in $log; start again to go on from there." >&2
            return 1
        }
        mv "$work/qt" "$qt"
        rm -rf "$work" "$log"
    fi
    exec 9>&-
    rm -f "$qt.lock"
}
