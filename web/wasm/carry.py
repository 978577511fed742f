#!/usr/bin/env python3
"""Writes what the library carries in WebAssembly as the rows of a table in C++: carry.py OUTPUT FILE..."""

import pathlib
import sys

LINE = 100  # bytes


def literal(data):
    """Bytes as a string literal; three octal digits never run into what follows."""
    parts = []
    for begin in range(0, len(data), LINE):
        text = "".join(chr(byte) if 32 <= byte < 127 and byte not in b'"\\?' else f"\\{byte:03o}" for byte in data[begin : begin + LINE])
        parts.append(f'"{text}"')
    return "\n".join(parts)


def main():
    output, *files = map(pathlib.Path, sys.argv[1:])
    rows = []
    for file in files:
        data = file.read_bytes()
        rows.append(f'{{"{file.name}", std::string_view({literal(data)}, {len(data)})}},\n')
    output.write_text("".join(rows))


if __name__ == "__main__":
    main()
