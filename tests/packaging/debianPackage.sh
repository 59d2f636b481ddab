#!/usr/bin/env bash
# debianPackage.sh BUILD: makes the Debian package, installs it, runs the show from it and removes
# it. Ends with status 77 (skipped) where nothing may be installed, or where the package is
# installed already.
. "$(dirname "${BASH_SOURCE[0]}")/support.sh"
build=$1
root=()
if [ "$(id -u)" -ne 0 ]; then
    sudo -n true 2>/dev/null || {
        echo "skipped: neither root nor sudo without a password"
        exit 77
    }
    root=(sudo -n)
fi
if dpkg-query -W -f '${db:Status-Status}' testrender 2>/dev/null | grep -q "^installed"; then
    echo "skipped: the package is installed on this machine"
    exit 77
fi

echo "making the package, as somebody whose group may write"
(cd "$build" && umask 002 && cpack -G DEB -B "$scratch/packages") >"$scratch/cpack.log" 2>&1 || {
    cat "$scratch/cpack.log"
    fail cpack
}
package=$(echo "$scratch"/packages/testrender_*.deb)
[ -f "$package" ] || fail "no package"
# As apt reads it, also when it reads as somebody else.
chmod 755 "$scratch" "$scratch/packages"

echo "its dependencies name what its programs load"
depends=$(dpkg-deb -f "$package" Depends)
for library in libc6 libstdc++6 libopengl0 libegl1 libglu1-mesa libglut3.12 libsdl2-mixer-2.0-0 libpng16-16 \
    libfreetype6 libvorbisenc2 fonts-cherrybomb; do
    [[ ", $depends" == *", $library"* ]] || fail "$library is not among: $depends"
done

echo "lintian has neither errors nor warnings"
lintian --allow-root --fail-on error,warning "$package" || fail "lintian"

remove() { "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq testrender; }
trap 'remove >/dev/null 2>&1 || true; rm -rf "$scratch"' EXIT
echo "installing"
"${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "$package" >"$scratch/apt.log" 2>&1 || {
    cat "$scratch/apt.log"
    fail "the package could not be installed"
}

echo "running"
cd "$scratch"
windowed testRender >"$scratch/show.txt" 2>&1 || {
    cat "$scratch/show.txt"
    fail "the packaged show did not run"
}
! grep -i "couldn't" "$scratch/show.txt" || fail "models were not found"
lwoinfo --check /usr/share/testRender/lwo >/dev/null || fail "lwoinfo has findings"
[[ $(makeSet --help) == usage* ]] || fail "makeSet does not start"

echo "removing"
dpkg-query -L testrender >"$scratch/files.txt"
remove >/dev/null 2>&1 || fail "the package could not be removed"
! command -v /usr/bin/testRender || fail "it is still there"
[ ! -e /usr/share/testRender ] || fail "its data are still there"
echo "passed"
