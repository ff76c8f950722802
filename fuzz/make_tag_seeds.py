"""Makes small MP3 and Ogg files for the fuzzer: silent frames with every sort of tag, and Vorbis headers with comments.

Usage: make_tag_seeds.py FOLDER
"""
import pathlib
import struct
import sys
import zlib


def synchsafe(value):
    return bytes(value >> shift & 127 for shift in (21, 14, 7, 0))


def id3v2(version, *frames):
    body = b""
    for name, data, flags in frames:
        if version == 2:
            body += name[:3] + struct.pack(">I", len(data))[1:] + data
        else:
            size = synchsafe(len(data)) if version == 4 else struct.pack(">I", len(data))
            body += name + size + b"\0" + bytes([flags]) + data
    return b"ID3" + bytes([version, 0, 0]) + synchsafe(len(body)) + body


def sound(head=b"\xff\xfb\x90\x64", length=417, mark=b""):
    first = (head + bytes(32) + mark).ljust(length, b"\0")
    return first + (head + bytes(length - 4)) * 3


def id3v1():
    return (b"TAG" + b"Title".ljust(30, b"\0") + b"Artist".ljust(30, b"\0")).ljust(126, b"\0") + b"\x03\x11"


def page(kind, granule, number, *packets):
    lacing = b""
    for packet in packets:
        lacing += b"\xff" * (len(packet) // 255) + bytes([len(packet) % 255])
    return (b"OggS\0" + bytes([kind]) + struct.pack("<qIIIB", granule, 1, number, 0, len(lacing)) + lacing +
            b"".join(packets))


def comments(*texts):
    return (b"\x03vorbis" + struct.pack("<I", 1) + b"x" + struct.pack("<I", len(texts)) +
            b"".join(struct.pack("<I", len(text)) + text for text in texts) + b"\x01")


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    wide = "\ufeffT\u00eft \U0001f600".encode("utf-16-le")
    packed = struct.pack(">I", 6) + zlib.compress(b"\0Title")
    head = struct.pack("<IBIiiiBB", 0, 2, 44100, 0, 128000, 0, 0xB8, 1)
    seeds = {
        "plain": sound(),
        "info": sound(mark=b"Info" + struct.pack(">II", 1, 3)) + id3v1(),
        "low": sound(b"\xff\xe3\x40\xc4", 208),
        "v22": id3v2(2, (b"TT2 ", b"\1" + wide, 0), (b"COM ", b"\0eng\0Hey", 0), (b"TRK ", b"\0" + b"3/12", 0)) + sound(),
        "v23": id3v2(3, (b"TIT2", b"\1" + wide, 0), (b"TCON", b"\0(17)", 0), (b"TPE1", packed, 0x80),
                     (b"CHAP", b"a\0" + bytes(16) + b"TIT2\0\0\0\2\0\0\0x", 0), (b"TYER", b"\0" + b"1999", 0)) + sound(),
        "v24": id3v2(4, (b"TIT2", b"\3T\xc3\xaft", 0), (b"TDRC", b"\3" + b"2001-02-03", 2), (b"APIC", bytes(40), 0)) +
               sound() + id3v1(),
        "ogg": page(2, 0, 0, b"\x01vorbis" + head) +
               page(0, 0, 1, comments(b"TITLE=T", b"TRACKNUMBER=3", b"DATE=1999"), b"\x05vorbis" + bytes(20)) +
               page(4, 44100, 2, bytes(60)),
    }
    for name, data in seeds.items():
        (folder / name).write_bytes(data)


if __name__ == "__main__":
    main()
