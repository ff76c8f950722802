"""Makes files with an ID3v2 tag for the fuzzer, behind two bytes that choose a frame to set and the length of its value.

Usage: make_id3v2_seeds.py FOLDER
"""
import pathlib
import sys


def sized(size):
    return bytes(size >> shift & 127 for shift in (21, 14, 7, 0))


def frame(name, body, flags=b"\0\0"):
    return name + sized(len(body)) + flags + body


def tag(body, version=3):
    return b"ID3" + bytes([version, 0, 0]) + sized(len(body)) + body


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    sound = b"\xff\xfb\x90\x64" + bytes(60)
    title = frame(b"TIT2", b"\0Title\0")
    others = (frame(b"COMM", b"\0engD\0Hi\0") + frame(b"WXXX", b"\0home\0http://x\0") +
              frame(b"TPE1", b"\1\xff\xfeA\0", b"\xc0\x20") + frame(b"APIC", bytes(40)))
    seeds = {
        "none": b"\2\5" + sound,
        "title": b"\2\5" + tag(title + bytes(242)) + sound,
        "all": b"\7\300" + tag(title + others + bytes(100)) + sound,
        "nothing": b"\4\0" + tag(b"") + sound,
        "empty_frames": b"\1\1" + tag(title + frame(b"TALB", b"") + frame(b"COMM", b"") + frame(b"WXXX", b"")) + sound,
        "short": b"\3\1" + tag(title)[:20],
        "far": b"\14\1" + tag(frame(b"APIC", bytes(970)) + title + others) + sound,
        "version4": b"\1\1" + tag(title + bytes(20), 4) + sound,
        "all_of_it": b"\1\1" + b"ID3\3\0\0" + sized(10 + len(title)) + title,
    }
    for name, data in seeds.items():
        (folder / name).write_bytes(data)


if __name__ == "__main__":
    main()
