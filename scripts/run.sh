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

# The server itself chooses a display that is free, and writes its number. It must not reset when a client
# leaves and no other is there yet: the window manager would lose its hold on it.
Xvfb -displayfd 3 -noreset -screen 0 1280x900x24 -nolisten tcp 3>"$work/display" 2>"$work/xvfb.log" &
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
for _ in $(seq 100); do
    xprop -root _NET_SUPPORTED 2>/dev/null | grep -q _NET_ACTIVE_WINDOW && break
    sleep 0.1
done

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
# The window manager gives a new window the keyboard, so the script can go on where this fails. The keys go to
# the server and not to the window, which may be gone before they come up again.
timeout 10 xdotool windowactivate --sync "$window" || echo "The main window could not be activated." >&2
timeout 10 xdotool windowsize --sync "$window" 960 600 || true
# Enter on the root shows the machines in the list.
xdotool key Home Return
sleep 1
import -window "$window" "$picture"
machines=$(sqlite3 -readonly build/release/bin/Demodb.mdb 'SELECT COUNT(*) FROM Net')
xdotool key ctrl+x
for _ in $(seq 300); do
    kill -0 "$console" 2>/dev/null || break
    sleep 0.1
done
kill -0 "$console" 2>/dev/null && { echo "The console did not close by its Exit command." >&2; exit 1; }
status=0
wait "$console" || status=$?
console=
echo "Imported machines: $machines"
echo "Picture: build/console.png"
exit "$status"
