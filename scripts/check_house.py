#!/usr/bin/env python3
"""Checks the rules of the house that no compiler knows: the floors of the includes, a line for every file in the
architecture, the kept oddities, the headers, the links and pictures of the documents, and that no file names a folder of
the machine it was written on. Prints one line a finding; exit status 1 when there is one."""

import collections
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCE_FOLDERS = ("src", "tests", "tools", "bench", "fuzz")
SOURCE_SUFFIXES = (".cpp", ".h", ".c")
GENERATED_SUFFIX = ".inc"  # made by the build, of no floor

findings = []


def find(place, what):
    findings.append(f"{place}: {what}")


def read(path):
    return (ROOT / path).read_text(encoding="utf-8", errors="replace")


def all_files():
    """What the project holds or is about to: tracked, or new and not ignored. Relative paths."""
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT, capture_output=True,
                            text=True, check=False)
    if listed.returncode == 0:
        names = filter(None, listed.stdout.split("\0"))
    else:  # an unpacked archive
        found = (p.relative_to(ROOT) for p in ROOT.rglob("*") if p.is_file())
        names = (str(p) for p in found if p.parts[0] not in ("build", ".git"))
    return sorted(name for name in set(names) if (ROOT / name).is_file())


def sources(files, folder, suffixes=SOURCE_SUFFIXES):
    return [f for f in files if f.startswith(folder + "/") and f.endswith(suffixes)]


def stem(path):
    """app/image.cpp and app/image.h are one file of the house: app/image."""
    return path.rsplit(".", 1)[0]


# --- floors ---------------------------------------------------------------------------------------------------------

FLOORS = "src/floors.txt"


def listed_floors():
    """What each folder of src may include besides itself, in the order of the list."""
    floors = {}
    for line in read(FLOORS).splitlines():
        if not line or line.startswith("#"):
            continue
        folder, _, may_include = line.partition(":")
        floors[folder] = may_include.split()
    return floors


def check_floor_list(floors, inside):
    """No circle and no arrow that runs back up: a folder uses only folders listed above it."""
    above = set()
    for folder, may_include in floors.items():
        for used in may_include:
            if used not in above:
                find(FLOORS, f"{folder} may include {used}, which does not stand above it in the list")
        above.add(folder)
    folders = {f.split("/")[1] for f in inside if f.count("/") > 1}
    for folder in sorted(folders - above):
        find(FLOORS, f"src/{folder} is not listed")
    for folder in sorted(above - folders):
        find(FLOORS, f"src/{folder} is listed but holds no source")


def includes(files):
    """(file, line number, stem of what it includes) of every include between files of src."""
    stems = {stem(f.removeprefix("src/")) for f in files}
    for file in files:
        for number, line in enumerate(read(file).splitlines(), 1):
            match = re.match(r'\s*#\s*include\s*"([^"]+)"', line)
            if not match or match[1].endswith(GENERATED_SUFFIX):
                continue
            if stem(match[1]) in stems:
                yield file, number, stem(match[1])
            else:
                find(f"{file}:{number}", f'"{match[1]}" is no file of src')


def check_floors(files):
    floors = listed_floors()
    inside = sources(files, "src")
    check_floor_list(floors, inside)

    used_by = collections.defaultdict(set)
    for file, number, used in includes(inside):
        user = stem(file.removeprefix("src/"))
        if user == used:
            continue
        used_by[user].add(used)
        if user in used_by[used]:
            find(f"{file}:{number}", f"{user} and {used} include each other")
        folder, used_folder = user.split("/")[0], used.split("/")[0]
        if used_folder != folder and used_folder not in floors.get(folder, []):
            find(f"{file}:{number}", f"{folder} may not include {used_folder}")


ARCHITECTURE = "docs/architecture.md"


def check_architecture(files):
    """Every file of the house has its line, under its folder, and no line is left of one that went."""
    lines, named, folder = set(), set(), None
    for line in read(ARCHITECTURE).split("\n## A screen", 1)[0].splitlines():
        if heading := re.match(r"`([a-z0-9]+)/`:", line):
            folder = heading[1]
        elif folder:
            lines.update(f"{folder}/{name}" for name in re.findall(r"^- `([a-z0-9_]+)`", line))
            named.update(f"{folder}/{name}" for name in re.findall(r"`([a-z0-9_]+)`", line))
    there = {stem(f.removeprefix("src/")) for f in sources(files, "src") if f.count("/") > 1}
    for file in sorted(there - named):
        find(ARCHITECTURE, f"src/{file} has no line")
    for file in sorted(lines - there):
        find(ARCHITECTURE, f"src/{file} is not there")


# --- oddities -------------------------------------------------------------------------------------------------------

ODDITIES = "docs/kept-oddities.md"


def marked_oddities(files):
    """Where each id is marked in these files."""
    marked = collections.defaultdict(list)
    for file in files:
        for number, line in enumerate(read(file).splitlines(), 1):
            for name in re.findall(r"ODDITY ([a-z0-9-]+)", line):
                marked[name].append(f"{file}:{number}")
    return marked


def check_oddities(files):
    in_code = marked_oddities(sources(files, "src"))
    in_tests = marked_oddities(sources(files, "tests"))
    text = read(ODDITIES)
    in_docs = set(re.findall(r"^## (\S+)$", text, re.M))
    for name in sorted(in_code.keys() | in_tests.keys() | in_docs):
        for where, ids in (("src", in_code), (ODDITIES, in_docs), ("tests", in_tests)):
            if name not in ids:
                known = in_code.get(name) or in_tests.get(name) or [ODDITIES]
                find(known[0], f'oddity "{name}" is missing in {where}')

    tests = set()
    for file in sources(files, "tests"):
        tests.update(".".join(pair) for pair in re.findall(r"^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", read(file), re.M))
    for paragraph in re.findall(r"^Tests?: (.*?)(?:\n\n|\Z)", text, re.M | re.S):
        for name in re.findall(r"`(\w+\.\w+)`", paragraph):
            if name not in tests:
                find(ODDITIES, f"there is no test {name}")


# --- documents ------------------------------------------------------------------------------------------------------

LINK = re.compile(r"\[[^\]]*\]\(([^()\s]+)\)")


def anchors(document):
    """What stands behind "#" in a link to one of the headings, as web pages of repositories make it."""
    headings = re.findall(r"^#+ (.+)$", read(document), re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def check_documents(files):
    """Every link between files leads somewhere, and every picture of docs is shown by a document."""
    linked = set()
    for file in (f for f in files if f.endswith(".md")):
        for number, line in enumerate(read(file).splitlines(), 1):
            for link in LINK.findall(line):
                if ":" in link:  # an address of elsewhere
                    continue
                name, _, anchor = link.partition("#")
                target = os.path.normpath(os.path.join(os.path.dirname(file), name)) if name else file
                linked.add(target)
                if not (ROOT / target).exists():
                    find(f"{file}:{number}", f"{target} is not there")
                elif anchor and anchor not in anchors(target):
                    find(f"{file}:{number}", f'{target} has no heading "{anchor}"')
    for picture in sources(files, "docs", (".png",)):
        if picture not in linked:
            find(picture, "is shown by no document")


# --- headers and words ----------------------------------------------------------------------------------------------


def check_headers(files):
    for folder in SOURCE_FOLDERS:
        for file in sources(files, folder, (".h",)):
            lines = read(file).splitlines()
            if not lines or not lines[0].startswith("//"):
                find(f"{file}:1", "does not open with a comment that says what it owns")
            if "#pragma once" not in lines:
                find(file, "has no #pragma once")


MACHINE_PATH = re.compile("/(?:" + "|".join(("work", "root")) + ")/")


def check_words(files):
    for file in files:
        for number, line in enumerate(read(file).splitlines(), 1):
            if match := MACHINE_PATH.search(line):
                find(f"{file}:{number}", f'"{match[0]}" is a path of one machine')


def main():
    files = all_files()
    check_floors(files)
    check_architecture(files)
    check_oddities(files)
    check_headers(files)
    check_documents(files)
    check_words(files)
    print("\n".join(findings) if findings else f"{len(files)} files, nothing found")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
