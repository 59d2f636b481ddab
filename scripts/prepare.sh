# What ./play and ./check share: installing packages and building. Sourced, from the root of
# the project.

# Packages that building and running the show takes, and those that the checks add (llvm for its
# symbolizer: leak suppressions go by function names).
SHOW_PACKAGES=(g++ cmake ninja-build pkg-config libgl-dev libegl-dev libglu1-mesa-dev
    freeglut3-dev libsdl2-dev libsdl2-mixer-dev libpng-dev libfreetype-dev libvorbis-dev
    nlohmann-json3-dev libtinygltf-dev libtinyobjloader-dev libstb-dev libtomlplusplus-dev
    libutf8proc-dev libexif-dev fonts-cherrybomb libgl1-mesa-dri libegl1 x11-utils)
CHECK_PACKAGES=(clang llvm clang-format clang-tidy libclang-rt-dev libgtest-dev libgmock-dev
    xvfb xauth xdotool openbox ffmpeg dpkg-dev desktop-file-utils file lintian man-db
    libbenchmark-dev libglib2.0-bin shared-mime-info)

# What the page takes on top (web/build).
WEB_PACKAGES=(emscripten nodejs ffmpeg fonttools python3-brotli)

# What its tests take on top of that and of the other checks (tests/web/run).
BROWSER_PACKAGES=(chromium firefox-esr xvfb xauth)

say() { printf '%s\n' "$*"; }

die() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# refuse OPTION: a command line that makes no sense.
refuse() {
    printf '%s: unknown option %s; ./%s --help says how\n' "$(basename "$0")" "$1" "$(basename "$0")" >&2
    exit 2
}

installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# Reads what apt says with APT::Status-Fd and shows how far it is: in place on a terminal, else at
# every quarter.
show_progress() {
    local kind percent rest doing shown=
    while IFS=: read -r kind rest percent rest; do
        case $kind in
        dlstatus) doing=downloading ;;
        pmstatus) doing=installing ;;
        *) continue ;;
        esac
        percent=${percent%%.*}
        [ -t 1 ] || percent=$((percent / 25 * 25))
        [ "$shown" != "$doing $percent" ] || continue
        shown="$doing $percent"
        if [ -t 1 ]; then printf '\r  %-11s %3d %%' "$doing" "$percent"; else say "  $doing $percent %"; fi
    done
    if [ -t 1 ] && [ -n "$shown" ]; then printf '\n'; fi
}

# install PACKAGE...: installs those that are missing, as root or through sudo.
install() {
    command -v dpkg-query >/dev/null || die "this is not a Debian system; needed are: $*"
    local missing=() package
    for package in "$@"; do
        installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local root=() get=(env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 apt-get install
        --no-install-recommends)
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "neither root nor sudo: cannot install ${missing[*]}"
        root=(sudo)
    fi
    say "To be installed, with what they need: ${missing[*]}"
    "${root[@]}" apt-get update -qq || say "The package lists could not be renewed; trying with the old ones."
    # "99 newly installed", "Need to get 27 MB", "196 MB of additional disk space".
    { "${root[@]}" "${get[@]}" --assume-no "${missing[@]}" 2>/dev/null || true; } |
        sed -nE 's/^(.* newly installed).*/  \1/p; s/^(Need to get .*)\.$/  \1/p; s/^After this operation, (.*) will be used\.$/  \1/p'
    "${root[@]}" "${get[@]}" -y -qq -o APT::Status-Fd=1 "${missing[@]}" | show_progress ||
        die "the packages could not be installed"
}

# modules DIR: the modules that its package-lock.json names, in its node_modules/.
modules() {
    command -v npm >/dev/null || install npm # some builds of node bring it along
    if [ ! -d "$1/node_modules" ] || [ "$1/package-lock.json" -nt "$1/node_modules" ]; then
        (cd "$1" && npm ci --silent) || die "the modules of $1 could not be fetched"
        touch "$1/node_modules"
    fi
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
