#!/usr/bin/env bash
# installedTree.sh BUILD SOURCE: installs into an empty folder whose name has a blank, and uses
# what lies there as its users would.
. "$(dirname "${BASH_SOURCE[0]}")/support.sh"
build=$1
source=$2
prefix="$scratch/a prefix"
cmake --install "$build" --prefix "$prefix" >"$scratch/install.log" || fail "cmake --install"
bin="$prefix/bin"

echo "the launcher finds the set from anywhere, also through a link"
ln -s "$bin/testRender" "$scratch/link"
(cd / && windowed "$scratch/link") >"$scratch/show.txt" 2>&1 || {
    cat "$scratch/show.txt"
    fail "the installed show did not run"
}
! grep -i "couldn't" "$scratch/show.txt" || fail "models were not found"

(cd / && windowed "$bin/playShow") >"$scratch/player.txt" 2>&1 || {
    cat "$scratch/player.txt"
    fail "the installed player did not run"
}
! grep -i "couldn't" "$scratch/player.txt" || fail "the player did not find the models"

echo "the set is whole"
"$bin/lwoinfo" --check "$prefix/share/testRender/lwo" >"$scratch/check.txt" || {
    cat "$scratch/check.txt"
    fail "lwoinfo has findings in the installed set"
}

echo "recordShow finds the show, and writes where it was called"
mkdir "$scratch/elsewhere"
(cd "$scratch/elsewhere" && "$bin/recordShow" --stills 3 pictures --size 64x48) >/dev/null
[ -s "$scratch/elsewhere/pictures/frame00003.png" ] || fail "no still"

echo "each tool's options are in its manual page, and the pages are well formed"
for tool in playShow recordShow lwoconvert lwoinfo lwoview makeSet testRender; do
    [[ $("$bin/$tool" --version) == "$tool "[0-9]* ]] || fail "$tool --version"
    options=$("$bin/$tool" --help | grep -oE -- '--[a-z]+' | sort -u)
    [ -n "$options" ] || fail "$tool --help names no options"
    for option in $options; do
        zgrep -qF -- "${option//-/\\-}" "$prefix/share/man/man1/$tool.1.gz" ||
            fail "$option is not in $tool.1"
    done
done
for page in "$prefix"/share/man/man1/*.1.gz; do
    problems=$(LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
    [ -z "$problems" ] || fail "$page: $problems"
done

echo "the manual page and the documents name files that are there"
manual=$(MANWIDTH=200 man -l "$prefix/share/man/man1/testRender.1.gz")
documents="$prefix/share/doc/testrender"
named=$(
    grep -oE 'PREFIX/[a-zA-Z0-9_/-]+' <<<"$manual" | sed "s|PREFIX|$prefix|"
    grep -oE 'docs/[A-Za-z0-9/]+\.(jpg|md)' "$documents/README.md" | sed "s|^|$documents/|"
)
while read -r path; do
    [ -e "$path" ] || fail "$path is named and not there"
done <<<"$named"

echo "the desktop entries are valid, their icon is there and cut out"
desktop-file-validate "$prefix"/share/applications/*.desktop
icon="$prefix/share/icons/hicolor/256x256/apps/testRender.png"
file "$icon" | grep -q '256 x 256, 8-bit/color RGBA' || fail "the icon: $(file "$icon")"

echo "lwoview opens object files: their kind is known, by name and by content"
update-mime-database "$prefix/share/mime" 2>"$scratch/mime.log" || fail "$(cat "$scratch/mime.log")"
kind=$(sed -n 's/^MimeType=\([^;]*\);.*$/\1/p' "$prefix/share/applications/lwoview.desktop")
cp "$prefix/share/testRender/lwo/k7.lwo" "$scratch/nameless"
for model in "$prefix/share/testRender/lwo/k7.lwo" "$scratch/nameless"; do
    XDG_DATA_HOME=$scratch XDG_DATA_DIRS=$prefix/share gio info -a standard::content-type "$model" |
        grep -q ": $kind\$" || fail "$model is not taken for $kind"
done

echo "libraries tell nothing of who built them, and go into shared ones"
! grep -rlF "$source" "$prefix/lib" --include '*.a' --include '*.cmake' || fail "they name $source"
c++ -shared -o "$scratch/all.so" -Wl,--whole-archive "$prefix"/lib/lib*.a -Wl,--no-whole-archive ||
    fail "they are not position-independent"

echo "another project finds the libraries, without OpenGL; the README's example reads a model"
mkdir "$scratch/project"
# block LANGUAGE: the README's only code block in that language.
block() {
    [ "$(grep -c "^\`\`\`$1\$" "$source/README.md")" = 1 ] || fail "not one $1 block in README.md"
    sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/{/^\`\`\`/d;p}" "$source/README.md"
}
block cpp >"$scratch/project/main.cpp"
block cmake >"$scratch/project/CMakeLists.txt"
(
    cd "$scratch/project"
    cmake -S . -B build -DCMAKE_PREFIX_PATH="$prefix" \
        -DCMAKE_DISABLE_FIND_PACKAGE_OpenGL=ON >configure.log 2>&1 || {
        cat configure.log
        fail "the project could not be configured"
    }
    cmake --build build >build.log 2>&1 || {
        cat build.log
        fail "the project could not be built"
    }
    ./build/count "$prefix/share/testRender/lwo/tree3d.lwo" >count.txt
    grep -qE '^[1-9][0-9]* points, [1-9][0-9]* polygons' count.txt || fail "it said: $(cat count.txt)"
    ! ./build/count none.lwo 2>problem.txt || fail "it read a file that is not there"
    grep -q "cannot be opened" problem.txt || fail "of a missing file: $(cat problem.txt)"
    [[ $(ldd build/count) != *libGL* ]] || fail "the reader needs OpenGL"
)

echo "a program that draws links the renderer"
cat >"$scratch/project/main.cpp" <<'PROGRAM'
#include "image/image.h"
#include "renderer/celShading.h"
#include "renderer/lwoRenderer.h"
int main(int argc, char **argv) { return argc == 2 && newLwoObj(argv[1], 1) != nullptr ? 0 : 1; }
PROGRAM
sed -i 's/testRender::reader/testRender::renderer/; s/COMPONENTS reader/COMPONENTS renderer/' \
    "$scratch/project/CMakeLists.txt"
(
    cd "$scratch/project"
    cmake -S . -B build -DCMAKE_DISABLE_FIND_PACKAGE_OpenGL=OFF >>configure.log 2>&1
    cmake --build build >build.log 2>&1 || {
        cat build.log
        fail "the drawing project could not be built"
    }
    ./build/count "$prefix/share/testRender/lwo/k7.lwo" >/dev/null || fail "it loaded nothing"
)
echo "passed"
