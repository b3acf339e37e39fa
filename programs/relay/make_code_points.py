#!/usr/bin/python3
"""Writes code_points.inc: which characters a name may not hold, and which stack on the one before them.

    make_code_points.py >code_points.inc

Reads the Unicode Character Database as Debian's package unicode-data installs it. Run it again when a new version of
Unicode has brought letters that somebody wants in his name: what is not assigned yet is refused.
"""

import pathlib
import re
import sys

FOLDER = pathlib.Path("/usr/share/unicode")
LAST = 0x10FFFF

# Controls, formats, surrogates, private use, unassigned (noncharacters too) and all blanks: none of them is drawn.
UNSEEN = {"Cc", "Cf", "Cs", "Co", "Cn", "Zs", "Zl", "Zp"}
STACKING = {"Mn", "Me"}  # drawn over the character before, without a width of their own

# No category and no property tells of these letters, marks and symbols that they are drawn without ink.
INKLESS = re.compile(r"\b(BLANK|FILLER|JOINER|NULL NOTEHEAD|OBJECT REPLACEMENT)\b")


def read_characters():
    """(code point, name, category) of all that are assigned; ranges are listed by their two ends."""
    first = 0
    for line in (FOLDER / "UnicodeData.txt").read_text("utf-8").splitlines():
        number, name, category = line.split(";")[:3]
        if name.endswith(", First>"):
            first = int(number, 16)
            continue
        point = int(number, 16)
        for each in range(first if name.endswith(", Last>") else point, point + 1):
            yield each, name, category


def read_property(name):
    """The code points that have a derived property, unassigned ones included."""
    for line in (FOLDER / "DerivedCoreProperties.txt").read_text("utf-8").splitlines():
        found = re.match(rf"([0-9A-F]+)(?:\.\.([0-9A-F]+))?\s*;\s*{name}\b", line)
        if found:
            yield from range(int(found[1], 16), int(found[2] or found[1], 16) + 1)


def is_inkless(name, category):
    return category in {"Lo", "Mn", "So"} and INKLESS.search(name) is not None


def ranges(points):
    """The same as pairs of first and last."""
    pairs = []
    for point in sorted(points):
        if pairs and pairs[-1][1] == point - 1:
            pairs[-1][1] = point
        else:
            pairs.append([point, point])
    return pairs


def write(name, points):
    pairs = [f"{{0x{first:X}, 0x{last:X}}}" for first, last in ranges(points)]
    print(f"\nconstexpr Range {name}[] = {{")
    line = "   "
    for pair in pairs:
        if len(line) + len(pair) + 2 > 100:
            print(line)
            line = "   "
        line += f" {pair},"
    print(line.rstrip(",") + "};")


def main():
    version = (FOLDER / "ReadMe.txt").read_text("utf-8")
    version = re.search(r"Version (\S+) of the Unicode Standard", version)[1]
    characters = list(read_characters())
    seen = {point for point, name, category in characters if category not in UNSEEN and not is_inkless(name, category)}
    refused = set(range(LAST + 1)) - seen | set(read_property("Default_Ignorable_Code_Point")) | {ord(",")}
    print(f"// Made by make_code_points.py from Unicode {version}.")
    write("REFUSED", refused)
    write("STACKING", {point for point, _, category in characters if category in STACKING} - refused)


if __name__ == "__main__":
    sys.exit(main())
