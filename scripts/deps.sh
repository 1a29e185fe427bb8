# Sourced by the build scripts: installs the Debian packages Quadrivo needs,
# but only those that are missing, so a second run asks apt for nothing, and
# configures the build directory the first time.
QUADRIVO_PACKAGES=(
    g++ cmake ninja-build ccache mold
    qt6-base-dev
    fonts-liberation2 fonts-dejavu-core fontconfig
    # printing: lp for CUPS queues; a private cupsd with a PDF pass-through
    # queue (pdftopdf, gziptoany) and poppler's tools to read printouts back
    cups-client cups-daemon cups-core-drivers cups-filters-core-drivers poppler-utils
    # ipptool: the printable area of a queue
    cups-ipp-utils
    xvfb xdotool
    # the drill's chime: plain ALSA
    libasound2-dev
    # packaging: checks of the desktop entry and metainfo, the .deb's dependencies
    desktop-file-utils appstream dpkg-dev
    # held keys on X11: XKB detectable auto-repeat through xcb
    pkgconf libxcb-xkb-dev
    # Qt's own Italian for its standard dialogs; the man page's and the
    # package's checks; the accessibility tree read as a screen reader does
    qt6-translations-l10n man-db lintian
    at-spi2-core dbus python3-pyatspi
    # the pupils' register: Qt SQL's SQLite and PostgreSQL drivers, and a
    # PostgreSQL server the tests start privately
    libqt6sql6-sqlite libqt6sql6-psql postgresql
    # the start-up benchmark counts instructions under callgrind
    valgrind
    # reading aloud: espeak-ng's library (loaded at first use; the header at
    # build time) and its Italian voice; the high-readability font
    libespeak-ng1 libespeak-ng-dev espeak-ng-data fonts-opendyslexic
)

ensure_packages() {
    local missing=()
    for p in "${QUADRIVO_PACKAGES[@]}" "$@"; do
        if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
            missing+=("$p")
        fi
    done
    if [ ${#missing[@]} -gt 0 ]; then
        echo "Installing: ${missing[*]}"
        local sudo=""
        [ "$(id -u)" -eq 0 ] || sudo="sudo"
        $sudo apt-get update -qq
        DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
    fi
}

# ccache shares objects between clones and build directories only when paths
# are taken relative to the clone, and reuses compiles that include a
# precompiled header only with this sloppiness.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$PWD}
export CCACHE_NOHASHDIR=${CCACHE_NOHASHDIR:-1}
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}
# A miss is compiled straight away, without a preprocessor run first to look
# for a match under another name: that run cost a sixth of a cold build.
export CCACHE_DEPEND=${CCACHE_DEPEND:-1}
# Every compile includes a precompiled header of about 150 MB; its hash is
# worked out once, not once a file.
export CCACHE_INODECACHE=${CCACHE_INODECACHE:-1}

# Configures $build_dir (default build/) with Ninja when it is not yet;
# extra arguments go to cmake.
ensure_build_dir() {
    build_dir=${BUILD_DIR:-build}
    if [ ! -f "$build_dir/build.ninja" ]; then
        cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=${BUILD_TYPE:-RelWithDebInfo} "$@"
    fi
}
