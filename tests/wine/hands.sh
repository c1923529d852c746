# For the scripts beside it and scripts/test-package: a screen in memory with a window manager, and hands for its keyboard.
# Sourced, not run.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
# What is to end with the script.
children=()
end_children() {
  # One that was stopped hears it when it goes on.
  for child in "${children[@]}"; do kill "$child" && kill -CONT "$child"; done 2>/dev/null || true
  wait 2>/dev/null || true
}

# start_screen FOLDER: its number is left in FOLDER/display.
start_screen() {
  Xvfb -displayfd 3 -screen 0 1440x900x24 -nolisten tcp 3>"$1/display" 2>/dev/null &
  children+=("$!")
  wait_for 10 test -s "$1/display"
  DISPLAY=":$(cat "$1/display")"
  export DISPLAY
  openbox >/dev/null 2>&1 &
  children+=("$!")
}

# start COMMAND...: the station; its process is left in `station`.
start() {
  "$@" >/dev/null 2>&1 &
  station=$!
  children+=("$station")
}

has_focus() { [ "$(xdotool getwindowfocus -f)" = "$1" ]; }
# To be tried again and again: the window manager may not be there yet, and under Wine the keyboard follows later.
take_focus() {
  xdotool windowactivate "$1"
  has_focus "$1"
}

# station_window frame|box: its number. A box has the same beginning of a title as the frame; the frame shows a strip of
# windows and menus, and is wide.
station_window() {
  local window kind
  for window in $(xdotool search --onlyvisible --name '^KESTREL v'); do
    kind=box
    [ "$(xdotool getwindowgeometry --shell "$window" | sed -n 's/^WIDTH=//p')" -lt 800 ] || kind=frame
    [ "$kind" != "$1" ] || { echo "$window"; return 0; }
  done
  return 1
}
# press frame|box KEY...: keys for that window, once it is there.
press() {
  wait_for 60 station_window "$1"
  local window
  window=$(station_window "$1")
  shift
  wait_for 20 take_focus "$window"
  xdotool key --delay 200 "$@"
}
