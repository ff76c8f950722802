#!/usr/bin/env python3
"""Rips an image of 8 tracks by each method to WAV files: Burst beside the default, Synchronous and Normal beside
cd-paranoia -Y -B and -B.

    bench/rip_methods.py [BUILD-FOLDER] [ROUNDS]

All take turns on the same disk with a warm page cache.
"""
import os
import pathlib
import sys
import tempfile

from image_runs import make_image, run, tell, tell_ratio

build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/bench").resolve()
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 5
tracks, sectors = 8, 8 * 15_000  # 282 MB

with tempfile.TemporaryDirectory(dir=os.environ.get("TONQUAY_BENCH_DIR", ".")) as name:
    work = pathlib.Path(name).resolve()
    sheet = str(make_image(work, tracks, sectors))

    def rip(method):
        return [str(build / "src/tonquay"), "rip", "-q", "-f", "wav", "-n", "number", "-d", "none",
                "-o", str(work / "out"), "--method", method, sheet]

    pairs = {
        ("burst", "default"): (rip("burst"), rip("digital2")),
        ("synchronous", "cd-paranoia -Y -B"): (rip("synchronous"), ["cd-paranoia", "-q", "-Y", "-B", "-d", sheet]),
        ("normal", "cd-paranoia -B"): (rip("normal"), ["cd-paranoia", "-q", "-B", "-d", sheet]),
    }
    for (ours, theirs), (our_command, their_command) in pairs.items():
        our_runs, their_runs = [], []
        for number in range(rounds + 1):
            runs = run(our_command, work / "out"), run(their_command, work / "out")
            # The first round warms the cache.
            if number > 0:
                our_runs.append(runs[0])
                their_runs.append(runs[1])
        tell(ours, our_runs)
        tell(theirs, their_runs)
        tell_ratio(ours, our_runs, theirs, their_runs)
