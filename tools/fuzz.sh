#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (AddressSanitizer and UBSan on,
# both halting on the first error) and runs each for the given number of
# seconds (default 120). A target's seeds in tests/fuzz/corpus/TARGET are
# read along with the corpus it grows in build-fuzz/corpus/TARGET.
#   tools/fuzz.sh [seconds] [target...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-120}
shift || true
missing=""
command -v clang++ >/dev/null || missing="clang"
dpkg-query -W -f='${Status}' libclang-rt-14-dev 2>/dev/null | grep -q "install ok installed" || missing="$missing libclang-rt-14-dev"
if [ -n "$missing" ]; then
  sudo=""; [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq && DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq $missing >/dev/null
fi
CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DORVELA_FUZZ=ON -DORVELA_TESTS=OFF >/dev/null
cmake --build build-fuzz -j2 >/dev/null
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=($(cd build-fuzz && ls fuzz_* 2>/dev/null))
export ASAN_OPTIONS=halt_on_error=1:abort_on_error=1
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
for t in "${targets[@]}"; do
  mkdir -p "build-fuzz/corpus/$t"
  seeds=()
  [ -d "tests/fuzz/corpus/$t" ] && seeds=("tests/fuzz/corpus/$t")
  echo "== $t for ${seconds}s"
  ./build-fuzz/"$t" -max_total_time="$seconds" -max_len=4096 -timeout=10 -print_final_stats=1 \
    "build-fuzz/corpus/$t" "${seeds[@]}" 2>&1 | grep -E "stat::number_of_executed_units|stat::peak_rss|ERROR|SUMMARY|runtime error|Done" || true
done
