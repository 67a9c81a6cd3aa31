#!/usr/bin/env bash
# Makes the README's pictures of the examples: each example's scene run
# for a number of images in the window (under xvfb-run), pictured by the
# program itself into examples/pictures/NAME.png.
# Usage: tools/example_pictures.sh [orvela [name ...]]   (default build/orvela, every example)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
orvela=$(realpath "${1:-$root/build/orvela}")
out=$root/examples/pictures
mkdir -p "$out"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# name and the images to run before the picture
only=" ${*:2} "
for entry in still_life:100 image_play:100 bounce:40 cloth:300 fly:100 steer:60 waves:100 listen:37 hill:100 osc_ball:50 live:60; do
  name=${entry%%:*} images=${entry##*:}
  [ "$only" = "  " ] || [[ $only == *" $name "* ]] || continue
  printf 'read func("%s/examples/%s.func")\n%s_scene()\ninteraction time(%d)\nwrite image name("%s/%s.png")\nbye abs\n' \
    "$root" "$name" "$name" "$images" "$out" "$name" > "$work/$name.orv"
  # The listening scene hears the sound it writes, as if from a microphone.
  (cd "$work" && ORVELA_AUDIO=file:listen.wav xvfb-run -a -s "-screen 0 1024x768x24" "$orvela" ID fun="$root/examples/" < "$name.orv" > "$name.log" 2>&1) ||
    { echo "$name failed:"; cat "$work/$name.log"; exit 1; }
  echo "$out/$name.png"
done
