#!/usr/bin/env bash
# Datagram round trips a second on loopback between two programs: a "UCS"
# client device and a "UCS" server device, each polled without blocking
# by a user function at each image of the window loop (under xvfb-run,
# `interaction period(0)`: no pacing), one "FF" float each way; against
# the plain C++ echo pair (bench/plain_udp_echo.cpp) polling in a loop of
# its own. Prints both rates of each of R runs and the ratio of the best.
# Usage: bench/ucs_bench.sh [build folder] [N round trips] [R runs]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
n=${2:-5000}
runs=${3:-3}
root=$PWD
orvela=$root/$build/orvela
plain=$root/$build/bench/orvela_plain_udp_echo
for f in "$orvela" "$plain"; do [ -x "$f" ] || { echo "missing $f: build the targets orvela and orvela_plain_udp_echo" >&2; exit 1; }; done
command -v xvfb-run >/dev/null || { echo "xvfb-run is not installed (apt-get install xvfb)" >&2; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
port=$((49500 + $$ % 400))  # apart from the fixed ports of the tests (4739x)

# The server answers each float with itself; -1 ends it.
cat > srv.orv <<EOT
no edit
device(1) ini("UCS") lead number($port)
func="echo(n){p=device(1) format(\"FF\"); if(type(p)!=type(NIL)){device(1) format(\"FF\")=p; if(p[0]<0){interaction STOP}}}"
interaction func(1,"echo")
interaction period(0)
interaction format("ORVELA 0.1 for")
bye abs
EOT
# The client sends 0 at its first image, then at each image polls for the
# answer and sends the next number; after N answers it prints the rate.
cat > cli.orv <<EOT
no edit
device(2) ini("UCS") name("127.0.0.1") number($port)
k=0
func="ping(n){extern k; if(n==1){t0=time(0); device(2) format(\"FF\")=0; return}; p=device(2) format(\"FF\"); if(type(p)!=type(NIL)){k=k+1; if(k<$n){device(2) format(\"FF\")=k} else {t=time(1); print(\"orvela: \",$n/t,\" round trips a second\"); device(2) format(\"FF\")=-1; interaction STOP}}}"
interaction func(1,"ping")
interaction period(0)
interaction format("ORVELA 0.1 for")
bye abs
EOT
# Both programs under one X server; the server first, so that the
# client's first datagram finds it bound.
cat > both.sh <<EOT
"$orvela" ID < srv.orv > srv.out 2>&1 &
srv=\$!
for i in \$(seq 100); do grep -q "Attente Datagram" srv.out 2>/dev/null && break; sleep 0.05; done
"$orvela" ID < cli.orv > cli.out 2>&1
wait \$srv
EOT

rate() { tr -s '\n' ' ' < "$1" | grep -o "$2: *[0-9.]*" | grep -o '[0-9.]*$' || true; }
best_orvela=0 best_plain=0
for ((r = 1; r <= runs; r++)); do
  timeout 300 xvfb-run -a -s '-screen 0 1024x768x24' bash both.sh || true
  o=$(rate cli.out orvela)
  "$plain" $((port + 1)) "$n" > plain.out
  p=$(rate plain.out plain)
  echo "run $r: orvela ${o:-failed} round trips a second, plain ${p:-failed}"
  [ -n "$o" ] && best_orvela=$(awk -v a="$best_orvela" -v b="$o" 'BEGIN{print (b>a)?b:a}')
  [ -n "$p" ] && best_plain=$(awk -v a="$best_plain" -v b="$p" 'BEGIN{print (b>a)?b:a}')
done
awk -v o="$best_orvela" -v p="$best_plain" \
  'BEGIN{printf "best: orvela %.0f, plain %.0f round trips a second; ratio orvela/plain %.3f\n", o, p, (p>0)?o/p:0}'
