#!/usr/bin/env bash
# drawModel.sh PROGRAM FOLDER: shows the logo on a display of its own, looks at the picture twice,
# and presses q.
set -euo pipefail
fail() {
    printf 'FAILED: %s\n' "$*" >&2
    exit 1
}

if [ $# = 2 ]; then
    ! "$1" "$2/none.lwo" 2>/dev/null || fail "a model that is not there is no failure"
    # Without -noreset the server starts over when its last client leaves, xdotool, and turns away
    # whoever is just coming.
    exec timeout 60 xvfb-run -a -s '-screen 0 640x480x24 -nolisten tcp -noreset' \
        "$0" "$1" "$2" shown
fi

# picture: the pixels of the screen, a line for each.
picture() {
    ffmpeg -v error -f x11grab -draw_mouse 0 -video_size 640x480 -i "$DISPLAY" -frames:v 1 \
        -f rawvideo -pix_fmt rgb24 - | od -An -v -tx1 -w3
}
colors() { picture | sort -u | wc -l; }

"$1" "$2/k7.lwo" &
program=$!
until window=$(xdotool search --name '^drawModel$'); do
    kill -0 $program || fail "it ended by itself"
    sleep 0.1
done
# A shaded model with textures has some thousand colours, an empty window two.
until [ "$(colors)" -gt 500 ]; do
    kill -0 $program || fail "it ended by itself"
    sleep 0.1
done
first=$(picture | sha256sum)
until [ "$first" != "$(picture | sha256sum)" ]; do sleep 0.1; done # it turns
xdotool key --window "$window" q 2>/dev/null || true # the window may be gone before the key is let go
wait $program
