#!/usr/bin/env bash
# Soak test, run by hand (not in CI): random console lines and commands
# for a long time against one session of the sanitizer build, with Ctrl-C
# now and then. At the end the session must still answer `$(1+1)` with 2,
# the sanitizers must have reported nothing, and the resident memory must
# not have grown by more than 10% after the first minute.
#   tests/soak_console.sh [seconds (default 1800)] [path/to/orvela (default build-asan/orvela)]
set -uo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-1800}
bin=$(realpath "${2:-build-asan/orvela}")
[ -x "$bin" ] || { echo "no program at $bin: build it (cmake -S . -B build-asan -DORVELA_SANITIZE=ON)"; exit 2; }

work=$(mktemp -d)
trap 'exec 3>&- 2>/dev/null; kill "$pid" 2>/dev/null; [ -n "${SOAK_KEEP:-}" ] || rm -rf "$work"' EXIT
cd "$work"
mkfifo input
# A small quarantine of freed memory, so that the resident size soon
# shows what the program keeps rather than what the sanitizer holds back.
export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1:quarantine_size_mb=16
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
# A background job of a script starts with SIGINT ignored: give it back.
env --default-signal=INT "$bin" gra=0 ID < input > output 2>&1 &
pid=$!
exec 3> input

# Lines drawn from small sets, so that the scene, the variables and the
# line history (which keeps every distinct line) stay bounded: what
# remains is what the program keeps. Each line has at most a few thousand
# forms.
n() { echo $((RANDOM % 10)); }
f() { shuf -n1 -e -- -2.5 -1 0 0.5 1 1.5 2 3.5 7 10; }
ext() { shuf -n1 -e bmp tga png raw flo; }
# Random bytes of the console's alphabet, drawn once: 200 lines.
garbage=()
for _ in $(seq 200); do
  garbage+=("$(head -c 60 /dev/urandom | tr -dc 'a-z0-9(){}[],;=+*/"$ ' | head -c $((RANDOM % 30 + 1)))")
done
line() {
  case $((RANDOM % 24)) in
    0) echo "x$(n)=$(f)*$(f)+1" ;;
    1) echo "x$(n)=[$(n),$(f),2]; x$(n)*2" ;;
    2) echo "func=\"g$(n)(a){ if(a>$(n)) return(a-1); return(a*$(f)); }\"" ;;
    3) echo "g$(n)($(f))" ;;
    4) echo "for(i=0;i<$(n)$(n);i++){ y=i*$(f); }" ;;
    5) echo "ball($(n)) dim($(n)) secx($((RANDOM % 12 + 3))) secy($((RANDOM % 12 + 3)))" ;;
    6) echo "cube($(n)) dim($(f))" ;;
    7) echo "rotx($(f)) vol($(n))" ;;
    8) echo "col vol($(n))=0.$(n),0.$(n),1" ;;
    9) echo "NP(poi vol($(n)))" ;;
    10) echo "rem vol($(n))" ;;
    11) echo "write vol($(n)) name(\"v$(n).obj\")" ;;
    12) echo "read vol name(\"v$(n).obj\")" ;;
    13) echo "image($(n)) dim($((RANDOM % 60 + 1)),$((RANDOM % 60 + 1))) rand(0.5)" ;;
    14) echo "write image($(n)) name(\"i$(n).$(ext)\")" ;;
    15) echo "read image($(n)) name(\"i$(n).$(ext)\")" ;;
    16) echo "rem image($(n))" ;;
    17) echo "write func name(\"all$(n).func\")" ;;
    18) echo "read func(\"all$(n).func\")" ;;
    19) echo "\$\"text $(n)\"" ;;
    20) echo "list vol" ;;
    # Hostile input: unbalanced, unknown, malformed.
    21) shuf -n1 -e -- '((((1' '1+)' '{{{' '}}' '[1,2' '"open' '/* open' '#define' '#include "nofile"' \
          'vol(' 'ball(-1)' 'ball(1) dim(-5)' 'image(1) dim(0,0)' 'read vol name("missing.obj")' \
          'read image(1) name("missing.bmp")' 'nothere(1)' 'x=' '=1' '1/0' 'sqrt(-1)' 'func="broken("' \
          'write vol(1) name("/nonexistent/f.obj")' 'write func name("/nonexistent/f.func")' '0xffffffff' \
          '@@@' 'rem' 'dup vol(1,2)' 'local("lf(){ rem vol(2) }") vol(1)' 'local exec vol(1)' ;;
    22) echo "${garbage[RANDOM % 200]}" ;;
    23) echo "rem vol" ;;
  esac
}

rss() { awk '/^VmRSS/ { print $2 }' "/proc/$pid/status" 2>/dev/null; }
alive() { kill -0 "$pid" 2>/dev/null; }
size() { stat -c %s output; }
# Waits up to a minute for `text` in the output past byte `from`.
wait_output() {
  local text=$1 from=$2
  for _ in $(seq 600); do
    tail -c +$((from + 1)) output | grep -q -F -- "$text" && return 0
    alive || return 1
    sleep 0.1
  done
  return 1
}

start=$(date +%s)
lines=0 interrupts=0 base=0 peak=0 last=0 sample_at=$start
echo "soak: $seconds s against $bin (folder $work)"
while alive && [ $(( $(date +%s) - start )) -lt "$seconds" ]; do
  from=$(size)
  for _ in $(seq 20); do line >&3; lines=$((lines + 1)); done
  # Every line so far has been read once this marker comes back.
  echo "\$\"mark $lines\"" >&3
  wait_output "mark $lines" "$from" || break
  # Now and then an endless loop stopped by Ctrl-C, abandoned or let go on.
  if [ $((RANDOM % 25)) -eq 0 ]; then
    from=$(size)
    echo 'while(1){ z=1; }' >&3
    sleep 0.2
    kill -INT "$pid"
    wait_output "CONTINUE (no:0" "$from" || break
    echo 0 >&3
    interrupts=$((interrupts + 1))
  fi
  now=$(date +%s)
  if [ $((now - sample_at)) -ge 10 ]; then
    sample_at=$now
    last=$(rss)
    [ -z "$last" ] && break
    if [ $((now - start)) -ge 60 ]; then
      [ "$base" -eq 0 ] && base=$last
      [ "$last" -gt "$peak" ] && peak=$last
    fi
    echo "  $((now - start)) s: $lines lines, $interrupts interrupts, resident $last kB"
  fi
done

status=0
if ! alive; then
  echo "FAIL: the session ended"; status=1
else
  from=$(size)
  echo '$"SOAK-CHECK"' >&3
  echo '$(1+1)' >&3
  echo '$"SOAK-END"' >&3
  if wait_output "SOAK-END" "$from" && tail -c +$((from + 1)) output | grep -A1 -F SOAK-CHECK | grep -q '^ ?2.000000'; then
    echo "the session answers \$(1+1) = 2"
  else
    echo "FAIL: no answer 2 to \$(1+1)"; status=1
  fi
  echo 'bye abs' >&3
fi
exec 3>&-
wait "$pid"
code=$?
echo "exit status $code"
[ "$code" -eq 0 ] || status=1
if grep -q -E 'AddressSanitizer|LeakSanitizer|runtime error:' output; then
  echo "FAIL: sanitizer report:"; grep -E -A5 'AddressSanitizer|LeakSanitizer|runtime error:' output | head -40
  status=1
fi
echo "$lines lines, $interrupts interrupts in $(( $(date +%s) - start )) s"
if [ "$base" -gt 0 ]; then
  growth=$(( (peak - base) * 100 / base ))
  echo "resident memory after the first minute: $base kB, at most $peak kB (growth $growth%)"
  [ "$growth" -le 10 ] || { echo "FAIL: resident memory grew by more than 10%"; status=1; }
else
  echo "(run for more than a minute to measure the growth of memory)"
fi
[ "$status" -eq 0 ] && echo "soak: PASS" || echo "soak: FAIL"
exit "$status"
