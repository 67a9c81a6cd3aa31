# The scene of the display benchmarks, as console lines: 50 red lit balls
# of 64 x 32 facets in five rows of ten, seen from (0,0,-1000).
balls_scene() {
  echo "no edit"
  for v in $(seq 1 50); do
    echo "ball($v) dim(20) secx(64) secy(32)"
    echo "tran($(( (v - 1) % 10 * 60 - 270 )),$(( (v - 1) / 10 * 60 - 120 )),0) vol($v)"
  done
  echo "col vol(1-50)=1,0,0"
  echo "eye(0,0,-1000)"
  echo "yes illum"
}
