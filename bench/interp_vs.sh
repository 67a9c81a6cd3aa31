#!/usr/bin/env bash
# The interpreter against lua5.4 and python3 on the same work, in one run,
# with the ratios:
#   sum    a scalar loop summing 1..10,000,000
#   fib    a recursive fib(30)
#   vec    100,000 additions of two 1,000-element vectors
#   array  10,000 passes of a[i]=a[i]*0.5+b[i] over 1,000 elements
#   call   a user function called 1,000,000 times from a loop
# Each figure is the CPU time (user + system) of the whole process, the
# least of RUNS runs (5 by default): the machine may be shared, and the
# least is the one the others disturbed least.
# Usage: bench/interp_vs.sh [path/to/orvela]
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(realpath "${1:-build/orvela}")
runs=${RUNS:-5}
if ! command -v lua5.4 >/dev/null; then
  sudo=""; [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq && $sudo apt-get install -y -qq lua5.4 >/dev/null
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

cat > fib.orv <<'X'
func = "fib(n){ if(n<2) return(n); return(fib(n-1)+fib(n-2)); }"
fib(30)
X
cat > fib.lua <<'X'
local function fib(n) if n < 2 then return n end return fib(n - 1) + fib(n - 2) end
print(fib(30))
X
cat > fib.py <<'X'
def fib(n):
    if n < 2:
        return n
    return fib(n - 1) + fib(n - 2)
print(fib(30))
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

cat > array.orv <<'X'
n=1000; a=[1,n]; b=[n,1]; for(k=1,10000){for(i=0,n-1){a[i]=a[i]*0.5+b[i];}} a[0]
X
cat > array.lua <<'X'
local n = 1000
local a, b = {}, {}
for i = 1, n do a[i] = i; b[i] = n + 1 - i end
for k = 1, 10000 do
  for i = 1, n do a[i] = a[i] * 0.5 + b[i] end
end
print(a[1])
X
cat > array.py <<'X'
n = 1000
a = [float(i) for i in range(1, n + 1)]
b = [float(n + 1 - i) for i in range(1, n + 1)]
for k in range(10000):
    for i in range(n):
        a[i] = a[i] * 0.5 + b[i]
print(a[0])
X

cat > call.orv <<'X'
func = "f(x){ return(x*x+1); }"
s=0; for(i=1,1000000){s=s+f(i);} s
X
cat > call.lua <<'X'
local function f(x) return x * x + 1 end
local s = 0
for i = 1, 1000000 do s = s + f(i) end
print(s)
X
cat > call.py <<'X'
def f(x):
    return x * x + 1
s = 0
for i in range(1, 1000001):
    s = s + f(i)
print(s)
X

# The least CPU time, in seconds, of `runs` runs of a command reading
# its standard input from a file.
cat > cpu.py <<'X'
import resource, subprocess, sys
runs, stdin, cmd = int(sys.argv[1]), sys.argv[2], sys.argv[3:]
best = float("inf")
for _ in range(runs):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    with open(stdin) as f:
        subprocess.run(cmd, stdin=f, stdout=subprocess.DEVNULL, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    best = min(best, after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime)
print("%.4f" % best)
X

printf "%-6s %10s %10s %10s %12s %12s\n" work orvela lua5.4 python3 orvela/lua orvela/python
for w in sum fib vec array call; do
  o=$($py cpu.py "$runs" "$w.orv" "$bin" gra=0 ID)
  l=$($py cpu.py "$runs" /dev/null lua5.4 "$w.lua")
  p=$($py cpu.py "$runs" /dev/null "$py" "$w.py")
  awk -v w="$w" -v o="$o" -v l="$l" -v p="$p" 'BEGIN {
    printf "%-6s %8.1f ms %7.1f ms %7.1f ms %12.2f %12.2f\n", w, o * 1000, l * 1000, p * 1000, o / l, o / p }'
done
