"""The jobs that an output of Gaussian repeats: Link 0 lines, route, title, charge line and molecule.

Sections behind the molecule are not repeated, nor is what a step takes from a checkpoint.
"""
import gzip
import re
from typing import List, NamedTuple

WIDTH = 70  # the echo is cut here, inside words too


class EchoedJob(NamedTuple):
    text: str
    ended_normally: bool


def lines_of(path):
    with (gzip.open if path.suffix == ".gz" else open)(path, "rt", errors="replace") as file:
        return file.read().splitlines()


def framed(lines, begin, opens):
    """The text between the next two lines of dashes that begins with `opens`, and where it ends."""
    for i in range(begin, len(lines) - 2):
        if re.match(r" -+$", lines[i]) and lines[i + 1][1:].startswith(opens):
            for end in range(i + 1, len(lines)):
                if re.match(r" -+$", lines[end]):
                    # Blanks at the end of a cut line are not printed.
                    cut = [line[1:].ljust(WIDTH) for line in lines[i + 1:end]]
                    return "".join(cut).rstrip(), end
    return None, begin


def molecule_of(lines):
    """The charge line and all rows behind "Symbolic Z-matrix:", with the variables in sections of their own."""
    pairs, rows = [], []
    for line in lines:
        found = re.match(r" Charge = *(-?\d+) Multiplicity = *(-?\d+)( .*)?$", line)
        if found:
            # Where fragments have pairs of their own, that of the whole comes first here as in the job.
            pairs.append(f"{found[1]} {found[2]}")
        elif not line.strip():
            break
        elif line.strip() in ("Variables:", "Constants:"):
            rows.append("")
        elif re.match(r" *\S+ +-?[\d.]+ +Scan ", line):
            rows.append(line.replace(" Scan ", " ").strip())
        elif not re.match(r" (End of file|Error|Leave Link|[A-Z][a-z]+ [a-z])", line):
            rows.append(line.strip())
        else:
            break
    return " ".join(pairs), rows


def echoed_job(lines):
    """The job of the lines behind one "Entering Link 1"; None where the output does not repeat it."""
    end = next((i for i, line in enumerate(lines) if "Proceeding to internal job step" in line), len(lines))
    route, at = framed(lines[:end], 0, "#")
    if route is None:
        return None
    text = "".join(line[1:] + "\n" for line in lines[:at] if line.startswith(" %")) + route + "\n\n"
    title, at = framed(lines[:end], at + 1, "")
    begin = next((i for i in range(at, end) if lines[i] == " Symbolic Z-matrix:"), end)
    if begin < end and title is not None:
        pairs, rows = molecule_of(lines[begin + 1:end])
        text += f"{title}\n\n{pairs}\n" + "".join(row + "\n" for row in rows) + "\n"
    elif re.search(r"geom\w*=\(?\w*check|restart", route, re.I) and not re.search("allcheck|restart", route, re.I):
        charge = re.search(r"^ Charge = *(-?\d+) Multiplicity = *(-?\d+)", "\n".join(lines[at:end]), re.M)
        text += f"{title}\n\n{charge[1]} {charge[2]}\n\n" if charge else "title\n\n0 1\n\n"
    elif not re.search("allcheck|restart", route, re.I):
        return None
    return EchoedJob(text, any("Normal termination" in line for line in lines[-8:]))


def echoed_jobs(path) -> List[EchoedJob]:
    """The jobs that a user wrote, as an output repeats them."""
    lines = lines_of(path)
    begins = [i for i, line in enumerate(lines) if line.startswith(" Entering Link 1 =")] + [len(lines)]
    found = [echoed_job(lines[begin:end]) for begin, end in zip(begins, begins[1:])]
    return [job for job in found if job is not None]
