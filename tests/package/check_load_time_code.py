"""Shows that loading a library runs no initialiser but the compiler's own.

Usage: check_load_time_code.py LIBRARY...
"""
import re
import subprocess
import sys

POINTER_BYTES = 8


def initialisers(library):
    sections = subprocess.run(["readelf", "-SW", library], check=True, capture_output=True, text=True).stdout
    size = re.search(r"\.init_array\s+INIT_ARRAY\s+\S+\s+\S+\s+(\S+)", sections)
    if size is None:
        sys.exit(f"{library} has no table of initialisers: the check does not know this system")
    return int(size.group(1), 16) // POINTER_BYTES


def main():
    counts = {library: initialisers(library) for library in sys.argv[1:]}
    for library, count in counts.items():
        print(f"{library}: {count} initialiser(s)")
    return 1 if any(count != 1 for count in counts.values()) else 0


if __name__ == "__main__":
    sys.exit(main())
