"""Makes small MP3 files for the fuzzer of what is read from one: frames with and without Xing headers between tags. Two
bytes before each file say how it is read.

Usage: make_mp3_seeds.py FOLDER
"""
import pathlib
import struct
import sys

from make_tag_seeds import id3v1, id3v2, sound


def xing(flags, frames, size):
    return b"Xing" + struct.pack(">III", flags, frames, size)


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    text = (b"TIT2", b"\0Title", 0)
    seeds = {
        "plain": bytes(2) + sound() + id3v1(),
        "untagged": bytes(2) + sound(),
        "short": bytes(2) + sound()[:20],
        "version2": bytes(2) + sound(b"\xff\xf3\x40\xc4", 208) + id3v1(),
        "xing": bytes(2) + sound(mark=xing(3, 1000, 418909)) + id3v1(),
        "xing_frames": bytes(2) + sound(mark=xing(1, 1000, 0)) + id3v1(),
        "xing_none": bytes(2) + sound(mark=xing(3, 0, 418909)) + id3v1(),
        "xing_long": bytes(2) + sound(mark=xing(3, 0xFFFFFFFF, 1)) + id3v1(),
        "id3v2": bytes(2) + id3v2(3, text) + sound() + id3v1(),
        "id3v2_4": bytes(2) + id3v2(4, text) + sound() + id3v1(),
        "id3v2_blank": bytes(2) + b"ID3\3\0\0\0\0\0\x10" + b" " * 16 + sound(),
        "id3v2_cut": bytes(2) + b"ID3\3\xff\xfb",
        "late": b"\0\xd2" + sound(mark=xing(3, 1000, 418909)) + id3v1(),
        "unmarked": b"\2\0" + sound() + bytes(3) + id3v1()[3:],
    }
    for name, data in seeds.items():
        (folder / name).write_bytes(data)


if __name__ == "__main__":
    main()
