"""Installs what was built into an empty folder and looks at it as a desktop does: the exact set of files, the entry of
the menu, the icons, and that the programs find what they look for from where they are."""

import configparser
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

CMAKE, SOURCE, BUILD = sys.argv.pop(1), pathlib.Path(sys.argv.pop(1)), pathlib.Path(sys.argv.pop(1))
PROGRAMS = ["tonquay", "ripdeck", "tqlaunch", "tqutil"]
ENTRY = "share/applications/cd-tonquay.desktop"
ICONS = ["share/icons/hicolor/scalable/apps/cd-tonquay.svg", "share/icons/hicolor/symbolic/apps/cd-tonquay-symbolic.svg"]


class InstalledTree(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        os.umask(0o022)
        cls.root = pathlib.Path(folder.name) / "usr"
        subprocess.run([CMAKE, "--install", BUILD, "--prefix", cls.root], check=True, stdout=subprocess.DEVNULL)

    def test_has_exactly_these_files(self):
        wanted = [f"bin/{program}" for program in PROGRAMS] + [f"share/man/man1/{program}.1" for program in PROGRAMS]
        wanted += ["libexec/cd-tonquay/tonquay-oggtool", ENTRY, *ICONS]
        wanted += [f"share/cd-tonquay/help/{page.name}" for page in (SOURCE / "help").glob("*.html")]
        wanted += ["share/doc/cd-tonquay/README.md", "share/doc/cd-tonquay/CHANGELOG.md"]
        found = [path.relative_to(self.root).as_posix() for path in self.root.rglob("*") if not path.is_dir()]
        self.assertEqual(sorted(found), sorted(wanted))

    def test_everybody_may_read_it_and_start_its_programs(self):
        for path in self.root.rglob("*"):
            mode = path.stat().st_mode & 0o777
            program = path.is_dir() or path.parent.name in ("bin", "cd-tonquay") and path.suffix == ""
            self.assertEqual(mode, 0o755 if program else 0o644, path)

    def test_the_menu_entry_is_valid_and_starts_an_installed_program(self):
        judged = subprocess.run(["desktop-file-validate", self.root / ENTRY], capture_output=True, text=True)
        self.assertEqual((judged.returncode, judged.stdout), (0, ""))
        entry = configparser.RawConfigParser()
        entry.read(self.root / ENTRY)
        command = entry["Desktop Entry"]["exec"].split()
        self.assertTrue(os.access(self.root / "bin" / command[0], os.X_OK))
        self.assertIn(entry["Desktop Entry"]["icon"], [pathlib.Path(icon).stem for icon in ICONS])

    def test_icons_are_drawings_that_fit_every_size(self):
        for icon in ICONS:
            drawing = xml.etree.ElementTree.parse(self.root / icon).getroot()
            self.assertEqual(drawing.tag, "{http://www.w3.org/2000/svg}svg")
            _, _, width, height = drawing.get("viewBox").split()
            self.assertEqual(width, height)

    def test_the_tag_utility_answers_without_a_screen(self):
        def run(*words):
            return subprocess.run([self.root / "bin/tqutil", *words], env={}, capture_output=True, text=True, timeout=20)

        self.assertTrue(run("--help").stdout.startswith("tqutil [FILE]\n"))
        self.assertRegex(run("--version").stdout, r"^tqutil [0-9.]+\n$")
        for wrong in (["--nothing"], ["one.mp3", "two.mp3"]):
            self.assertEqual((run(*wrong).returncode, run(*wrong).stdout), (2, ""))

    def test_the_tag_utility_keeps_nobody_who_hands_it_a_file(self):
        with tempfile.TemporaryDirectory() as home:
            file = pathlib.Path(home) / "song.mp3"
            environment = {"HOME": home, "QT_QPA_PLATFORM": "offscreen", "XDG_RUNTIME_DIR": home}
            starter = subprocess.Popen([self.root / "bin/tqutil", "CDR", file], env=environment, cwd=home,
                                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            self.assertEqual(starter.wait(timeout=20), 0)
            windows = [int(entry.parent.name) for entry in pathlib.Path("/proc").glob("[0-9]*/cmdline")
                       if self.command_of(entry).endswith(f"CDR\0{file}\0")]
            self.assertEqual(len(windows), 1)
            os.kill(windows[0], signal.SIGTERM)

    @staticmethod
    def command_of(entry):
        try:
            return entry.read_text(errors="replace")
        except OSError:
            return ""

    def test_the_build_tree_shows_the_help_beside_its_programs(self):
        self.assertTrue((BUILD / "src/help/1008-ripper.html").samefile(SOURCE / "help/1008-ripper.html"))


if __name__ == "__main__":
    unittest.main()
