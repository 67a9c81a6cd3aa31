#!/usr/bin/env bash
# The display's speed against its floor: 50 lit balls of 64 x 32 facets
# drawn by `displ` 100 times, and the same facets drawn by a plain program
# with the same immediate-mode calls, both under xvfb-run.
# Usage: bench/display_bench.sh [build folder]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
source bench/balls_scene.sh
scene() {  # scene N: the balls, then N displays
  balls_scene
  echo "displ"
  if [ "$1" -gt 0 ]; then echo "for(i=0;i<$1;i++){displ}"; fi
  echo "bye abs"
}
root=$PWD
cd "$work"
# The 100 displays cost the difference between a run with them and one
# without (the same start-up, scene and first display).
run() {
  scene "$1" > scene.orv
  local t0 t1
  t0=$(date +%s.%N)
  xvfb-run -a -s "-screen 0 1024x768x24" "$root/$build/orvela" < scene.orv > /dev/null 2>&1 || true
  t1=$(date +%s.%N)
  awk -v a="$t0" -v b="$t1" 'BEGIN { print b - a }'
}
base=$(run 0)
full=$(run 100)
awk -v a="$base" -v b="$full" 'BEGIN { s = b - a; printf "orvela: %.3f s, %.0f facets a second\n", s, 100 * 50 * 2048 / s }'
xvfb-run -a -s "-screen 0 1024x768x24" "$root/$build/bench/orvela_plain_balls"
