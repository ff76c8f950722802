#!/usr/bin/env python3
"""Runs tonquay in a guest that has an optical drive, and holds what it says against the disc's image.

    guest.py --work FOLDER --drive guest_drive --tonquay tonquay

The guest is Debian's kernel with a file system in memory that holds nothing but the programs. Ends with 77, which
skips the test, when there is no qemu or no kernel to be had.
"""
import argparse
import hashlib
import json
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time

from archive import Archive
from kernel import find_kernel, modules_of

SECTOR = 2352
TRACKS = [300, 350, 250]  # sectors
BAD = 400  # in track 2
SKIPPED = 77

# In the order in which they need each other.
MODULES = ["scsi_common", "scsi_mod", "cdrom", "sr_mod", "usb-common", "usbcore", "usb-storage", "usbip-core",
           "vhci-hcd"]
TOOLS = ["sh", "mount", "sleep", "mv", "cat", "tail", "sha256sum", "mkdir", "rm"]


def make_disc(folder):
    image = random.Random(5).randbytes(sum(TRACKS) * SECTOR)
    (folder / "disc.bin").write_bytes(image)
    lines, first = ["device /dev/none", "image /disc.bin"], 0
    for sectors in TRACKS:
        lines.append(f"track audio {first}")
        first += sectors
    return image, "\n".join(lines + [f"lead_out {first}"]) + "\n"


def build_guest(arguments, modules, drive, target):
    archive = Archive()
    here = pathlib.Path(__file__).parent
    for folder in ("proc", "sys", "dev", "tmp"):
        archive.folder(folder)
    archive.add("init", here / "init", 0o755)
    archive.add("checks", here / "checks")
    archive.add("disc.bin", arguments.work / "disc.bin")
    archive.text("drive.base", drive)
    archive.text("modules.txt", "".join(f"/{module.name}\n" for module in modules))
    for module in modules:
        archive.add(module.name, module)
    archive.program("bin/guest_drive", arguments.drive)
    archive.program("bin/tonquay", arguments.tonquay)
    for tool in TOOLS:
        archive.program(f"bin/{tool}", shutil.which(tool))
    archive.write(target)


def run_guest(kernel, initial, log):
    command = ["qemu-system-x86_64", "-accel", "tcg", "-cpu", "max", "-m", "1024", "-nographic", "-no-reboot", "-nodefaults",
               "-serial", f"file:{log}", "-kernel", str(kernel), "-initrd", str(initial),
               "-append", "console=ttyS0 quiet panic=-1 random.trust_cpu=on"]
    began = time.monotonic()
    subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, timeout=240, check=True)
    return time.monotonic() - began


def checks_in(text):
    """Name to (status, output)."""
    found = {}
    for match in re.finditer(r"^== (\S+)\n(.*?)^-- \1 (\d+)$", text.replace("\r", ""), re.S | re.M):
        found[match.group(1)] = (int(match.group(3)), match.group(2))
    return found


def judge(checks, image):
    problems = []

    def expect(name, holds, what):
        if not holds:
            problems.append(f"{name}: {what}")

    def status(name):
        return checks.get(name, (None, ""))[0]

    def output(name):
        return checks.get(name, (None, ""))[1]

    def document(name):
        try:
            return json.loads(output(name))
        except ValueError:
            problems.append(f"{name}: says no JSON: {output(name)[:300]}")
            return None

    drives = document("drives")
    expect("drives", drives and [(d["path"], d["vendor"], d["disc"]) for d in drives] == [("/dev/sr0", "TONQUAY", True)],
           drives)
    table = document("list")
    firsts = [sum(TRACKS[:i]) for i in range(len(TRACKS))]
    expect("list", table and [(t["first_sector"], t["sectors"]) for t in table["tracks"]] == list(zip(firsts, TRACKS)),
           table)

    sums = [hashlib.sha256(image[first * SECTOR:(first + count) * SECTOR]).hexdigest()
            for first, count in zip(firsts, TRACKS)]
    for method in ("digital2", "burst", "synchronous", "normal"):
        expect(f"rip-{method}", status(f"rip-{method}") == 0, output(f"rip-{method}"))
        found = [line.split()[0] for line in output(f"sums-{method}").splitlines()]
        expect(f"sums-{method}", found == sums, f"{found} instead of {sums}")

    seconds = (BAD - TRACKS[0]) // 75
    expect("bad-normal", status("bad-normal") == 1 and f"given up at 0:{seconds:02}" in output("bad-normal") and
           "2 files whole, 1 not" in output("bad-normal"), output("bad-normal"))
    expect("bad-digital2", status("bad-digital2") == 1 and f"sector {BAD} cannot be read" in output("bad-digital2"),
           output("bad-digital2"))
    expect("torn", status("torn") == 1 and "track 1" in output("torn"), output("torn"))
    empty = document("empty")
    expect("empty", empty and not empty[0]["disc"] and "no disc" in empty[0]["problem"].lower(), empty)
    return problems


def main():
    parser = argparse.ArgumentParser()
    for option in ("--work", "--drive", "--tonquay"):
        parser.add_argument(option, type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    if not shutil.which("qemu-system-x86_64"):
        print("SKIPPED: qemu-system-x86_64 is not installed")
        return SKIPPED
    kernel = find_kernel(arguments.work)
    modules = kernel and modules_of(kernel, MODULES)
    if not modules:
        print("SKIPPED: no kernel with these modules is installed or can be downloaded")
        return SKIPPED
    image, drive = make_disc(arguments.work)
    initial, log = arguments.work / "guest.cpio", arguments.work / "guest.log"
    build_guest(arguments, modules, drive, initial)
    seconds = run_guest(kernel.image, initial, log)
    text = log.read_text(errors="replace")
    problems = judge(checks_in(text), image)
    print(text)
    print(f"the guest ran for {seconds:.1f} s")
    for problem in problems:
        print("FAILED", problem)
    return 1 if problems else 0


sys.exit(main())
