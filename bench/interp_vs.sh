#!/usr/bin/env bash
# The interpreter against lua5.4 and python3 on the same work, timed side
# by side with hyperfine; prints the ratios.
#   (a) a scalar loop summing 1..10,000,000
#   (b) 100,000 additions of two 1,000-element vectors
#   (c) a recursive fib(25)
# Usage: bench/interp_vs.sh [path/to/orvela]
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(realpath "${1:-build/orvela}")
need=""
command -v hyperfine >/dev/null || need="$need hyperfine"
command -v lua5.4 >/dev/null || need="$need lua5.4"
if [ -n "$need" ]; then
  sudo=""; [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq && $sudo apt-get install -y -qq $need >/dev/null
fi
py=/usr/bin/python3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

cat > sum.orv <<'X'
s=0; for(i=1,10000000){s=s+i;} s
X
cat > sum.lua <<'X'
local s = 0
for i = 1, 10000000 do s = s + i end
print(s)
X
cat > sum.py <<'X'
s = 0
for i in range(1, 10000001):
    s = s + i
print(s)
X
cat > vec.orv <<'X'
a=[1,1000]; b=[1000,1]; for(k=1,100000){c=a+b;} c[999]
X
cat > vec.lua <<'X'
local a, b = {}, {}
for i = 1, 1000 do a[i] = i; b[i] = 1001 - i end
local c
for k = 1, 100000 do
  c = {}
  for i = 1, 1000 do c[i] = a[i] + b[i] end
end
print(c[1000])
X
cat > vec.py <<'X'
a = [float(i) for i in range(1, 1001)]
b = [float(1001 - i) for i in range(1, 1001)]
for k in range(100000):
    c = [x + y for x, y in zip(a, b)]
print(c[999])
X

cat > fib.orv <<'X'
func = "fib(n){ if(n<2) return(n); return(fib(n-1)+fib(n-2)); }"
fib(25)
X
cat > fib.lua <<'X'
local function fib(n) if n < 2 then return n end return fib(n - 1) + fib(n - 2) end
print(fib(25))
X
cat > fib.py <<'X'
def fib(n):
    if n < 2:
        return n
    return fib(n - 1) + fib(n - 2)
print(fib(25))
X

run() {  # name
  hyperfine --warmup 1 --runs 5 --export-json "$1.json" \
    -n orvela "$bin gra=0 ID < $1.orv" -n lua "lua5.4 $1.lua" -n python "$py $1.py" >/dev/null
  awk -v name="$1" '
    /"command":/ { gsub(/[",]/, "", $2); cmd = $2 }
    /"median":/ { gsub(/,/, "", $2); t[cmd] = $2 }
    END {
      printf "%s: orvela %.3f s, lua5.4 %.3f s, python3 %.3f s\n", name, t["orvela"], t["lua"], t["python"]
      printf "%s: lua/orvela %.2f, python/orvela %.2f\n", name, t["lua"] / t["orvela"], t["python"] / t["orvela"]
    }' "$1.json"
}
run sum
run vec
run fib
