#!/usr/bin/env bash
# Runs one console transcript: NAME.orv is fed to orvela on standard input
# in a fresh folder, and the output (with the exit status appended) must
# equal NAME.out. Each line read is echoed after its prompt, as a terminal
# shows it, so that NAME.out reads as a session; the start-up banner (what
# comes before the first prompt " ?") is left out unless the transcript has
# NAME.args.
#   NAME.args   replaces the default words "gra=0 ID" (@ROOT@ is the source
#               tree); the start-up then shows, banner included
#   NAME.setup  bash script run first in the folder (ROOT and ORVELA, the
#               program, are set); a file
#               .input that it writes replaces NAME.orv, and a file .noecho
#               leaves the input out of the output (lines too long to read)
#   NAME.check  bash script run afterwards; its output is appended
# The folder's path prints as @CWD@ and the thread id as @TID@. The live
# sound is off (ORVELA_AUDIO=none).
# ORVELA_WRAP, when set, is a program that runs orvela (its words follow),
# ORVELA_ARGS the default words and ORVELA_TIMEOUT the seconds allowed.
set -u
bin=$1 root=$2 base=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
export ROOT=$root ORVELA=$bin
# The live sound stays off, so that a transcript reads the same on a
# machine with a sound card and on one without.
export ORVELA_AUDIO=none
[ -f "$base.setup" ] && bash "$base.setup"
input="$base.orv"
[ -f .input ] && input=.input
args=${ORVELA_ARGS:-gra=0 ID}
[ -f "$base.args" ] && args=$(sed "s|@ROOT@|$root|g" "$base.args")
# shellcheck disable=SC2086
echo=1
[ -f .noecho ] && echo=0
ORVELA_ECHO=$echo timeout "${ORVELA_TIMEOUT:-30}" ${ORVELA_WRAP:-} "$bin" $args < "$input" > .actual 2>&1
status=$?
if [ ! -f "$base.args" ] && grep -q '^ ?' .actual; then sed -i '/^ ?/,$!d' .actual; fi
printf '[status %d]\n' "$status" >> .actual
[ -f "$base.check" ] && bash "$base.check" >> .actual 2>&1
sed -i -e "s|$work|@CWD@|g" -e 's/^GetCurrentThreadId = [0-9a-f]*$/GetCurrentThreadId = @TID@/' .actual
if [ "${UPDATE_TRANSCRIPTS:-0}" = 1 ]; then cp .actual "$base.out"; exit 0; fi
diff -u --text "$base.out" .actual
