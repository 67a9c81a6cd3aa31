#!/usr/bin/env bash
# OSC messages into the window loop: a Python sender puts RATE messages a
# second (default 10000) for SECONDS (default 10) on loopback, in bursts
# every 10 ms, each "/bench/n" with its sequence number; an "OSC" server
# device routes them to a user function that counts them and the ones out
# of order. The loop is paced at 75 images a second. Prints the messages
# received, those missing or out of order, and the image rate during the
# run against the one asked for.
# Usage: bench/osc_bench.sh [build folder] [rate] [seconds]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
rate=${2:-10000}
seconds=${3:-10}
orvela=$PWD/$build/orvela
[ -x "$orvela" ] || { echo "missing $orvela: build the target orvela" >&2; exit 1; }
command -v xvfb-run >/dev/null || { echo "xvfb-run is not installed (apt-get install xvfb)" >&2; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
port=$((49100 + $$ % 300))
total=$((rate * seconds))

cat > run.orv <<EOT
no edit
device(1) ini("OSC") lead number($port)
k=0
bad=0
images=0
t=0
func="count(m){extern k; extern bad; if(m[1]!=k){bad=bad+1}; k=k+1}"
func="fin(m){extern k; extern bad; extern images; extern t; t=time(1); print(\"received \",k,\" out of order \",bad,\" images \",images,\" seconds \",t); interaction STOP}"
func="tick(n){extern images; if(n==1){print(\"LOOP RUNNING\"); t0=time(0)}; images=images+1}"
device(1) format("/bench/n") func("count")
device(1) format("/bench/end") func("fin")
interaction func(1,"tick")
interaction period(75)
interaction format("ORVELA 0.1 for")
bye abs
EOT
cat > send.py <<EOT
import socket, struct, sys, time
RATE = int(sys.argv[1])
def pad(b): return b + b"\0" * (4 - len(b) % 4)
head = pad(b"/bench/n") + pad(b",i")
s = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
burst = max(1, RATE // 100)
start = time.monotonic()
if RATE == 0: time.sleep($seconds)
for i in range(RATE * $seconds):
    s.sendto(head + struct.pack(">i", i), ("127.0.0.1", $port))
    if (i + 1) % burst == 0:
        due = start + (i + 1) / RATE
        d = due - time.monotonic()
        if d > 0: time.sleep(d)
print("sent", RATE * $seconds, "in %.2f s" % (time.monotonic() - start))
time.sleep(0.2)
s.sendto(pad(b"/bench/end") + pad(b","), ("127.0.0.1", $port))
EOT
cat > both.sh <<EOT
"$orvela" ID < run.orv > run.out 2>&1 &
pid=\$!
for i in \$(seq 200); do grep -q "LOOP RUNNING" run.out 2>/dev/null && break; sleep 0.05; done
python3 send.py \$1
wait \$pid
EOT
run() {
  timeout $((seconds * 3 + 60)) xvfb-run -a -s '-screen 0 1024x768x24' bash both.sh "$1" > /dev/null
  line=$(tr -s '\n' ' ' < run.out | grep -o 'received.*seconds *[0-9.]*' || true)
  [ -n "$line" ] || { echo "no result; the program said:"; tail -20 run.out; exit 1; }
  set -- $(echo "$line" | grep -o '[0-9][0-9.]*')
  received=${1%.*} disorder=${2%.*}
  images=$(awk -v i="$3" -v t="$4" 'BEGIN { printf "%.1f images a second over %.1f s", i / t, t }')
}
run 0
echo "orvela, no message: $images (75 asked)"
run "$rate"
echo "orvela, $rate messages a second: received $received of $total, $((total - received)) missing, $disorder out of order; $images (75 asked)"
