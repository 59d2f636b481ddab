#!/usr/bin/env bash
# pressQ.sh COMMAND: runs a command in the current, empty display, presses q in the show's window as
# soon as it listens, and gives the command's status.
set -euo pipefail
openbox 2>/dev/null &
manager=$!
# A window that appears while the manager is taking over may never be mapped.
until xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q '#'; do sleep 0.1; done
"$@" &
show=$!
window=
while kill -0 $show 2>/dev/null; do
    [ -n "$window" ] || window=$(xdotool search --name VALMORINE || true)
    [ -z "$window" ] || xdotool key --window "${window%%[!0-9]*}" q || true
    sleep 0.2
done
status=0
wait $show || status=$?
kill $manager
[ -n "$window" ] || echo "no window appeared" >&2
[ -n "$window" ] && exit $status
