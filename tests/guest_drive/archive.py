"""The file system that a guest starts with: an archive in the "new ASCII" form of cpio, as the kernel unpacks it."""
import pathlib
import re
import stat
import subprocess


class Archive:
    def __init__(self):
        self.entries = {}  # name: mode, bytes

    def folder(self, name):
        path = pathlib.PurePosixPath(name)
        for part in [*reversed(path.parents), path]:
            if str(part) != ".":
                self.entries.setdefault(str(part), (stat.S_IFDIR | 0o755, b""))

    def add(self, name, file, mode=0o644):
        self.folder(str(pathlib.PurePosixPath(name).parent))
        self.entries[name] = (stat.S_IFREG | mode, pathlib.Path(file).read_bytes())

    def text(self, name, text):
        self.entries[name] = (stat.S_IFREG | 0o644, text.encode())

    def program(self, name, file):
        """A program with all libraries that it is linked with."""
        self.add(name, file, 0o755)
        listed = subprocess.run(["ldd", str(file)], capture_output=True, text=True).stdout
        for library in re.findall(r"(/\S+) \(0x", listed):
            self.add(library.lstrip("/"), library, 0o755)

    def write(self, target):
        with target.open("wb") as out:
            for number, (name, (mode, data)) in enumerate([*self.entries.items(), ("TRAILER!!!", (0, b""))]):
                encoded = name.encode() + b"\0"
                fields = [number, mode, 0, 0, 1, 0, len(data), 0, 0, 0, 0, len(encoded), 0]
                header = b"070701" + b"".join(b"%08X" % field for field in fields)
                for part in (header + encoded, data):
                    out.write(part + b"\0" * (-len(part) % 4))
