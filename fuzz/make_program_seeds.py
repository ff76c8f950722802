#!/usr/bin/env python3
"""Writes seeds for fuzz_program: what the ripper reads as it starts and what an encoder leaves, zero bytes between.

    make_program_seeds.py FOLDER
"""
import pathlib
import sys

TITLES = ["Dawn", "Noon", "Dusk"] + [""] * 97
HAND_OVER = '"Ann","Light",3,' + ",".join(f'"{title}"' for title in TITLES) + ',"","Rock","2001","D"\r\n'
SOUND = b"sound" * 30


def id3v1():
    texts = [("Dawn", 30), ("Ann", 30), ("Light", 30), ("1999", 4), ("said", 28)]
    return b"TAG" + b"".join(text.encode().ljust(width) for text, width in texts) + b"\x00\x01\x11"


def seed(settings, rip_type="0", encoded=SOUND):
    files = [settings + "\r\n", HAND_OVER, f'"{rip_type}"\r\n', ",".join(["1"] * 15) + ',"C:\\data"', ",".join("1" * 23)]
    return b"\0".join([file.encode() for file in files] + [encoded])


SEEDS = {
    "mp3": seed(r'"D","C:\CDTONQUAY\datacd",0,0,"c:\lame.exe",1,1,0,0,1,8,"","",4,"2",0,0,1,0,0,1,0', encoded=SOUND + id3v1()),
    "turbo": seed(r'"D","C:\m",1,6,"C:\oggtools\oggenc.exe",1,0,1,1,0,13,"-q 5","ogg",4,"1",1,7,0,0,1,0,1'),
    "control": seed(r'"D","C:\CDTONQUAY\datacd",1,3,"C:\b\bladeenc.exe",1,1,0,1,1,0,"","",0,"0",0,0,1,0,0,1,0', "1"),
}

folder = pathlib.Path(sys.argv[1])
folder.mkdir(parents=True, exist_ok=True)
for name, content in SEEDS.items():
    (folder / name).write_bytes(content)
