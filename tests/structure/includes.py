"""The includes of the whole tree keep to the house: a room includes only what stands in its row, written from the root of the tree
(the floors of src/ among themselves, and for others, from src/). No folder is in a circle, and no system stands in an #if outside
src/platform and base/system."""
import pathlib
import re
import sys

FLOORS = ["text", "platform", "automation", "util", "serial", "printer", "documents", "reports", "interface"]
ROOMS = {"base": {"base"}, "src": {"src"}, "till": {"till", "src", "base"},
         "service": {"service", "till", "src", "base"},
         "tools": {"tools", "service", "till", "src", "base", "virtual-printer"},
         "virtual-printer": {"virtual-printer", "base"}}
SYSTEM = re.compile(r"#\s*(if|elif).*(_WIN32|__linux__|__unix__|_MSC_VER)")


def sources(root, room):
    return sorted(path for path in (root / room).glob("**/*") if path.suffix in (".h", ".cpp"))


def includes(path):
    return re.findall(r'#include "([^"]+)/[^"/]+"', path.read_text(encoding="utf-8"))


def room_of(folder):
    first = folder.split("/")[0]
    return "src" if first in FLOORS else first


def faults_of_floors(root):
    for path in sources(root, "src"):
        floor = path.relative_to(root / "src").parts[0]
        for used in includes(path):
            first = used.split("/")[0]
            if floor in FLOORS and (first not in FLOORS or FLOORS.index(first) > FLOORS.index(floor)):
                yield f"{path}: {floor} may not include {used}"


def faults_of_rooms(root):
    for room, allowed in ROOMS.items():
        for path in sources(root, room):
            for used in includes(path):
                if room_of(used) not in allowed:
                    yield f"{path}: {room}/ may not include {used}"
                if room_of(used) == "virtual-printer" and room == "tools" and not {"trace", "status"} & set(path.parts):
                    yield f"{path}: only trace and status know the virtual printer"


def circles(root, room):
    arrows = {}
    for path in sources(root, room):
        here = path.relative_to(root / room).parts
        for used in includes(path):
            there = used.split("/")
            if len(here) > 1 and len(there) > 1 and there[0] == room and there[1] != here[0]:
                arrows.setdefault(here[0], set()).add(there[1])

    def reached(start):
        seen, open_ones = set(), [start]
        while open_ones:
            for next_one in arrows.get(open_ones.pop(), set()) - seen:
                seen.add(next_one)
                open_ones.append(next_one)
        return seen

    return {(room, a, b) for a in arrows for b in reached(a) if a < b and a in reached(b)}


def main(root):
    faults = [*faults_of_floors(root), *faults_of_rooms(root)]
    for room in ROOMS:
        faults += [f"{a}/ and {b}/ of {r}/ include each other" for r, a, b in sorted(circles(root, room))]
        for path in sources(root, room):
            parts = path.relative_to(root).parts
            if "platform" in parts or parts[:2] == ("base", "system"):
                continue
            faults += [f"{path}: {line.strip()}" for line in path.read_text(encoding="utf-8").splitlines() if SYSTEM.match(line)]
    files = sum(len(sources(root, room)) for room in ROOMS)
    print("\n".join(faults) or f"{files} files keep the rule")
    return 1 if faults or files < 50 else 0


sys.exit(main(pathlib.Path(sys.argv[1])))
