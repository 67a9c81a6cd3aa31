#!/usr/bin/env bash
# Runs one window transcript: NAME.orv is fed on standard input to orvela
# with its window under xvfb-run, in a fresh folder, and the console text
# (with the exit status appended) must equal NAME.out.
#   NAME.args   replaces the default words "ID" (@ROOT@ is the source tree)
#   NAME.setup  bash script run first in the folder (ROOT is set)
#   NAME.check  bash script run afterwards in the folder; its output is
#               appended (to show the files the scene wrote)
# The folder's path prints as @CWD@. Exits 77 (skipped) without xvfb-run.
# Usage: run_scene.sh ORVELA SOURCE_ROOT BASE   (BASE is the path without .orv)
#        UPDATE_TRANSCRIPTS=1 writes NAME.out from the run instead.
set -u
bin=$1 root=$2 base=$3
command -v xvfb-run >/dev/null 2>&1 || { echo "xvfb-run is not installed"; exit 77; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
export ROOT=$root
[ -f "$base.setup" ] && bash "$base.setup"
args="ID"
[ -f "$base.args" ] && args=$(sed "s|@ROOT@|$root|g" "$base.args")
# shellcheck disable=SC2086
timeout 120 xvfb-run -a -n $((1000 + $$ % 3000)) -s '-screen 0 1024x768x24' "$bin" $args < "$base.orv" > .actual 2>&1
status=$?
printf '[status %d]\n' "$status" >> .actual
[ -f "$base.check" ] && bash "$base.check" >> .actual 2>&1
sed -i -e "s|$work|@CWD@|g" .actual
if [ "${UPDATE_TRANSCRIPTS:-0}" = 1 ]; then cp .actual "$base.out"; exit 0; fi
diff -u --text "$base.out" .actual
