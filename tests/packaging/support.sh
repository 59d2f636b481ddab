# What the tests of the installed program share. Sourced.
set -euo pipefail

fail() {
    printf 'FAILED: %s\n' "$*" >&2
    exit 1
}

tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# windowed COMMAND: pressQ.sh under a display that lasts as long, two minutes at most.
windowed() {
    timeout 120 xvfb-run -a -s '-screen 0 320x240x24 -nolisten tcp -noreset' "$tests/pressQ.sh" "$@"
}
