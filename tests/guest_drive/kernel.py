"""Debian's kernel for a guest: an installed one, else one that is downloaded and unpacked, never installed."""
import dataclasses
import pathlib
import re
import subprocess


@dataclasses.dataclass
class Kernel:
    image: pathlib.Path
    modules: pathlib.Path


def kernel_below(root):
    for modules in sorted((root / "lib/modules").glob("*-amd64"), reverse=True):
        image = root / "boot" / f"vmlinuz-{modules.name}"
        if image.exists() and (modules / "kernel").is_dir():
            return Kernel(image, modules / "kernel")
    return None


def download(folder):
    folder.mkdir(parents=True, exist_ok=True)
    depends = subprocess.run(["apt-cache", "depends", "linux-image-amd64"], capture_output=True, text=True)
    package = re.search(r"Depends: (linux-image-\S+)", depends.stdout)
    if not package:
        return
    if subprocess.run(["apt-get", "download", package.group(1)], cwd=folder, capture_output=True).returncode:
        return
    for file in folder.glob("linux-image-*.deb"):
        files = subprocess.Popen(["dpkg-deb", "--fsys-tarfile", file.name], cwd=folder, stdout=subprocess.PIPE)
        subprocess.run(["tar", "-x", "--wildcards", "./boot/vmlinuz-*", "./lib/modules/*/kernel/drivers/usb",
                        "./lib/modules/*/kernel/drivers/scsi", "./lib/modules/*/kernel/drivers/cdrom"],
                       cwd=folder, stdin=files.stdout, check=False)
        files.wait()
        file.unlink()


def find_kernel(work):
    own = work / "kernel"
    found = kernel_below(pathlib.Path("/")) or kernel_below(own)
    if not found:
        download(own)
        found = kernel_below(own)
    return found


def modules_of(kernel, names):
    """The modules' files in the order of the names; what is built into the kernel has none. None when nothing is there
    that could make a drive appear."""
    files = []
    for name in names:
        files += [file for file in kernel.modules.rglob(f"{name}.ko")][:1]
    return files if any(file.name == "vhci-hcd.ko" for file in files) else None
