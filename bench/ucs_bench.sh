#!/usr/bin/env bash
# Datagram round trips a second on loopback: a "UCS" client and server
# device in two programs, each polling its device without blocking at
# each turn of a loop of the language (as at each image), one "FF" float
# each way; against a plain C++ echo pair polling the same way. Each
# side runs R times and the best rate is printed.
# Usage: bench/ucs_bench.sh [build folder] [N] [R]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
n=${2:-5000}
runs=${3:-3}
root=$PWD
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
port=47311
cat > srv.orv <<EOT
device(1) ini("UCS") lead number($port)
n=0
while(n<$n){p=device(1) format("FF"); if(type(p)!=type(NIL)){device(1) format("FF")=p; n=n+1;}}
bye abs
EOT
cat > cli.orv <<EOT
device(2) ini("UCS") name("127.0.0.1") number($port)
n=0
t=time(0)
while(n<$n){device(2) format("FF")=n; p=NIL; while(type(p)==type(NIL)){p=device(2) format("FF");} n=n+1;}
t=time(1)
print("orvela: ",$n/t," round trips a second")
bye abs
EOT
once() {
  timeout 120 "$root/$build/orvela" gra=0 ID < srv.orv > srv.out 2>&1 &
  local srv=$!
  sleep 0.5
  timeout 120 "$root/$build/orvela" gra=0 ID < cli.orv 2>&1 | tr -s '\n' ' ' | grep -o "orvela: *[0-9.]* *round trips a second" || true
  wait "$srv" || true
}
best() { sort -t: -k2 -g | tail -1; }
for ((r = 0; r < runs; r++)); do once; done | best
for ((r = 0; r < runs; r++)); do "$root/$build/bench/orvela_plain_udp_echo" $((port + 1)) "$n"; done | best
