#!/usr/bin/env python3
"""Rips a disc of 12 tracks to WMA (128 kbps), beside `ffmpeg -c:a wmav2` on ready WAV files, one after the other.

    bench/rip_to_wma.py [BUILD-FOLDER] [ROUNDS] [MINUTES-A-TRACK] [TRACKS]

Ours reads the disc, encodes it and judges each file; ffmpeg finds the sound extracted. The two take turns; the medians
count. The image and all files lie in memory (/dev/shm, or TONQUAY_BENCH_DIR).
"""
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

from image_runs import make_music

build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/bench").resolve()
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 5
seconds = int(float(sys.argv[3]) * 60) if len(sys.argv) > 3 else 240
tracks = int(sys.argv[4]) if len(sys.argv) > 4 else 12


def timed(*commands):
    began = time.monotonic()
    for command in commands:
        subprocess.run(command, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
    return time.monotonic() - began


def rip(work, form, *more):
    out = work / form
    shutil.rmtree(out, ignore_errors=True)
    return timed([str(build / "src/tonquay"), "rip", "-q", "-f", form, "-n", "number", "-d", "none", "-o", str(out),
                  *more, str(work / "disc.cue")])


def by_hand(work):
    return timed(*(["ffmpeg", "-y", "-i", str(wav), "-c:a", "wmav2", "-b:a", "128k", str(work / (wav.stem + ".wma"))]
                   for wav in sorted((work / "wav").glob("*.wav"))))


with tempfile.TemporaryDirectory(dir=os.environ.get("TONQUAY_BENCH_DIR", "/dev/shm")) as name:
    work = pathlib.Path(name)
    make_music(work, tracks, seconds)
    rip(work, "wav")
    ours, theirs = [], []
    for _ in range(rounds):
        ours.append(rip(work, "wma", "-b", "128"))
        theirs.append(by_hand(work))
    mine, peer = statistics.median(ours), statistics.median(theirs)
    print(f"ours {mine:.2f} s ({min(ours):.2f} to {max(ours):.2f}), ffmpeg {peer:.2f} s ({min(theirs):.2f} to "
          f"{max(theirs):.2f}), ratio {mine / peer:.3f}")
