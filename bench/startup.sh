#!/usr/bin/env bash
# Time from start to the first prompt and out again: `orvela gra=0 ID` fed
# an empty standard input, which ends the run at the first read.
# Usage: bench/startup.sh [path/to/orvela]
set -euo pipefail
cd "$(dirname "$0")/.."
bin=${1:-build/orvela}
command -v hyperfine >/dev/null || {
  sudo=""; [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq && $sudo apt-get install -y -qq hyperfine >/dev/null
}
median() { grep -o '"median": *[0-9.e-]*' "$1" | awk '{ printf "median: %.2f ms\n", $2 * 1000 }'; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r env "$work/"
cd "$work"
echo "minimal environment (no files):"
hyperfine --warmup 20 --runs 200 --export-json min.json "$OLDPWD/$bin gra=0 ID ini=none.h < /dev/null"
median min.json
echo "shipped environment files:"
hyperfine --warmup 20 --runs 200 --export-json files.json "$OLDPWD/$bin gra=0 ID < /dev/null"
median files.json
