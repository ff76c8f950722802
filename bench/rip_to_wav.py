#!/usr/bin/env python3
"""Rips a 640 MB image of 12 tracks to WAV files, beside a plain copy of the same bytes and beside cd-paranoia.

    bench/rip_to_wav.py [BUILD-FOLDER] [ROUNDS]

The three take turns on the same disk with a warm page cache; for each the best round counts, and the ratios of the
rounds are printed too. Also times `tonquay list`.
"""
import os
import pathlib
import shutil
import sys
import tempfile

from image_runs import make_image, run, tell, tell_ratio

build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/bench").resolve()
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 7
tracks, sectors = 12, 12 * 22_676  # 640 MB

with tempfile.TemporaryDirectory(dir=os.environ.get("TONQUAY_BENCH_DIR", ".")) as name:
    work = pathlib.Path(name).resolve()
    sheet = make_image(work, tracks, sectors)
    tonquay = str(build / "src/tonquay")
    peers = {
        "tonquay rip": [tonquay, "rip", "-q", "-f", "wav", "-n", "number", "-d", "none", "-o", str(work / "out"),
                        str(sheet)],
        "plain copy": [str(build / "bench/plain_copy"), str(work / "big.bin"), str(work / "out"), str(tracks)],
    }
    if shutil.which("cd-paranoia"):
        peers["cd-paranoia -Z -B"] = ["cd-paranoia", "-q", "-Z", "-B", "-d", str(sheet)]
    results = {peer: [] for peer in peers}
    for command in peers.values():
        run(command, work / "out")
    for _ in range(rounds):
        for peer, command in peers.items():
            results[peer].append(run(command, work / "out"))
    for peer, runs in results.items():
        tell(peer, runs)
    for peer, runs in results.items():
        tell_ratio(peer, runs, "plain copy", results["plain copy"])
    listing = [run([tonquay, "list", str(sheet)], work / "out") for _ in range(15)]
    print(f"tonquay list       best {min(listing)[0] * 1000:.1f} ms, worst {max(listing)[0] * 1000:.1f} ms, "
          f"{max(r[2] for r in listing) / 1024:.1f} MiB")
