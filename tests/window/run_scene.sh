#!/usr/bin/env bash
# Runs one window transcript: NAME.orv is fed on standard input to orvela,
# drawing off-screen (the `egl` option, no X server), or in its window
# under xvfb-run when ORVELA_WINDOW=xvfb, in a fresh folder, and the
# console text (with the exit status appended) must equal NAME.out.
# NAME.args, .setup and .check work as for the console transcripts
# (tests/support/run_transcript.sh), the default words being "ID" (and
# "egl"). Exits 77 (skipped) when neither way of drawing is there.
# Usage: run_scene.sh ORVELA SOURCE_ROOT BASE   (BASE is the path without .orv)
#        UPDATE_TRANSCRIPTS=1 writes NAME.out from the run instead.
set -u
wrap=$(mktemp)
trap 'rm -f "$wrap"' EXIT
if [ "${ORVELA_WINDOW:-}" = xvfb ]; then
  command -v xvfb-run >/dev/null 2>&1 || { echo "xvfb-run is not installed"; exit 77; }
  # A server number of its own, so that scenes run side by side.
  printf '#!/usr/bin/env bash\nexec xvfb-run -a -n %d -s "-screen 0 1024x768x24" "$@"\n' $((1000 + $$ % 3000)) > "$wrap"
  args=ID
else
  if echo 'bye abs' | env -u DISPLAY "$1" egl ID 2>&1 | grep -q 'no off-screen drawing'; then
    echo "no off-screen drawing here (EGL)"
    exit 77
  fi
  printf '#!/usr/bin/env bash\nexec env -u DISPLAY "$@"\n' > "$wrap"
  args="ID egl"
fi
chmod +x "$wrap"
ORVELA_WRAP=$wrap ORVELA_ARGS=$args ORVELA_TIMEOUT=120 bash "$(dirname "$0")/../support/run_transcript.sh" "$@"
