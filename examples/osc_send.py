#!/usr/bin/env python3
# Sends the ball of osc_ball.func round a circle, changing its colour, by
# OSC to port 9000 (another host: osc_send.py HOST). Uses pyliblo3 when it
# is installed, the oscsend program of liblo-tools otherwise.
import math
import shutil
import subprocess
import sys
import time

host = sys.argv[1] if len(sys.argv) > 1 else "127.0.0.1"
try:
    import pyliblo3 as liblo

    target = liblo.Address(host, 9000)

    def send(address, *values):
        liblo.send(target, address, *values)
except ImportError:
    if not shutil.which("oscsend"):
        sys.exit("osc_send.py needs pyliblo3 or oscsend (apt-get install liblo-tools)")

    def send(address, *values):
        subprocess.run(["oscsend", host, "9000", address, "f" * len(values)] + ["%f" % v for v in values])

t = 0.0
while True:
    send("/scene/ball", math.cos(t), math.sin(2 * t) * 0.6)
    if int(t * 10) % 20 == 0:
        send("/scene/colour", 0.5 + 0.5 * math.cos(t), 0.5 + 0.5 * math.sin(t), 0.6)
    t += 0.05
    time.sleep(0.03)
