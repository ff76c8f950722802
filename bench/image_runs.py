"""What the benchmarks of whole rips share: made images, and one run of a program over them."""
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
    return write_sheet(folder / "big.bin", tracks)


def make_music(folder, tracks, seconds):
    """Music of a kind: plucked strings over soft noise, other notes in every track; returns the sheet."""
    with (folder / "disc.bin").open("wb") as image:
        for track in range(tracks):
            notes = [f"%{track * 2 - 9 + step}" for step in (0, 4, 7)]
            subprocess.run(["sox", "-q", "-R", "-n", "-r", "44100", "-b", "16", "-c", "2", "-t", "raw", "-",
                            "synth", "2", *sum((["pluck", note] for note in notes), []), "synth", "2", "brownnoise",
                            "mix", "0.1", "repeat", str(seconds // 2 - 1), "gain", "-3"], check=True, stdout=image,
                           stderr=subprocess.DEVNULL)
    return write_sheet(folder / "disc.bin", tracks)


def write_sheet(image, tracks):
    """A sheet beside the image, with names and tracks of one length; returns it."""
    sectors = image.stat().st_size // 2352
    sheet = ['PERFORMER "Bench"', 'TITLE "Disc"', f'FILE "{image.name}" BINARY']
    for track in range(tracks):
        first = track * sectors // tracks
        sheet += [f"  TRACK {track + 1:02} AUDIO",
                  f"    INDEX 01 {first // 4500:02}:{first // 75 % 60:02}:{first % 75:02}"]
    path = image.with_suffix(".cue")
    path.write_text("\n".join(sheet) + "\n")
    return path


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
