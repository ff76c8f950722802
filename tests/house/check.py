"""Checks on the tree that no compiler makes. Each is one function; `check.py NAME` runs it.

A check gets the tree's root, so that check_test.py can hand it a broken one and see that it finds the fault.
"""

import argparse
import html.parser
import pathlib
import re
import subprocess
import sys

CODE = (".h", ".cpp")

# Outside headers: the pattern, the folders of src/ that may include them (tests, tools and benchmarks may too), and the
# package that brings them.
LIBRARIES = [
    (r"sndfile\.h", ["host/discs"], "libsndfile1-dev"),
    (r"discid/.*", ["host/discs"], "libdiscid-dev"),
    (r"cdio/paranoia/.*", ["host/acd"], "libcdio-paranoia-dev"),
    (r"cdio/.*", ["host/drives"], "libcdio-dev"),
    (r"SDL(2/.*|.*\.h)", ["host/audio"], "libsdl2-dev"),
    (r"libdeflate\.h", ["host/audio"], "libdeflate-dev"),
    (r"(id3v[12]\w+|oggpageheader|vorbisfile|unknownframe|fileref|tag|t(iostream|file|string))\.h", ["host/tags"],
     "libtag1-dev"),
    (r"libavcodec/.*", ["host/wma"], "libavcodec-dev"),
    (r"libavformat/.*", ["host/wma"], "libavformat-dev"),
    (r"libavutil/.*", ["host/wma"], "libavutil-dev"),
    (r"QSvg\w*", ["ui/skin"], "qt6-svg-dev"),
    (r"Q[A-Z]\w*", ["host/system", "host/real", "host/windows", "ui", "launcher", "utility"], "qt6-base-dev"),
    (r"CLI/.*", ["console"], "libcli11-dev"),
    (r"nlohmann/.*", ["console", "launcher"], "nlohmann-json3-dev"),
    (r"fmt/.*", ["console", "host"], "libfmt-dev"),
    (r"gtest/.*", [], "libgtest-dev"),
    (r"gmock/.*", [], "libgmock-dev"),
    (r"benchmark/.*", [], "libbenchmark-dev"),
]
STANDARD = re.compile(
    r"[a-z_0-9]+"                                       # the C++ library
    r"|(stdlib|stdio|string|errno|signal|time|math|stdint)\.h"
    r"|(unistd|fcntl|dirent|sched|spawn|poll|pwd|grp|dlfcn|semaphore|pthread|termios|mntent|libgen|utime|fnmatch)\.h"
    r"|(sys|linux|scsi|arpa|netinet)/[\w/]+\.h")

# In logic and host alike: what needs a locale, throws, or hides what it does.
BANNED = [
    (r"\btow(upper|lower)\b", "changes case by the locale; base/text.h has its own table"),
    (r"\b(wcout|wcerr|wprintf|fwprintf|wofstream)\b", "writes by the locale; UTF-8 goes out as bytes"),
    (r"\b(setlocale|std::locale)\b", "the program knows no locale"),
    (r"\b(?:filesystem::|fs::)path\s*[({]\s*(?:L\"|\w*[wW]ide\w*|std::wstring)", "a path from wide text throws"),
    (r"\bcatch\s*\(\s*\.\.\.\s*\)", "would swallow the end of the program"),
    (r"(?<![\w:])new\s+[A-Za-z_:]+\s*[({\[;]", "owners are objects"),
    (r"\breinterpret_cast\b|\bconst_cast\b", "only static_cast"),
    (r"^\s*#\s*define\b", "no macros"),
]
# Where a rule cannot hold: the interfaces of other people's libraries.
ALLOWED = {
    r"\breinterpret_cast\b|\bconst_cast\b": ["src/host/"],
    r"^\s*#\s*define\b": ["src/host/"],
    r"\bcatch\s*\(\s*\.\.\.\s*\)": ["src/host/", "src/console/main.cpp"],
}


def code_files(root, *folders):
    for folder in folders:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in CODE:
                yield path


def without_comments(text):
    """Comments and string contents blanked out, line for line."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|R"\((?:.*?)\)"|"(?:\\.|[^"\\\n])*"', re.S)

    def blank(match):
        found = match.group(0)
        if found.startswith('"'):
            return '""' if not match.string[: match.start()].rstrip().endswith("#include") else found
        return "\n" * found.count("\n")

    return pattern.sub(blank, text)


def includes(path):
    for number, line in enumerate(path.read_text().splitlines(), 1):
        match = re.match(r'\s*#\s*include\s*([<"])([^>"]+)[>"]', line)
        if match:
            yield number, match.group(1), match.group(2)


def upward_includes(root):
    """No include climbs out of its view; with one, any room could reach any other."""
    for path in code_files(root, "src", "tests", "tools", "bench", "fuzz"):
        for number, _, name in includes(path):
            if ".." in name.split("/"):
                yield f"{path.relative_to(root)}:{number}: includes {name}"


def banned_words(root):
    for path in code_files(root, "src"):
        place = path.relative_to(root).as_posix()
        for number, line in enumerate(without_comments(path.read_text()).splitlines(), 1):
            for pattern, why in BANNED:
                if any(place.startswith(free) for free in ALLOWED.get(pattern, [])):
                    continue
                if re.search(pattern, line):
                    yield f"{place}:{number}: {line.strip()}  ({why})"


def library_of(name):
    return next((entry for entry in LIBRARIES if re.fullmatch(entry[0], name)), None)


def library_headers(root):
    """Each outside library has its folder of wrappers; nobody else sees its headers."""
    for path in code_files(root, "src"):
        room = path.relative_to(root / "src").parent.as_posix()
        for number, bracket, name in includes(path):
            library = library_of(name) if bracket == "<" else None
            if library and not any(room == free or room.startswith(free + "/") for free in library[1]):
                yield f"{path.relative_to(root)}:{number}: <{name}> belongs to {', '.join(library[1]) or 'the tests'}"


def package_list(root):
    packages = {}
    for number, line in enumerate((root / "packages.txt").read_text().splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        fields = line.split(None, 2)
        if len(fields) < 3 or fields[0] not in ("build", "test", "check", "guest", "bench"):
            raise SystemExit(f"packages.txt:{number}: not 'group package reason': {line}")
        if fields[1] in packages:
            raise SystemExit(f"packages.txt:{number}: {fields[1]} is listed twice")
        packages[fields[1]] = fields[0]
    return packages


def packages(root):
    """Every header that is not ours comes from a listed package, and every listed library is included somewhere."""
    listed = package_list(root)
    used = set()
    groups = {"src": ["build"], "tools": ["build"], "tests": ["build", "test"], "fuzz": ["build", "test"],
              "bench": ["build", "test", "bench"]}
    for folder, allowed in groups.items():
        for path in code_files(root, folder):
            for number, bracket, name in includes(path):
                if bracket == '"' or STANDARD.fullmatch(name):
                    continue
                place = f"{path.relative_to(root)}:{number}"
                library = library_of(name)
                if not library:
                    yield f"{place}: <{name}> is of no known library; tests/house/check.py lists them"
                elif listed.get(library[2]) not in allowed:
                    yield f"{place}: <{name}> needs {library[2]}, which packages.txt does not list for {folder}/"
                else:
                    used.add(library[2])
    # A library for parts that are still to come would be listed too early.
    for _, _, package in LIBRARIES:
        if listed.get(package) in ("build", "test") and package not in used:
            yield f"packages.txt: nothing includes a header of {package}"


def house_of(text):
    rooms = {}
    for line in text.splitlines():
        if line.strip():
            name, _, uses = line.partition(":")
            rooms[name.strip()] = uses.split()
    return rooms


def picture(root, house):
    """The picture in the docs is the house that was built, and it has no circle."""
    document = (root / "docs/architecture.md").read_text()
    match = re.search(r"^```house\n(.*?)^```$", document, re.S | re.M)
    if not match:
        yield "docs/architecture.md: has no picture between ```house and ```"
        return
    built = house.read_text()
    if match.group(1).strip() != "\n".join(line.rstrip() for line in built.strip().splitlines()):
        yield f"docs/architecture.md: its picture is not {house}; copy that file into it"
    below = set()
    for room, uses in house_of(built).items():
        for used in uses:
            if used not in below:
                yield f"{room} uses {used}, which does not stand below it"
        below.add(room)


def names(root):
    """Every inherited name that the docs list is in its file."""
    rows = 0
    for number, line in enumerate((root / "docs/names.md").read_text().splitlines(), 1):
        cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
        if not line.startswith("| `") or len(cells) != 3:
            continue
        rows += 1
        path = root / "src" / cells[2].strip("`")
        if not cells[1]:
            yield f"docs/names.md:{number}: {cells[0]} has no meaning"
        if not path.is_file():
            yield f"docs/names.md:{number}: there is no src/{cells[2]}"
            continue
        text = path.read_text()
        for name in re.findall(r"`([^`]+)`", cells[0]):
            if not re.search(rf"(?<!\w){re.escape(name)}(?!\w)", text):
                yield f"docs/names.md:{number}: {name} is not in src/{path.relative_to(root / 'src')}"
    if rows == 0:
        yield "docs/names.md: lists no names"


def views(root, house, compiler, include_lists):
    """The compiler refuses every include that the house does not allow, and takes every other.

    `include_lists` has a line for each room: its name, "|", and the folders that its sources are compiled with.
    """
    rooms = house_of(house.read_text())
    folders = dict(line.split("|", 1) for line in include_lists.read_text().splitlines() if line)
    headers = {}
    for room in rooms:
        own = sorted((root / "src" / room).glob("*.h"))
        if own:
            headers[room] = f"{room}/{own[0].name}"

    def visible_from(room):
        reached, open_rooms = {room}, [room]
        while open_rooms:
            for used in rooms[open_rooms.pop()]:
                if used not in reached:
                    reached.add(used)
                    open_rooms.append(used)
        return reached

    for room in rooms:
        visible = visible_from(room)
        probe = "".join(f'#if __has_include("{header}")\nsees {target}\n#endif\n' for target, header in headers.items())
        options = [f"-I{folder}" for folder in folders[room].split(";") if folder]
        result = subprocess.run([compiler, "-E", "-P", "-x", "c++", *options, "-"], input=probe, text=True,
                                capture_output=True, check=True)
        sees = {line.split()[1] for line in result.stdout.splitlines() if line.startswith("sees ")}
        for target in headers:
            if target in sees and target not in visible:
                yield f"a source of {room} can include {headers[target]}"
            if target not in sees and target in visible:
                yield f"a source of {room} cannot include {headers[target]}"
    if len(headers) < 2:
        yield "fewer than two rooms have headers, so nothing was tried"


class HelpPage(html.parser.HTMLParser):
    """What one topic refers to, what can be referred to in it, and what it must not have."""

    LOADING = ("src", "background", "data", "action", "poster", "srcset")
    ACTIVE = ("script", "iframe", "object", "embed", "form", "link", "img")

    def __init__(self, text):
        super().__init__()
        self.charset = None
        self.title = False
        self.links = []
        self.anchors = set()
        self.unwanted = []
        self.feed(text)
        self.close()

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if tag == "meta" and "charset" in values:
            self.charset = (values["charset"] or "").lower()
        self.title |= tag == "title"
        if tag in self.ACTIVE:
            self.unwanted.append((self.getpos()[0], f"<{tag}>"))
        for name, value in attributes:
            if name == "href":
                self.links.append((self.getpos()[0], value or ""))
            elif name in ("name", "id") and tag != "meta":
                self.anchors.add(value)
            elif name in self.LOADING or name.startswith("on"):
                self.unwanted.append((self.getpos()[0], f"{name}="))


def help_pages(root):
    """Topics lead to each other only, all can be found from the contents, and none brings colours of its own."""
    folder = root / "help"
    pages = {}
    for path in sorted(folder.glob("*")):
        place = path.relative_to(root).as_posix()
        if path.name != "index.html" and not re.fullmatch(r"[1-9][0-9]*-[a-z0-9-]+\.html", path.name):
            yield f"{place}: is not called NUMBER-name.html"
            continue
        data = path.read_bytes()
        if not data.isascii():
            yield f"{place}: is not plain ASCII; other characters are written as entities"
        text = data.decode("utf-8", "replace")
        page = pages[path.name] = HelpPage(text)
        if page.charset != "utf-8":
            yield f"{place}: does not say that it is UTF-8"
        if not page.title:
            yield f"{place}: has no title"
        for line, what in page.unwanted:
            yield f"{place}:{line}: has {what}"
        # The window that shows it may be dark or bright.
        for number, line in enumerate(text.splitlines(), 1):
            if re.search(r"(color|background[a-z-]*)\s*[:=]|@import|url\(", line):
                yield f"{place}:{number}: sets colours or loads something: {line.strip()}"
    numbers = [name.split("-")[0] for name in pages if name != "index.html"]
    for number in sorted(set(numbers)):
        if numbers.count(number) > 1:
            yield f"help: {number} is the number of two topics"
    for name in ("index.html", "1008-ripper.html"):
        if name not in pages:
            yield f"help: there is no {name}"
    for name, page in pages.items():
        for line, link in page.links:
            target, _, anchor = link.partition("#")
            target = target or name
            if target not in pages:
                yield f"help/{name}:{line}: {link} is no topic"
            elif anchor and anchor not in pages[target].anchors:
                yield f"help/{name}:{line}: {target} has no place called {anchor}"
    listed = {link.partition("#")[0] for _, link in pages["index.html"].links} if "index.html" in pages else set()
    for name in pages:
        if name != "index.html" and name not in listed:
            yield f"help/index.html: does not list {name}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("check", choices=["upward_includes", "banned_words", "library_headers", "packages", "picture",
                                          "names", "help_pages", "views"])
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--house", type=pathlib.Path)
    parser.add_argument("--compiler")
    parser.add_argument("--include-lists", type=pathlib.Path)
    options = parser.parse_args()
    if options.check == "picture":
        problems = list(picture(options.root, options.house))
    elif options.check == "views":
        problems = list(views(options.root, options.house, options.compiler, options.include_lists))
    else:
        problems = list(globals()[options.check](options.root))
    for problem in problems:
        print(problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
