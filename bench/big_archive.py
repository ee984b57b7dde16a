#!/usr/bin/env python3
"""big_archive.py FILE.kva COUNT FOLDER: an archive of COUNT levels in FOLDER, none of them with files."""
import struct
import sys

HEADER = struct.Struct("<i256s256siihhhdd")
LEVEL = struct.Struct("<256s256s80s256s256s256sii256siih")


def field(text, width):
    return text.encode("cp1252").ljust(width)[:width]


def level(code):
    name = "Original configuration" if code == 0 else f"The Lost Valley of King {code * 7919 % 10007}"
    return LEVEL.pack(field(name, 256), field(f"Note {code}: two secrets, and a café by the sea", 256),
                      field(f"Author {code % 311}", 80), field("", 256), field("", 256),
                      field("", 256), code, 0, field("", 256), code * 1000, code, 0)


def main():
    file, count, folder = sys.argv[1], int(sys.argv[2]), sys.argv[3]
    with open(file, "wb") as out:
        out.write(HEADER.pack(1, field(folder, 256), field(folder, 256), count, 0, 0, 0, 0, 0.0, 0.0))
        out.writelines(level(code) for code in range(count))


if __name__ == "__main__":
    assert HEADER.size == 546 and LEVEL.size == 1634
    main()
