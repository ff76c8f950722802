#!/usr/bin/env python3
"""Rips a 640 MB image of 12 tracks to WAV files, beside a plain copy of the same bytes and beside cd-paranoia.

    bench/rip_to_wav.py [BUILD-FOLDER] [ROUNDS]

The three take turns on the same disk with a warm page cache; for each the best round counts, and the ratios of the
rounds are printed too. Also times `tonquay list`.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/bench").resolve()
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 7
tracks, sectors = 12, 12 * 22_676  # 640 MB


def make_image(folder):
    image = folder / "big.bin"
    block = os.urandom(1 << 20)
    with image.open("wb") as out:
        left = sectors * 2352
        while left:
            left -= out.write(block[:left])
    sheet = ['FILE "big.bin" BINARY']
    for track in range(tracks):
        first = track * sectors // tracks
        sheet += [f"  TRACK {track + 1:02} AUDIO",
                  f"    INDEX 01 {first // 4500:02}:{first // 75 % 60:02}:{first % 75:02}"]
    (folder / "big.cue").write_text("\n".join(sheet) + "\n")
    return image


def run(command, folder):
    """Wall seconds, processor seconds and peak KiB of one run into an empty folder."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
    os.sync()
    began = time.monotonic()
    child = subprocess.Popen(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                             stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(child.pid, 0)
    wall = time.monotonic() - began
    child.returncode = status
    if status:
        sys.exit(f"{command[0]} ended with status {status}")
    return wall, usage.ru_utime + usage.ru_stime, usage.ru_maxrss


with tempfile.TemporaryDirectory(dir=os.environ.get("TONQUAY_BENCH_DIR", ".")) as name:
    work = pathlib.Path(name).resolve()
    image = make_image(work)
    tonquay = str(build / "src/tonquay")
    peers = {
        "tonquay rip": [tonquay, "rip", "-q", "-f", "wav", "-n", "number", "-d", "none", "-o", str(work / "out"),
                        str(work / "big.cue")],
        "plain copy": [str(build / "bench/plain_copy"), str(image), str(work / "out"), str(tracks)],
    }
    if shutil.which("cd-paranoia"):
        peers["cd-paranoia -Z -B"] = ["cd-paranoia", "-q", "-Z", "-B", "-d", str(work / "big.cue")]
    results = {peer: [] for peer in peers}
    for command in peers.values():
        run(command, work / "out")
    for _ in range(rounds):
        for peer, command in peers.items():
            results[peer].append(run(command, work / "out"))
    for peer, runs in results.items():
        best = min(runs)
        print(f"{peer:18} best {best[0]:.3f} s wall, {best[1]:.3f} s processor, {max(r[2] for r in runs) / 1024:.1f} MiB")
    plain = results["plain copy"]
    for peer, runs in results.items():
        ratios = sorted(a[0] / b[0] for a, b in zip(runs, plain))
        print(f"{peer:18} / plain copy: best {min(r[0] for r in runs) / min(r[0] for r in plain):.2f}, "
              f"pairs {ratios[0]:.2f} to {ratios[-1]:.2f}, median {ratios[len(ratios) // 2]:.2f}")
    listing = [run([tonquay, "list", str(work / "big.cue")], work / "out") for _ in range(15)]
    print(f"tonquay list       best {min(listing)[0] * 1000:.1f} ms, worst {max(listing)[0] * 1000:.1f} ms, "
          f"{max(r[2] for r in listing) / 1024:.1f} MiB")
