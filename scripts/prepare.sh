# What ./play and ./check share: installing packages and building. Sourced, from the root of
# the project.

# Packages that building and running the show takes, and those that the checks add (llvm for its
# symbolizer: leak suppressions go by function names).
SHOW_PACKAGES=(g++ cmake ninja-build pkg-config libgl-dev libegl-dev libglu1-mesa-dev
    freeglut3-dev libsdl2-dev libsdl2-mixer-dev libpng-dev libfreetype-dev libvorbis-dev
    nlohmann-json3-dev fonts-cherrybomb libgl1-mesa-dri libegl1 x11-utils)
CHECK_PACKAGES=(clang llvm clang-format clang-tidy libclang-rt-14-dev libgtest-dev libgmock-dev
    xvfb xauth xdotool openbox ffmpeg dpkg-dev desktop-file-utils file man-db
    libbenchmark-dev libglib2.0-bin shared-mime-info)

say() { printf '%s\n' "$*"; }

die() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# install PACKAGE...: installs those that are missing, as root or through sudo.
install() {
    command -v dpkg-query >/dev/null || die "this is not a Debian system; needed are: $*"
    local missing=() package
    for package in "$@"; do
        installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    say "Installing: ${missing[*]}"
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "neither root nor sudo: cannot install ${missing[*]}"
        root=(sudo)
    fi
    "${root[@]}" apt-get update -qq || say "The package lists could not be renewed; trying with the old ones."
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null || die "the packages could not be installed"
}

# build DIR [CMAKE-OPTION...]: configures and builds; nothing happens where nothing changed.
build() {
    local dir=$1
    shift
    local log
    log=$(mktemp)
    if ! cmake -S . -B "$dir" -G Ninja "$@" >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        die "the build in $dir could not be configured"
    fi
    rm -f "$log"
    cmake --build "$dir" || die "the build in $dir failed"
}
