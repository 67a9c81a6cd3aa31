#!/usr/bin/env bash
# Runs one window transcript: NAME.orv is fed on standard input to orvela
# with its window under xvfb-run, in a fresh folder, and the console text
# (with the exit status appended) must equal NAME.out. NAME.args, .setup
# and .check work as for the console transcripts (tests/support/
# run_transcript.sh), the default words being "ID". Exits 77 (skipped)
# without xvfb-run.
# Usage: run_scene.sh ORVELA SOURCE_ROOT BASE   (BASE is the path without .orv)
#        UPDATE_TRANSCRIPTS=1 writes NAME.out from the run instead.
set -u
command -v xvfb-run >/dev/null 2>&1 || { echo "xvfb-run is not installed"; exit 77; }
wrap=$(mktemp)
trap 'rm -f "$wrap"' EXIT
# A server number of its own, so that scenes run side by side.
printf '#!/usr/bin/env bash\nexec xvfb-run -a -n %d -s "-screen 0 1024x768x24" "$@"\n' $((1000 + $$ % 3000)) > "$wrap"
chmod +x "$wrap"
ORVELA_WRAP=$wrap ORVELA_ARGS=ID ORVELA_TIMEOUT=120 bash "$(dirname "$0")/../support/run_transcript.sh" "$@"
