#!/usr/bin/env bash
# listModel.sh PROGRAM FOLDER: what the program says of the logo, and of what is no model.
set -euo pipefail
fail() {
    printf 'FAILED: %s\n' "$*" >&2
    exit 1
}

list=$("$1" "$2/k7.lwo")
[[ $list =~ ^layer\ 0:\ [1-9][0-9]*\ points,\ [1-9][0-9]*\ polygons ]] || fail "no layer: $list"
[[ $list == *$'\nsurface logo-red: red 0.7'*$'\n    image planks.tga\n'* ]] || fail "no image: $list"

status=0
said=$("$1" "$0" 2>&1) || status=$?
[ $status = 1 ] && [[ $said == *"cannot be opened, or is no object file"* ]] || fail "of its test it says: $said"
