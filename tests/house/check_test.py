"""Hands each check a small broken tree, so that none of them is a check that cannot fail."""

import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import check  # noqa: E402

PACKAGES = "build libfmt-dev why\ntest libgtest-dev why\ntest libgmock-dev why\n"


class ChecksFindFaults(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        return path

    def found(self, problems, *wanted):
        problems = list(problems)
        self.assertEqual(len(problems), len(wanted), problems)
        for problem, text in zip(problems, wanted):
            self.assertIn(text, problem)

    def test_upward_includes(self):
        self.write("src/disc/a.cpp", '#include "disc/a.h"\n#include <vector>\n')
        self.found(check.upward_includes(self.root))
        self.write("src/disc/b.cpp", '#include "../rip/r.h"\n')
        self.write("tests/disc/c.cpp", '#  include "disc/../../x.h"\n')
        self.found(check.upward_includes(self.root), "src/disc/b.cpp:1", "tests/disc/c.cpp:1")

    def test_banned_words(self):
        self.write("src/a/fine.cpp", '// never towupper, new Thing(1)\nauto t = "wcout"; int renewed = 1;\n'
                                     "int news(); /* catch (...)\n */ std::filesystem::path(name);\n")
        self.write("src/host/a/cast.cpp", "reinterpret_cast<char*>(p);\n")
        self.found(check.banned_words(self.root))
        for line in ["x = towupper(c);", "std::wcout << 1;", "wprintf(L\"\");", "std::filesystem::path(L\"x\");",
                     "catch (...) {", "auto* p = new Thing(1);", "reinterpret_cast<int*>(p);", "#define X 1",
                     "std::filesystem::path{std::wstring(n)};", "setlocale(LC_ALL, \"\");"]:
            self.write("src/a/bad.cpp", "\n" + line + "\n")
            self.found(check.banned_words(self.root), "src/a/bad.cpp:2")

    def test_library_headers(self):
        self.write("src/host/discs/a.cpp", "#include <sndfile.h>\n")
        self.write("src/console/a.cpp", "#include <CLI/CLI.hpp>\n#include <nlohmann/json.hpp>\n")
        self.write("tests/x/a.cpp", "#include <SDL.h>\n")
        self.found(check.library_headers(self.root))
        self.write("src/host/drives/a.cpp", "#include <cdio/cdio.h>\n#include <sndfile.h>\n")
        self.write("src/rip/a.h", "#include <QTimer>\n#include <gtest/gtest.h>\n")
        self.found(check.library_headers(self.root), "drives/a.cpp:2", "rip/a.h:1", "rip/a.h:2: <gtest/gtest.h>")

    def test_packages(self):
        self.write("packages.txt", PACKAGES)
        self.write("src/console/a.cpp", "#include <fmt/format.h>\n#include <sys/stat.h>\n#include <string>\n")
        self.write("tests/a.cpp", "#include <gtest/gtest.h>\n#include <gmock/gmock.h>\n")
        self.found(check.packages(self.root))
        self.write("src/console/b.cpp", "#include <boost/any.hpp>\n#include <SDL.h>\n#include <gtest/gtest.h>\n")
        self.found(check.packages(self.root), "of no known library", "needs libsdl2-dev", "needs libgtest-dev")
        self.write("src/console/b.cpp", "")
        self.write("packages.txt", PACKAGES + "build libcdio-dev why\n")
        self.found(check.packages(self.root), "nothing includes a header of libcdio-dev")
        for bad in ["build\n", "build g++ why\nbuild g++ why\n", "other g++ why\n"]:
            self.write("packages.txt", bad)
            with self.assertRaises(SystemExit):
                list(check.packages(self.root))

    def test_picture(self):
        house = self.write("house.txt", "base: \nplatform: base\n")
        self.write("docs/architecture.md", "# A\n```house\nbase:\nplatform: base\n```\n")
        self.found(check.picture(self.root, house))
        self.write("docs/architecture.md", "# A\n```house\nbase:\nplatform:\n```\n")
        self.found(check.picture(self.root, house), "its picture is not")
        self.write("docs/architecture.md", "# A\n")
        self.found(check.picture(self.root, house), "has no picture")
        house.write_text("base: platform\nplatform: base\n")
        self.write("docs/architecture.md", "```house\nbase: platform\nplatform: base\n```\n")
        self.found(check.picture(self.root, house), "base uses platform")

    def test_names(self):
        self.write("src/state/a.h", "int list1; int Label6;\n")
        self.write("docs/names.md", "| Name | Meaning | File |\n|---|---|---|\n| `list1` | tracks | `state/a.h` |\n"
                                    "| `Label6`, `list1` | more | `state/a.h` |\n")
        self.found(check.names(self.root))
        self.write("docs/names.md", "| `list` | tracks | `state/a.h` |\n| `list1` | x | `state/b.h` |\n"
                                    "| `list1` |  | `state/a.h` |\n")
        self.found(check.names(self.root), "list is not in", "no src/`state/b.h`", "no meaning")
        self.write("docs/names.md", "# Names\n")
        self.found(check.names(self.root), "lists no names")

    def test_help_pages(self):
        head = '<meta charset="utf-8"><title>T</title>\n'
        ripper = "help/1008-ripper.html"

        def index(*links):
            self.write("help/index.html", head + "".join(f'<a href="{link}">x</a>\n' for link in links))

        index("1008-ripper.html", "1009-preview.html#start")
        self.write(ripper, head + '<a href="1009-preview.html">x</a><a href="#keys">x</a><a name="keys"></a>\n')
        self.write("help/1009-preview.html", head + '<h2 id="start">&ndash;</h2>\n')
        self.found(check.help_pages(self.root))
        for line, wanted in [('<a href="1010-none.html">', "is no topic"), ('<a href="#lost">', "no place called lost"),
                             ('<a href="http://example.org/">', "is no topic"), ('<a href="../README.md">', "is no topic"),
                             ('<script>x</script>', "has <script>"), ('<p onclick="x">', "has onclick="),
                             ('<p style="color: red">', "sets colours"), ('<body bgcolor="black">', "sets colours"),
                             ("<style>@import 'x';</style>", "sets colours or loads"), ("\u2013", "is not plain ASCII")]:
            self.write(ripper, head + line + "\n")
            self.found(check.help_pages(self.root), wanted)
        self.write(ripper, '<meta charset="latin-1">\n')
        self.found(check.help_pages(self.root), "does not say that it is UTF-8", "has no title")
        self.write(ripper, head)
        self.write("help/1009-again.html", head)
        self.write("help/notes.txt", "")
        self.found(check.help_pages(self.root), "notes.txt: is not called", "1009 is the number of two",
                   "does not list 1009-again.html")
        for name in ["help/1009-again.html", "help/notes.txt", ripper]:
            (self.root / name).unlink()
        index("1009-preview.html")
        self.found(check.help_pages(self.root), "there is no 1008-ripper.html")

    def test_views(self):
        house = self.write("house.txt", "base: \nmid: base\ntop: mid\n")
        for room in ["base", "mid", "top"]:
            self.write(f"src/{room}/{room}.h", "")
            self.write(f"rooms/{room}/{room}/{room}.h", "")
        view = {room: str(self.root / "rooms" / room) for room in ["base", "mid", "top"]}

        def lists(text):
            return self.write("lists.txt", text.format(**view))

        good = "base|{base}\nmid|{mid};{base}\ntop|{top};{mid};{base}\n"
        self.found(check.views(self.root, house, "c++", lists(good)))
        self.found(check.views(self.root, house, "c++", lists(good.replace("mid|{mid}", "mid|{mid};{top}"))),
                   "mid can include top/top.h")
        self.found(check.views(self.root, house, "c++", lists(good.replace(";{mid};{base}", ";{mid}"))),
                   "top cannot include base/base.h")


if __name__ == "__main__":
    unittest.main()
