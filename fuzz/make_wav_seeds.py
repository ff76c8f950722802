"""Makes pairs of WAV files for the fuzzer, each pair one seed: it reads the second with what the first has left.

Usage: make_wav_seeds.py FOLDER
"""
import pathlib
import struct
import sys


def wav(rate, channels, bits, data=bytes(100)):
    block = channels * bits // 8
    return (b"RIFF" + struct.pack("<I", 36 + len(data)) + b"WAVEfmt " +
            struct.pack("<IHHIIHH", 16, 1, channels, rate, rate * block, block, bits) + b"data" +
            struct.pack("<I", len(data)) + data)


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for rate in (8000, 11025, 22050, 32000, 44100, 48000, 96000):
        (folder / f"{rate}").write_bytes(wav(44100, 2, 16) + wav(rate, 1, 8))
    (folder / "cut").write_bytes(wav(44100, 2, 16)[:30] + wav(44100, 0, 0)[:30])
    (folder / "large").write_bytes(wav(48000, 0x7FFF, 0x0010) + wav(48000, 0x8001, 8))
    (folder / "base").write_bytes(b"\x0a\x100123456789")


if __name__ == "__main__":
    main()
