"""What the benchmarks of whole rips share: a made image, and one run of a program over it."""
import os
import shutil
import subprocess
import sys
import time


def make_image(folder, tracks, sectors):
    """Noise that never repeats, as a sheet with one file; returns the sheet."""
    with (folder / "big.bin").open("wb") as out:
        left = sectors * 2352
        while left:
            left -= out.write(os.urandom(min(left, 1 << 20)))
    sheet = ['FILE "big.bin" BINARY']
    for track in range(tracks):
        first = track * sectors // tracks
        sheet += [f"  TRACK {track + 1:02} AUDIO",
                  f"    INDEX 01 {first // 4500:02}:{first // 75 % 60:02}:{first % 75:02}"]
    (folder / "big.cue").write_text("\n".join(sheet) + "\n")
    return folder / "big.cue"


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


def tell(peer, runs):
    best = min(runs)
    print(f"{peer:22} best {best[0]:.3f} s wall, {best[1]:.3f} s processor, {max(r[2] for r in runs) / 1024:.1f} MiB")


def tell_ratio(peer, runs, other, base):
    ratios = sorted(a[0] / b[0] for a, b in zip(runs, base))
    print(f"{peer:22} / {other}: best {min(r[0] for r in runs) / min(r[0] for r in base):.2f}, "
          f"pairs {ratios[0]:.2f} to {ratios[-1]:.2f}, median {ratios[len(ratios) // 2]:.2f}")
