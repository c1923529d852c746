# For the scripts that show the running station on a screen in memory, alone or connected by its menus to a demo session.
# Sourced after common.sh, not run. What it starts ends with the script.
work=$(mktemp -d)
children=()
finish() {
  for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap finish EXIT

# set_key KEY VALUE: in front of all others of its section, so that it counts.
set_key() { sed -i "s/^\[OPTIONS\]/[OPTIONS]\r\n$1=$2/" "$work/station/KESTREL.ini"; }

# prepare_station: a copy of the program folder, so that the user's settings stay as they are.
prepare_station() {
  [ -x build/release/station/kestrel ] && [ -x build/release/tools/session-sim ] || scripts/build
  cp -r build/release/station "$work/station"
}

# start_station SCREEN: SCREEN is the size as 1440x900. The frame's window is $window then.
start_station() {
  Xvfb -displayfd 3 -screen 0 "$1x24" -nolisten tcp 3>"$work/display" 2>/dev/null &
  children+=($!)
  wait_for 10 test -s "$work/display"
  export DISPLAY=":$(cat "$work/display")" QT_QPA_PLATFORM=xcb
  openbox >/dev/null 2>&1 &
  children+=($!)
  "$work/station/kestrel" >"$work/station.out" 2>&1 &
  children+=($!)
  wait_for 20 xdotool search --onlyvisible --name '^KESTREL v'
  window=$(xdotool search --onlyvisible --name '^KESTREL v' | head -n 1)
  xdotool windowactivate --sync "$window"
}

# start_demo SCREEN [SESSION-SIM ARGUMENT...]: the station in a demo session.
start_demo() {
  local size=$1
  shift
  prepare_station
  build/release/tools/session-sim --port 0 "$@" >"$work/sim.out" 2>&1 &
  children+=($!)
  wait_for 10 grep -q '^listening on ' "$work/sim.out"
  # Its own port, and the log on, to see when the picture is full.
  set_key CONNPORT "$(sed -n 's/^listening on //p' "$work/sim.out" | head -n 1)"
  sed -i 's/^DEBUG=.*/DEBUG=1\r/' "$work/station/KESTREL.ini"
  start_station "$size"
  # Right of the File menu (Alt+N is shared with Links): Connection, last entry (Phonebook), last entry of that (Demo session).
  xdotool key --delay 150 alt+f Right Up Right Up Return
  wait_for 10 xdotool search --onlyvisible --name 'Channel'
  # The third side of the choice: both.
  xdotool key --delay 150 Down Down Return
  wait_for 10 grep -q 'received NAWACS' "$work/sim.out"
}

# point_at X Y: the pointer to a place of the frame, percent of its width and height.
point_at() {
  local X Y WIDTH HEIGHT WINDOW SCREEN
  eval "$(xdotool getwindowgeometry --shell "$window")"
  xdotool mousemove $((X + WIDTH * $1 / 100)) $((Y + HEIGHT * $2 / 100))
}

# wait_for_cycles N: until so many cycles of the session have come.
wait_for_cycles() {
  cycles_are_there() { [ "$(grep -c SYNCRO "$work/station/KESTRELLog.txt")" -ge "$1" ]; }
  wait_for 60 cycles_are_there "$1"
}
