#!/usr/bin/env bash
# Installs what is missing, builds ORVELA, then runs it or its tests.
#   tools/build.sh run [options...]   build and start orvela
#   tools/build.sh test               build (plain and sanitized) and run every test
set -euo pipefail
cd "$(dirname "$0")/.."

PACKAGES="build-essential cmake libgtest-dev freeglut3-dev libglu1-mesa-dev mesa-common-dev libgl1-mesa-dri libx11-dev libedit-dev xvfb xauth xdotool libpng-dev libjpeg62-turbo-dev libasound2-dev python3 sox lua5.4 libfftw3-dev libegl-dev libegl-mesa0 zlib1g-dev ffmpeg liblo-dev liblo-tools pkg-config"

install_missing() {
  local missing=""
  for p in $PACKAGES; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing="$missing $p"
  done
  [ -z "$missing" ] && return 0
  echo "installing:$missing"
  local sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq $missing >/dev/null
}

build() {  # build DIR [cmake options...]
  local dir=$1; shift
  mkdir -p "$dir"
  if ! { cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" && cmake --build "$dir" -j2; } \
      >"$dir/build.log" 2>&1; then
    tail -n 60 "$dir/build.log"
    echo "build failed in $dir (full log: $dir/build.log)" >&2
    exit 1
  fi
  grep -E "warning:" "$dir/build.log" || true
}

cmd=${1:-run}
shift || true
install_missing
case "$cmd" in
  run)
    build build
    exec ./build/orvela "$@"
    ;;
  test)
    build build
    (cd build && ctest --output-on-failure -j2)
    build build-asan -DORVELA_SANITIZE=ON
    (cd build-asan && ASAN_OPTIONS=detect_leaks=1 ctest --output-on-failure -j2)
    ;;
  *)
    echo "usage: tools/build.sh run [options] | tools/build.sh test" >&2
    exit 2
    ;;
esac
