#!/usr/bin/env python3
"""Times the start of the ripper's window beside a window of a list and ten keys, from exec to painted and idle.

    bench/window_start.py [BUILD-FOLDER] [ROUNDS]

The two take turns; the medians count. Needs a display (xvfb-run does) and a disc image, which make_demo_disc makes.
"""
import os
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile
import time

build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/bench").resolve()
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 20


def start(arguments, environment):
    began = time.monotonic()
    said = subprocess.run([str(build / "bench/window_start"), *arguments], env=environment, check=True, text=True,
                          capture_output=True).stdout
    return time.monotonic() - began, int(re.search(r"(\d+) KiB", said).group(1)) / 1024


with tempfile.TemporaryDirectory() as name:
    home = pathlib.Path(name)
    subprocess.run([build / "tools/make_demo_disc", home / "demo"], check=True)
    environment = {**os.environ, "HOME": name, "TONQUAY_DISCS": str(home / "demo/demo.cue")}
    for variable in ("XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"):
        environment.pop(variable, None)
    folder = home / "program"
    folder.mkdir()
    fields = ['"Ann"', '"Light"', "3", *['"Title"'] * 3, *['""'] * 97, '""', '""', '""', '"D"']
    deck, plain = [], []
    for _ in range(rounds + 1):
        (folder / "audiocd.dat").write_text("\r\n".join(fields) + "\r\n")
        deck.append(start(["deck", str(folder)], environment))
        plain.append(start(["plain"], environment))
    for what, at, unit in (("from exec to idle", 0, "s"), ("memory", 1, "MiB")):
        # The first of each finds nothing in the cache.
        ours, peer = (statistics.median(run[at] for run in runs[1:]) for runs in (deck, plain))
        print(f"{what}: ours {ours:.3f} {unit}, plain window {peer:.3f} {unit}, ratio {ours / peer:.2f}")
