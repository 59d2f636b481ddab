#!/usr/bin/env bash
# pressQ.sh COMMAND: runs a command in the current, empty display, presses q in the show's window as
# soon as it listens, and gives the command's status.
set -euo pipefail
# A window that appears while the manager is taking over may never be mapped; what --startup names
# it starts once it is through.
ready=$(mktemp -u)
openbox --startup "touch $ready" 2>/dev/null &
manager=$!
until [ -e "$ready" ]; do sleep 0.1; done
rm "$ready"
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
