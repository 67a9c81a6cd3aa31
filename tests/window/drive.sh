# Helpers for the scripts that drive the window with xdotool. A driver runs
# beside orvela under the same xvfb-run, in the run's folder, where orvela's
# console text is written to out.txt. Window positions are pixels from the
# window's top left corner.

# Waits (up to $2 seconds, default 20) until the console text holds $1.
wait_text() {
  local limit=$((${2:-20} * 20))
  for ((i = 0; i < limit; i++)); do
    grep -qF -- "$1" out.txt 2>/dev/null && return 0
    sleep 0.05
  done
  echo "drive: \"$1\" never came" >> out.txt
  return 1
}

window_id() { timeout 10 xdotool search --sync --name '^ORVELA$' | head -1; }

# Keys by their X names (Escape, Return, bracketleft, a ...).
key() {
  local w
  w=$(window_id)
  xdotool windowfocus --sync "$w"
  xdotool key --delay 40 "$@"
}

# Text typed as it is.
type_text() {
  local w
  w=$(window_id)
  xdotool windowfocus --sync "$w"
  xdotool type --delay 40 "$1"
}

# click X Y [BUTTON]
click() {
  xdotool mousemove --window "$(window_id)" "$1" "$2" sleep 0.1 click "${3:-1}"
}

# drag X0 Y0 X1 Y1 [BUTTON]: pressed at the first place, moved in ten steps,
# released at the second.
drag() {
  local w b=${5:-1}
  w=$(window_id)
  xdotool mousemove --window "$w" "$1" "$2" sleep 0.1 mousedown "$b"
  for s in 1 2 3 4 5 6 7 8 9 10; do
    xdotool mousemove --window "$w" $(($1 + ($3 - $1) * s / 10)) $(($2 + ($4 - $2) * s / 10)) sleep 0.05
  done
  xdotool mouseup "$b"
}
