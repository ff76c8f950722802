#!/usr/bin/env python3
"""Reads the tags of 10,000 MP3 files in one call of `tonquay tags --json`, beside a plain loop of TagLib; and by the tag
page's own readers alone, beside a program that opens each file and reads its first 4 KiB and its last 128 bytes.

    bench/tags.py [BUILD-FOLDER] [ROUNDS] [FILES]

The files lie in memory (/dev/shm, or TONQUAY_BENCH_DIR): ID3v2.3 with and without a picture, ID3v2.4, ID3v1, variable
bitrate, and none. All take turns; the best of each counts, since whatever else the machine does only adds. The memory
of a call over a tenth of the files stands beside that of the whole call.
"""
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/bench").resolve()
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 7
count = int(sys.argv[3]) if len(sys.argv) > 3 else 10_000
tonquay = str(build / "src/tonquay")
readers = str(build / "bench/tag_readers")


def sounds(folder):
    """Some seconds of plucked strings, at one bitrate and at many."""
    wav = folder / "sound.wav"
    subprocess.run(["sox", "-q", "-R", "-n", "-r", "44100", "-b", "16", "-c", "2", str(wav), "synth", "6", "pluck", "C3",
                    "pluck", "E4"], check=True)
    streams = []
    for switches in (["-b", "128"], ["-V", "2"], ["-t", "-b", "128"]):
        subprocess.run(["lame", "--quiet", *switches, str(wav), str(folder / "sound.mp3")], check=True)
        streams.append((folder / "sound.mp3").read_bytes())
    return streams


def id3v2(version, number, picture):
    """A tag of that version: titles in UTF-16 or UTF-8, the rest in Latin-1."""
    def frame(name, body):
        size = len(body)
        groups = [size >> 21 & 127, size >> 14 & 127, size >> 7 & 127, size & 127]
        return name + (bytes(groups) if version == 4 else size.to_bytes(4, "big")) + b"\0\0" + body

    title = f"Titel № {number}"
    text = b"\1" + title.encode("utf-16") if version == 3 else b"\3" + title.encode()
    frames = frame(b"TIT2", text) + frame(b"TPE1", b"\0Ann Lee") + frame(b"TALB", b"\0First Light")
    frames += frame(b"TYER" if version == 3 else b"TDRC", b"\0" + b"2001") + frame(b"TRCK", b"\0" + b"7")
    if picture:
        frames += frame(b"APIC", b"\0image/jpeg\0\3\0" + os.urandom(30_000))
    frames += bytes(512)
    size = len(frames)
    return (b"ID3" + bytes([version, 0, 0, size >> 21 & 127, size >> 14 & 127, size >> 7 & 127, size & 127]) + frames)


def id3v1(number):
    return (b"TAG" + f"Title {number}".encode().ljust(30, b"\0") + b"Ann Lee".ljust(30, b"\0") +
            b"First Light".ljust(30, b"\0") + b"2001" + b"made".ljust(28, b"\0") + bytes([0, 7, 17]))


def make_files(folder):
    constant, variable, bare = sounds(folder)
    made = []
    for number in range(count):
        sort = number % 6
        content = [lambda: id3v2(3, number, False) + constant, lambda: id3v2(3, number, True) + constant,
                   lambda: id3v2(4, number, False) + variable, lambda: constant + id3v1(number),
                   lambda: id3v2(4, number, True) + bare + id3v1(number), lambda: variable][sort]()
        made.append(folder / f"{number:05}.mp3")
        made[-1].write_bytes(content)
    return [str(path) for path in made]


def seconds(way):
    """Of the whole process; the page's readers and the floor print their own seconds, without the list and the start."""
    began = time.monotonic()
    if way == "tonquay tags":
        subprocess.run(ours, check=True, stdout=subprocess.DEVNULL)
    elif way == "taglib":
        subprocess.run([readers, way], input=listed, check=True, stdout=subprocess.DEVNULL)
    else:
        return float(subprocess.run([readers, way], input=listed, check=True, stdout=subprocess.PIPE).stdout)
    return time.monotonic() - began


def mebibytes(names):
    """The most memory that a call has had when a few hundred of its files are still to come: too many for the pipe, so
    it waits there."""
    child = subprocess.Popen([tonquay, "tags", "--json", *names], stdout=subprocess.PIPE)
    for _ in range(len(names) - 400):
        child.stdout.readline()
    status = pathlib.Path(f"/proc/{child.pid}/status").read_text()
    child.stdout.read()
    if child.wait():
        sys.exit("tonquay failed")
    return int(status.partition("VmHWM:")[2].split()[0]) / 1024


with tempfile.TemporaryDirectory(dir=os.environ.get("TONQUAY_BENCH_DIR", "/dev/shm")) as name:
    files = make_files(pathlib.Path(name))
    ours = [tonquay, "tags", "--json", *files]
    listed = "".join(file + "\n" for file in files).encode()
    times = {way: [] for way in ("tonquay tags", "taglib", "page", "floor")}
    for round in range(rounds + 1):
        for way, spent in times.items():
            took = seconds(way)
            if round:  # the first one warms up
                spent.append(took)
    best = {way: min(spent) for way, spent in times.items()}
    for way, spent in times.items():
        print(f"{way:13} {best[way]:.4f} s  (median {statistics.median(spent):.4f}, worst {max(spent):.4f})")
    print(f"tonquay tags / TagLib  {best['tonquay tags'] / best['taglib']:.2f}  (goal 1.2)")
    print(f"page / floor           {best['page'] / best['floor']:.2f}  (goal 2)")
    few = mebibytes(files[:count // 10])
    print(f"memory                 {mebibytes(files):.1f} MiB, {few:.1f} MiB for a tenth of the files")
