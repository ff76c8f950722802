#!/usr/bin/env python3
"""Rips a disc of 12 tracks to MP3 (128 kbps) and to Ogg (quality 5), beside the same encoders started by hand.

    bench/encode.py [BUILD-FOLDER] [ROUNDS] [MINUTES-A-TRACK] [TRACKS]

Single stands beside the extraction plus a plain loop of one encoder after the other; Turbo beside the extraction of
the first track plus `xargs -P2`. The two take turns; the medians count. The image and all files lie in memory
(/dev/shm, or TONQUAY_BENCH_DIR). Also prints which part of the run's processor time was our own process's.
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
tonquay = str(build / "src/tonquay")
encoders = {
    "mp3": ["lame", "-h", "-b", "128", "{wav}", "{base}.mp3"],
    "ogg": ["oggenc", "-q5", "{wav}"],
}
bitrates = {"mp3": "128", "ogg": "5"}


def run(command, folder):
    """Wall seconds, our process's own processor seconds, and those of its children."""
    began = time.monotonic()
    child = subprocess.Popen(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                             stderr=subprocess.DEVNULL)
    os.waitid(os.P_PID, child.pid, os.WEXITED | os.WNOWAIT)
    wall = time.monotonic() - began
    fields = pathlib.Path(f"/proc/{child.pid}/stat").read_text().rpartition(")")[2].split()
    own, others = (sum(map(int, fields[at:at + 2])) / os.sysconf("SC_CLK_TCK") for at in (11, 13))
    if child.wait():
        sys.exit(f"{command[0]} ended with status {child.returncode}")
    return wall, own, others


def rip(work, form, schedule, *more):
    shutil.rmtree(work / "out", ignore_errors=True)
    return run([tonquay, "rip", "-q", "-f", form, "-n", "number", "-d", "none", "-o", str(work / "out"),
                *(["-b", bitrates[form], "-s", schedule] if form in bitrates else []), *more,
                str(work / "disc.cue")], work)


def by_hand(work, form, schedule):
    """Extraction by us, then the encoders as a person would start them."""
    extraction = rip(work, "wav", "", *(["-t", "1"] if schedule == "turbo" else []))[0]
    if schedule == "turbo":
        rip(work, "wav", "")
    wavs = sorted((work / "out").glob("*.wav"))
    commands = [[part.format(wav=wav, base=wav.with_suffix("")) for part in encoders[form]] for wav in wavs]
    began = time.monotonic()
    if schedule == "single":
        for command in commands:
            subprocess.run(command, check=True, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    else:
        size = str(len(encoders[form]))
        subprocess.run(["xargs", "-P2", "-0", "-n", size, "env"], check=True, stderr=subprocess.DEVNULL,
                       input="\0".join(sum(commands, [])).encode())
    return extraction + time.monotonic() - began


with tempfile.TemporaryDirectory(dir=os.environ.get("TONQUAY_BENCH_DIR", "/dev/shm")) as name:
    work = pathlib.Path(name)
    make_music(work, tracks, seconds)
    for form in encoders:
        for schedule in ("single", "turbo"):
            ours, theirs = [], []
            for _ in range(rounds):
                ours.append(rip(work, form, schedule))
                theirs.append(by_hand(work, form, schedule))
            own = max(o[1] / (o[1] + o[2]) for o in ours)
            mine, peer = statistics.median(o[0] for o in ours), statistics.median(theirs)
            print(f"{form} {schedule:6}  ours {mine:.2f} s ({min(o[0] for o in ours):.2f} to "
                  f"{max(o[0] for o in ours):.2f}), by hand {peer:.2f} s ({min(theirs):.2f} to {max(theirs):.2f}), "
                  f"ratio {mine / peer:.3f}; own processor time {own:.2%}", flush=True)
