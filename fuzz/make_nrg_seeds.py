"""Makes small Nero images for the fuzzer: both versions, disc at once and track at once, with names.

Usage: make_nrg_seeds.py FOLDER
"""
import pathlib
import struct
import sys


def chunk(name, body):
    return name + struct.pack(">I", len(body)) + body


def packs(kind, text):
    data = text.encode("latin-1") + b"\0"
    out = b""
    for i in range(0, len(data), 12):
        out += bytes([kind, 0, i // 12, min(i, 15)]) + data[i:i + 12].ljust(12, b"\0") + b"\0\0"
    return out


def image(second, by_track, kinds):
    offset = ">Q" if second else ">I"
    pregap = 0 if by_track else 150
    body, table, entries, cue = b"", b"", b"", b""
    sector = 0
    for number, (mode, size) in enumerate(kinds, 1):
        begin = len(body)
        body += bytes(size * ((pregap if number == 1 else 0) + 2))
        start = begin + (size * pregap if number == 1 else 0)
        table += bytes(12) + struct.pack(">HHH", size, mode << 8, 1)
        table += b"".join(struct.pack(offset, at) for at in (begin, start, len(body)))
        entries += struct.pack(offset, begin) + struct.pack(offset, len(body) - begin)
        entries += struct.pack(">II", mode, sector) + bytes(8 if second else 4)
        place = struct.pack(">i", sector) if second else bytes([0, 0, 2 + sector // 75, sector % 75])
        cue += bytes([1, number, 0, 0]) + place + bytes([1, number, 1, 0]) + place
        sector += 2 + (152 if by_track else 0)
    chain = len(body)
    if by_track:
        body += chunk(b"ETN2" if second else b"ETNF", entries)
    else:
        head = bytes(20) + bytes([1, len(kinds)])
        body += chunk(b"CUEX" if second else b"CUES", cue) + chunk(b"DAOX" if second else b"DAOI", head + table)
    body += chunk(b"CDTX", packs(0x80, "Album\0One") + packs(0x81, "Artist") + packs(0x87, "\0\x17Rock"))
    body += chunk(b"SINF", struct.pack(">I", len(kinds))) + chunk(b"END!", b"")
    return body[chain:], body, (b"NER5" + struct.pack(">Q", chain) if second else b"NERO" + struct.pack(">I", chain))


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    audio, cooked, spaced = (7, 2352), (0, 2048), (0x10, 2448)
    for second in (False, True):
        for by_track in (False, True):
            for name, kinds in (("audio", [audio, audio]), ("mixed", [cooked, audio]), ("spaced", [spaced])):
                # Without the sectors, so that the fuzzer's bytes are the ones that matter: the chain begins at 0.
                chunks, _, footer = image(second, by_track, kinds)
                zero = footer[:4] + bytes(len(footer) - 4)
                (folder / f"{name}-{int(second)}{int(by_track)}.nrg").write_bytes(chunks + zero)


main()
