"""Makes small Ogg files for the fuzzer: comments of old and new encoders, whole, broken and spread over pages.

Usage: make_oggtag_seeds.py FOLDER
"""
import pathlib
import struct
import sys

sys.dont_write_bytecode = True  # the source tree stays as it is
from make_tag_seeds import page

HEAD = b"\x01vorbis" + struct.pack("<IBIiiiBB", 0, 2, 44100, 0, 128000, 0, 0xB8, 1)
SETUP = b"\x05vorbis" + bytes(20)


def comments(vendor_length, *texts):
    return (b"\x03vorbis" + struct.pack("<I", vendor_length) + bytes(vendor_length) + struct.pack("<I", len(texts)) +
            b"".join(struct.pack("<I", len(text)) + text for text in texts) + b"\x01")


def spread(packet, end):
    """A packet on two pages, the first of which ends with a full segment."""
    begin = page(0, 0, 1)[:26] + b"\x02\xff\xff" + packet[:510]
    return begin + page(1, 0, 2, packet[510:], end)


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    everything = (b"TITLE=T", b"artist=A", b"comment=C\r\n", b"Album=B", b"DATE=1999", b"tracknumber=3", b"GENRE=Rock",
                  b"encoded_using=E")
    first = page(2, 0, 0, HEAD)
    seeds = {
        "old": first + page(0, 0, 1, comments(29, *everything), SETUP),
        "older": first + page(0, 0, 1, comments(32, *everything[::-1]), SETUP),
        "new": first + page(0, 0, 1, comments(52, *everything), SETUP),
        "none": first + page(0, 0, 1, comments(29), SETUP),
        "empty": first + page(0, 0, 1, comments(29, b"title=", b"", b"artist="), SETUP),
        "apart": first + page(0, 0, 1, comments(29, b"comment")) + page(0, 0, 2, SETUP),
        "late": first + bytes(2100) + page(0, 0, 1, comments(29, *everything), SETUP),
        "spread": first + spread(comments(29, b"title=" + b"t" * 600), SETUP),
        "far": first + spread(comments(600, *everything), SETUP),
    }
    for name, data in seeds.items():
        (folder / name).write_bytes(data)


if __name__ == "__main__":
    main()
