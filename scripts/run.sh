#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what is missing, builds, and starts the console beside its collector.
# Without a display it starts under a virtual one, leaves a picture of the main window in
# build/console.png, tells how many machines were imported, and closes the console by its Exit command.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target velmora movanta
program=$PWD/build/release/bin/velmora

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$program" "$@"
fi

picture=$PWD/build/console.png
work=$(mktemp -d)
console=
display=
manager=
finish() {
    for process in $console $manager $display; do
        kill "$process" 2>/dev/null || true
    done
    rm -rf "$work"
}
trap finish EXIT

# The server itself chooses a display that is free, and writes its number.
Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp 3>"$work/display" 2>"$work/xvfb.log" &
display=$!
for _ in $(seq 100); do
    [ -s "$work/display" ] && break
    sleep 0.1
done
[ -s "$work/display" ] || { cat "$work/xvfb.log" >&2; exit 1; }
DISPLAY=:$(cat "$work/display")
export DISPLAY
openbox >"$work/openbox.log" 2>&1 &
manager=$!

# A store of its own: this is a look at the console, not a use of it.
export XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work/runtime QT_QPA_PLATFORM=xcb
mkdir -m 700 "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR"
"$program" "$@" &
console=$!

window=
for _ in $(seq 600); do
    kill -0 "$console" 2>/dev/null || { wait "$console"; exit 1; }
    window=$(xdotool search --onlyvisible --name '^MOVA Professional Administration Module$' 2>/dev/null | head -n 1 || true)
    [ -n "$window" ] && break
    sleep 0.2
done
[ -n "$window" ] || { echo "The main window did not come." >&2; exit 1; }
# The splash goes by itself after a few seconds.
for _ in $(seq 100); do
    xdotool search --onlyvisible --name '^Velmora$' >/dev/null 2>&1 || break
    sleep 0.1
done
xdotool windowactivate --sync "$window"
xdotool windowsize --sync "$window" 960 600
# Enter on the root shows the machines in the list.
xdotool key --window "$window" Home Return
sleep 1
import -window "$window" "$picture"
machines=$(sqlite3 -readonly build/release/bin/Demodb.mdb 'SELECT COUNT(*) FROM Net')
# The window may be gone before the keys come up again; the console's own status tells how it ended.
xdotool key --window "$window" ctrl+x 2>/dev/null || true
status=0
wait "$console" || status=$?
console=
echo "Imported machines: $machines"
echo "Picture: build/console.png"
exit "$status"
