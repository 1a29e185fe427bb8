# Shared by the packaging tests (sourced): failing with a message, the files
# an installation must hold, and the start-up check.

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

need() {
    command -v "$1" >/dev/null || fail "$1 not found (install the Debian package $2)"
}

# The register's storage module, under the installation prefix, and where
# the program looks for it from its own folder (registro/CMakeLists.txt).
: "${QUADRIVO_MODULI_DIR:?set by tests/packaging/CMakeLists.txt}"
: "${QUADRIVO_MODULI_DAL_PROGRAMMA:?set by tests/packaging/CMakeLists.txt}"
modulo_archivio=$QUADRIVO_MODULI_DIR/libquadrivo_archivio.so

# expected_files <app id> <icon size>...: the files under the installation
# prefix, sorted.
expected_files() {
    local id=$1 size
    shift
    {
        echo bin/Quadrivo
        echo "$modulo_archivio"
        echo "share/applications/$id.desktop"
        echo "share/metainfo/$id.metainfo.xml"
        echo share/man/man1/Quadrivo.1.gz
        echo share/doc/quadrivo/copyright
        echo share/doc/quadrivo/changelog.Debian.gz
        echo "share/icons/hicolor/scalable/apps/$id.svg"
        for size in "$@"; do
            echo "share/icons/hicolor/${size}x${size}/apps/$id.png"
        done
    } | LC_ALL=C sort
}

# check_file_list <what> <app id> <icon size>... with the found files, one per
# line, on stdin.
check_file_list() {
    local what=$1
    shift
    diff -u <(expected_files "$@") <(LC_ALL=C sort) ||
        fail "$what: the files differ from the expected ones (- expected, + found)"
}

# png_size <file>: "<width>x<height>" from the PNG header.
png_size() {
    local sig
    sig=$(od -An -tx1 -N16 "$1" | tr -d ' \n')
    [ "$sig" = 89504e470d0a1a0a0000000d49484452 ] || { echo "not a PNG"; return; }
    local b=($(od -An -tu1 -j16 -N8 "$1"))
    echo "$(( (b[0] << 24) | (b[1] << 16) | (b[2] << 8) | b[3] ))x$(( (b[4] << 24) | (b[5] << 16) | (b[6] << 8) | b[7] ))"
}

# check_tree <prefix> <app id> <icon size>...: the program is executable, the
# desktop entry names it and the icon, each PNG has its size, the SVG is one.
check_tree() {
    local prefix=$1 id=$2 size got
    shift 2
    [ -x "$prefix/bin/Quadrivo" ] || fail "$prefix/bin/Quadrivo is not executable"
    # The program finds its module from its own folder, and the module's
    # libraries are all there.
    local modulo=$prefix/bin/$QUADRIVO_MODULI_DAL_PROGRAMMA/${modulo_archivio##*/}
    [ -f "$modulo" ] || fail "the register's module is not at $modulo"
    local librerie
    librerie=$(ldd "$modulo") || fail "ldd cannot read $modulo"
    ! grep -q "not found" <<<"$librerie" || fail "the register's module lacks libraries: $librerie"
    grep -q "libQt6Sql" <<<"$librerie" || fail "the register's module does not link Qt's SQL library"
    local desktop=$prefix/share/applications/$id.desktop
    grep -qx "Exec=Quadrivo" "$desktop" || fail "$desktop: no Exec=Quadrivo"
    grep -qx "Icon=$id" "$desktop" || fail "$desktop: no Icon=$id"
    grep -q "<id>$id</id>" "$prefix/share/metainfo/$id.metainfo.xml" ||
        fail "the metainfo's id is not $id"
    for size in "$@"; do
        got=$(png_size "$prefix/share/icons/hicolor/${size}x${size}/apps/$id.png")
        [ "$got" = "${size}x${size}" ] || fail "the ${size}x${size} icon is $got"
    done
    grep -q '<svg ' "$prefix/share/icons/hicolor/scalable/apps/$id.svg" ||
        fail "the scalable icon is not an SVG"
}

# check_starts <program> <scratch dir>: the program opens its start screen
# offscreen and closes by itself with status 0. It runs in the scratch
# directory because it writes its settings file where it is started.
check_starts() {
    local program=$1 dir=$2 status=0
    mkdir -p "$dir/run" && chmod 700 "$dir/run"
    (cd "$dir" && QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$dir/run" \
        timeout -k 5 20 "$program" --prova-avvio) || status=$?
    [ "$status" -ne 124 ] || fail "$program --prova-avvio did not end within 20 s"
    [ "$status" -eq 0 ] || fail "$program --prova-avvio ended with status $status"
}

# check_manual_and_options <prefix> <version>: the manual page renders without
# a warning and names the options and files; the program answers --help and
# --version without a display and ends with status 0.
check_manual_and_options() {
    local prefix=$1 version=$2 page out
    need man man-db
    page=$prefix/share/man/man1/Quadrivo.1.gz
    [ -f "$page" ] || fail "no manual page $page"
    out=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l "$page" 2>&1 >/dev/null) ||
        fail "man cannot render $page"
    [ -z "$out" ] || fail "man warns about $page: $out"
    out=$(LC_ALL=C.UTF-8 MANWIDTH=200 man -E UTF-8 -l "$page" 2>/dev/null)
    for text in "QUADRIVO(1)" "--help" "--version" "--prova-avvio" "Quadrivo.dat" \
                "Cartella dei file PDF" "Stampa su file PDF"; do
        grep -qF -- "$text" <<<"$out" || fail "the manual page does not mention $text"
    done

    out=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "$prefix/bin/Quadrivo" --version) ||
        fail "Quadrivo --version ended with status $?"
    [ "$out" = "Quadrivo $version" ] || fail "Quadrivo --version printed '$out'"
    out=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "$prefix/bin/Quadrivo" --help) ||
        fail "Quadrivo --help ended with status $?"
    for text in "Uso: Quadrivo" "--help" "--version" "--prova-avvio"; do
        grep -qF -- "$text" <<<"$out" || fail "Quadrivo --help does not mention $text"
    done
    local status=0
    out=$(QT_QPA_PLATFORM=offscreen "$prefix/bin/Quadrivo" --sconosciuta 2>&1) || status=$?
    [ "$status" -eq 2 ] || fail "an unknown option ended with status $status, not 2"
    grep -qF "opzione non riconosciuta: '--sconosciuta'" <<<"$out" ||
        fail "an unknown option was not named: $out"
}
