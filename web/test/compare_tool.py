#!/usr/bin/env python3
"""The tool as WebAssembly prints and writes what the native one does, byte for byte: compare_tool.py TOOL WASM_TOOL SOURCE

Twelve commands over example jobs, what checks.md calls wrong and right, seeded faults, jobs with atom numbers beyond 32 bits, other line ends and
encodings, 100,000 numbers of all forms, and real files where QUOR_GJF_REAL_FILES names a folder. The one in WebAssembly runs where no
vocabulary is near: it has its own inside.
"""

import os
import pathlib
import random
import re
import shutil
import struct
import subprocess
import sys
import tempfile

SUFFIXES = {".gjf", ".com", ".gau"}
BEYOND = 2**32  # added to an atom's number it would be the same in 32 bits
FILES_AT_ONCE = 100
PROGRESS = re.compile(rb"\r[^\r\n]*\x1b\[K")  # the C library of emscripten takes every output for a terminal

COMMANDS = [
    ["check", "--json", "-j", "1"],
    ["check", "-j", "1", "--unsafe-fixes", "--diff", "--color", "never"],
    ["check", "-j", "1", "--output-format", "sarif"],
    ["report", "--json", "-j", "1"],
    ["report", "-j", "1"],
    ["report", "-j", "1", "--fields", "file,job,atoms,charge,method,basis,formula,electrons,functions", "--output-format", "csv"],
    ["outline", "--json", "-j", "1"],
    ["outline", "-j", "1", "--select", "H and not frozen"],
    ["find", "atoms > 2 and count(H) > 0", "--json", "-j", "1"],
    ["edit", "-j", "1", "--translate", "0.1,-2.5,1e-3", "--remove-atoms", "1", "--set", "mem=2GB", "--option", "scf=tight", "--in-place"],
    ["format", "--align", "--in-place"],
    ["convert", "-o", "xyz"],
]


def number_text(choose):
    """A number in one of the forms that people and programs write, or any bits at all."""
    form = choose.randrange(8)
    value = choose.uniform(-30, 30)
    if form == 0:
        return struct.unpack("<d", choose.getrandbits(64).to_bytes(8, "little"))[0].hex()
    if form == 1:
        return repr(struct.unpack("<d", (choose.getrandbits(51)).to_bytes(8, "little"))[0])  # below the normal ones
    if form == 2:
        return f"{value:.{choose.randrange(1, 25)}f}"
    if form == 3:
        return f"{value:.{choose.randrange(17)}e}".replace("e", choose.choice("eEdD"))
    return choose.choice([f"{value:.8f}", f"{value:.10g}", f"{value * 1e-4:.4f}", "0.0001", f"{value:.6f}".rstrip("0"), f"{value:.0f}."])


def many_numbers():
    choose = random.Random(21)
    for atoms in [667] * 50:
        rows = "".join(f"C {' '.join(number_text(choose) for _ in 'xyz')}\n" for _ in range(atoms))
        yield f"# hf/3-21g geom=nocrowd\n\nnumbers\n\n0 1\n{rows}\n"


def with_large_numbers(text):
    """A job with every whole number behind its molecule larger by 2^32, one after the other."""
    parts = text.split("\n\n")
    rest = "\n\n".join(parts[3:])
    head = text[: len(text) - len(rest)]
    for number, match in enumerate(re.finditer(r"(?<![\w.])\d{1,3}(?![\w.])", rest)):
        if number == 12:
            break
        yield head + rest[: match.start()] + str(int(match[0]) + BEYOND) + rest[match.end() :]


def texts_of(source):
    sys.path.insert(0, str(source / "tests/cli"))
    import mended_jobs_test as faults

    examples = [path.read_bytes() for folder in ("jobs", "forms") for path in sorted((source / "examples" / folder).iterdir()) if path.suffix in SUFFIXES]
    yield from (("example", text) for text in examples)
    for _, right, wrong in faults.pairs_of_explanations(source):
        yield from (("explanation", text) for text in (right, wrong))
    yield from (("fault", faulty) for _, _, faulty in faults.made_faults(source))
    yield from (("base", text) for text in faults.bases(source).values())
    for text in examples:
        yield from (("large", each) for each in with_large_numbers(text.decode("utf-8", "surrogateescape")))
    for text in examples[:20]:
        yield "form", b"\xef\xbb\xbf" + text
        yield "form", text.replace(b"\r\n", b"\n").replace(b"\n", b"\r\n")
        yield "form", text.replace(b"\n", b"\r\n", 3)
        yield "form", text + "ångström".encode("latin-1")
        yield "form", text[: len(text) // 2]
    yield from (("numbers", text) for text in many_numbers())
    real = os.environ.get("QUOR_GJF_REAL_FILES")
    for path in sorted(pathlib.Path(real).resolve().rglob("*")) if real else []:
        if path.suffix in SUFFIXES:
            yield "real", path.read_bytes()


def write_all(folder, texts):
    """Each in a folder of its own, so that they share no checkpoints."""
    paths = []
    for number, (kind, text) in enumerate(texts):
        path = pathlib.Path(f"{kind}_{number:05}", f"{number:05}.gjf")
        (folder / path).parent.mkdir()
        (folder / path).write_bytes(text if isinstance(text, bytes) else text.encode("utf-8", "surrogateescape"))
        paths.append(str(path))
    return paths


def run(program, command, paths, folder, environment):
    """What a command prints, and its exit codes."""
    said = []
    for begin in range(0, len(paths), FILES_AT_ONCE):
        ended = subprocess.run([*program, "--no-config", *command, *paths[begin : begin + FILES_AT_ONCE]], cwd=folder, env=environment,
                               capture_output=True, check=False, timeout=600)
        said.append((ended.returncode, ended.stdout, PROGRESS.sub(b"", ended.stderr)))
    return said


def contents(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in sorted(folder.rglob("*")) if path.is_file()}


def first_difference(native, other):
    for (code, out, err), (other_code, other_out, other_err) in zip(native, other):
        if (code, err) != (other_code, other_err):
            return f"exit {code} and {other_code}: {err[-300:]} and {other_err[-300:]}"
        for line, other_line in zip(out.splitlines(), other_out.splitlines()):
            if line != other_line:
                at = next((i for i, (a, b) in enumerate(zip(line, other_line)) if a != b), 0)
                return f"native {line[max(at - 60, 0) : at + 200]}\nwasm   {other_line[max(at - 60, 0) : at + 200]}"
        if out != other_out:
            return f"{len(out)} bytes and {len(other_out)}"
    return None


def main():
    tool, wasm_tool, source = (pathlib.Path(each).resolve() for each in sys.argv[1:])
    environment = {key: value for key, value in os.environ.items() if not key.startswith("QUOR_")}
    native_environment = {**environment, "QUOR_G16_ROUTE_SCHEMA_YAML": str(source / "resources/schemas/input/gaussian_route.yaml")}
    texts = list(texts_of(source))
    problems = 0
    with tempfile.TemporaryDirectory() as work:
        for command in COMMANDS:
            folders = [pathlib.Path(work) / name for name in ("native", "wasm")]
            for folder in folders:
                folder.mkdir()
                (folder / "xyz").mkdir()
                paths = write_all(folder, texts)
            native = run([tool], command, paths, folders[0], native_environment)
            other = run(["node", "--no-experimental-fetch", wasm_tool], command, paths, folders[1], environment)
            different = [name for name, text in contents(folders[0]).items() if contents_of(folders[1], name) != text]
            problem = first_difference(native, other) or (f"written otherwise: {different[:5]}" if different else None)
            printed = sum(len(out) for _, out, _ in native)
            print(f"{' '.join(command)}: {printed} bytes printed, {'alike' if problem is None else 'NOT ALIKE'}", flush=True)
            if problem:
                print(problem)
                problems += 1
            for folder in folders:
                shutil.rmtree(folder)
    kinds = {kind: sum(kind == each for each, _ in texts) for kind, _ in texts}
    print(f"{len(texts)} files ({', '.join(f'{count} {kind}' for kind, count in kinds.items())}), {len(COMMANDS)} commands")
    if not os.environ.get("QUOR_GJF_REAL_FILES"):
        print("real files are left out: QUOR_GJF_REAL_FILES names no folder")
    return 1 if problems or kinds["example"] < 60 or kinds["fault"] < 300 or kinds["large"] < 200 else 0


def contents_of(folder, name):
    path = folder / name
    return path.read_bytes() if path.is_file() else None


if __name__ == "__main__":
    sys.exit(main())
