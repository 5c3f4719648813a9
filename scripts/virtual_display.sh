# shellcheck shell=bash
# An X server that nobody sees, and a user for its windows: sourced, never run. Whoever uses it ends
# the server (its process is in server_PID) and has Xvfb, xdotool and scrot installed.

# start_display LOG [SIZE]: leaves the new display in DISPLAY.
start_display() {
    local number
    coproc server { exec Xvfb -displayfd 1 -screen 0 "${2-1280x900}x24" -nolisten tcp 2>"$1"; }
    read -r -t 20 number <&"${server[0]}" || die "no X server; see $1"
    export DISPLAY=:$number
    unset WAYLAND_DISPLAY XDG_SESSION_TYPE
}

stop_display() {
    [[ -z ${server_PID-} ]] || kill "$server_PID" 2>/dev/null || true
}

# window_of PROCESS: the window that a launcher's viewer shows; none when the launcher has ended.
window_of() {
    local window=
    while [[ -z $window ]] && kill -0 "$1" 2>/dev/null; do
        window=$(xdotool search --onlyvisible --class quarnview 2>/dev/null | head -n 1)
        xdotool sleep 0.05
    done
    echo "$window"
}

# The viewer of the last launcher closes its window after its answer.
await_no_window() {
    while xdotool search --onlyvisible --class quarnview >/dev/null 2>&1; do
        xdotool sleep 0.05
    done
}

# press WINDOW KEY...: in two steps, since xdotool ends at an error of the window that closes at a
# key, without letting the key go, which would then repeat in the next window.
press() {
    xdotool windowfocus --sync "$1" >/dev/null 2>&1 || return 0
    xdotool key --delay 30 "${@:2}"
}

# ends_soon PROCESS: whether it has ended within two seconds.
ends_soon() {
    local attempt
    for ((attempt = 0; attempt < 40; ++attempt)); do
        kill -0 "$1" 2>/dev/null || return 0
        xdotool sleep 0.05
    done
    return 1
}

# press_until_end PROCESS WINDOW KEY: not at once again, since the number of a window that has closed
# may soon name another.
press_until_end() {
    press "$2" "$3"
    until ends_soon "$1"; do
        press "$2" "$3"
    done
}

# take_picture FILE: the display's, once two in a row are the same. A cursor blinks once a second.
take_picture() {
    local before=${1%.png}.before.png
    rm -f "$1"
    while :; do
        scrot --overwrite "$before"
        xdotool sleep 1
        scrot --overwrite "$1"
        ! cmp -s "$before" "$1" || break
    done
    rm -f "$before"
}
