#!/usr/bin/env bash
# The image loop against plain GLUT programs doing the same in their idle
# callback, all under xvfb-run, in images a second:
#   (a) 50 lit balls of 64 x 32 facets with `interaction period(0)`, against
#       the same facets drawn with the same immediate-mode calls;
#   (b) an empty scene with every stage switched off, against an idle
#       callback that only swaps: the cost of the loop's spine; and, for
#       the part of it that is the clear of the image, one that clears and
#       swaps.
# The loop's rate is taken by a user function with the chronometer over
# N images after ten to warm up. Each program runs R times, and the best
# rate is printed (the machine's other work only ever slows a run).
# Usage: bench/loop_bench.sh [build folder] [N] [R]
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
chrono() {  # the function that times images 11 to 10+n
  echo "func=\"chrono(k){extern t; if(k==11){t=time(0)}; if(k==$((10 + n))){t=time(1); print(\\\"orvela $1: \\\",$n/t,\\\" images a second\\\")}}\""
  echo "interaction func(1,\"chrono\")"
  echo "interaction period(0)"
  echo "interaction format(\"ORVELA 0.1 for\") time($((10 + n)))"
  echo "bye abs"
}
{
  balls_scene
  chrono balls
} > balls.orv
{
  echo "no edit"
  for f in traj collision brush meta dynamic force local image light menu stock; do echo "no $f"; done
  chrono empty
} > empty.orv
once() { xvfb-run -a -s "-screen 0 1024x768x24" "$@" 2>&1 | tr -s '\n' ' ' | grep -o "[a-z]* [a-z]*: [0-9.]* *images a second" || true; }
best() { sort -t: -k2 -g | tail -1; }
run() { for ((r = 0; r < runs; r++)); do once "$@"; done | best; }
run_orvela() { for ((r = 0; r < runs; r++)); do once "$root/$build/orvela" ID < "$1"; done | best; }
run_orvela balls.orv
run "$root/$build/bench/orvela_plain_loop" balls "$n"
run_orvela empty.orv
run "$root/$build/bench/orvela_plain_loop" swap "$n"
run "$root/$build/bench/orvela_plain_loop" clear "$n"
