#!/usr/bin/env bash
# The image loop drawing off-screen (`egl`, no X server) against the same
# in the window under xvfb-run, in images a second: 50 lit balls of 64 x 32
# facets with `interaction period(0)`; then the same off-screen while
# recording every image as PNG files, and as an mp4 film when ffmpeg is
# there. The rate is taken by a user function with the chronometer over N
# images after ten to warm up; each way runs R times and the best rate is
# printed (the machine's other work only ever slows a run).
# Usage: bench/egl_bench.sh [build folder] [N] [R]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
n=${2:-300}
runs=${3:-3}
root=$PWD
source bench/balls_scene.sh
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
scene() {  # $1 the label, $2 what comes before the loop
  balls_scene
  echo "func=\"chrono(k){extern t; if(k==11){t=time(0)}; if(k==$((10 + n))){t=time(1); print(\\\"$1: \\\",$n/t,\\\" images a second\\\")}}\""
  echo "interaction func(1,\"chrono\")"
  echo "interaction period(0)"
  [ -n "${2:-}" ] && echo "$2"
  echo "interaction format(\"ORVELA 0.1 for\") time($((10 + n)))"
  echo "bye abs"
}
scene "xvfb window" > window.orv
scene "egl" > egl.orv
scene "egl recording png" 'interaction video name("shot") format("png")' > png.orv
scene "egl recording mp4" 'interaction video name("film") format("mp4")' > mp4.orv
rate() { tr -s '\n' ' ' | grep -o "[a-z0-9 ]*: [0-9.]* *images a second" || true; }
best() { sort -t: -k2 -g | tail -1; }
many() { for ((r = 0; r < runs; r++)); do "$@"; rm -f shot*.png film.mp4; done | best; }
window() { xvfb-run -a -s "-screen 0 1024x768x24" "$root/$build/orvela" ID < window.orv 2>&1 | rate; }
offscreen() { env -u DISPLAY "$root/$build/orvela" egl ID < "$1" 2>&1 | rate; }
many window
many offscreen egl.orv
many offscreen png.orv
if command -v ffmpeg >/dev/null; then many offscreen mp4.orv; fi
