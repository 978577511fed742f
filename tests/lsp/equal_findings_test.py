"""The server finds in a file what `check --json` finds, at the same places: in example jobs, in what checks.md calls wrong and right, in
seeded faults, and in real files where QUOR_GJF_REAL_FILES names a folder.

Of a text that editors alter on opening it (no UTF-8, a byte order mark, several kinds of line ends) all but T003, T004 and T008 is compared,
places aside.

Usage: equal_findings_test.py TOOL SOURCE WORK_FOLDER [SERVER...]: with the command of a server that opens no files; without, the tool's own.
"""
import concurrent.futures
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import urllib.parse

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "cli"))
import mended_jobs_test as faults  # noqa: E402
from run_messages import Server  # noqa: E402

SEVERITIES = {"error": 1, "warning": 2, "note": 3}
ALTERED = {"GJF-T003", "GJF-T004", "GJF-T008"}
OF_FILES = ("GJF-L010", "GJF-L015", "GJF-I")  # what lies beside a job
SUFFIXES = {".gjf", ".com", ".gau"}


def is_kept(data):
    """Whether editors keep a text as it is."""
    try:
        text = data.decode("utf-8")
    except UnicodeDecodeError:
        return False
    return not text.startswith("\ufeff") and len(set(re.findall(r"\r\n|\r|\n", text))) <= 1


def opened_text(data):
    """A text as editors have it: a mark taken off, bytes that are no UTF-8 taken for Latin-1, one kind of line end."""
    if is_kept(data):
        return data.decode("utf-8")
    data = data.removeprefix(b"\xef\xbb\xbf")
    try:
        text = data.decode("utf-8")
    except UnicodeDecodeError:
        text = data.decode("latin-1")
    ends = re.findall(r"\r\n|\r|\n", text)
    return re.sub(r"\r\n|\r|\n", "\r\n" if ends.count("\r\n") * 2 > len(ends) else "\n", text)


class Places:
    """Lines and UTF-16 units of the bytes of a text."""

    def __init__(self, data):
        self.data = data
        self.begins = [0] + [match.end() for match in re.finditer(rb"\r\n|\r|\n", data)]

    def position(self, offset):
        line = max(number for number, begin in enumerate(self.begins) if begin <= offset)
        begin, end = self.begins[line], self.begins[line + 1] if line + 1 < len(self.begins) else len(self.data)
        content = self.data[begin:end].rstrip(b"\r\n")[: offset - begin]
        return {"line": line, "character": len(content.decode("utf-8", "replace").encode("utf-16-le")) // 2}

    def range(self, begin, end):
        return {"start": self.position(begin), "end": self.position(end)}


def told_findings(findings, data):
    """Findings of `check --json` as a server tells them."""
    places = Places(data)
    told = []
    for each in findings:
        one = {"code": each["code"], "severity": SEVERITIES[each["severity"]], "source": "quor-gjf",
               "message": each["message"] + (f" ({each['hint']})" if each.get("hint") else ""), "range": places.range(each["begin"], each["end"])}
        related = []
        for other in each.get("related", []):
            begin = places.begins[other["line"] - 1] + max(other["column"], 1) - 1
            related.append({"message": other["message"], "location": {"range": places.range(begin, begin + other["length"])}})
        told.append((one, related))
    return told


def checked_by_tool(tool, paths):
    result = subprocess.run([tool, "check", "--json", *map(str, paths)], capture_output=True, text=True, check=False)
    return [json.loads(line)["findings"] for line in result.stdout.splitlines()]


def compare(server, path, findings, opens_files):
    """Returns what differs, or None."""
    data = path.read_bytes()
    uri = "file://" + urllib.parse.quote(str(path))
    server.send({"method": "textDocument/didOpen",
                 "params": {"textDocument": {"uri": uri, "languageId": "gaussian", "version": 1, "text": opened_text(data)}}})
    answer = server.receive()
    assert answer["method"] == "textDocument/publishDiagnostics", answer
    server.send({"method": "textDocument/didClose", "params": {"textDocument": {"uri": uri}}})
    assert server.receive()["params"]["diagnostics"] == []
    found = answer["params"]["diagnostics"]
    for each in found:
        page = each.pop("codeDescription", {"href": ""})["href"]
        assert each["code"].startswith("site:") or bool(re.search(r"^file:///.*checks\.md#L\d+$", page)) == opens_files, each
    if is_kept(data):
        wanted = told_findings(findings, data)
        found = [({key: value for key, value in each.items() if key != "relatedInformation"},
                  [{"message": other["message"], "location": {"range": other["location"]["range"]}} for other in each.get("relatedInformation", [])])
                 for each in found]
    else:
        wanted = sorted((each["code"], SEVERITIES[each["severity"]]) for each in findings if each["code"] not in ALTERED)
        found = sorted((each["code"], each["severity"]) for each in found if each["code"] not in ALTERED)
    return None if found == wanted else f"{path}:\n  server {found}\n  tool   {wanted}"


def written(folder, texts):
    """Each in a folder of its own: so they share no checkpoints, and one run checks all."""
    paths = []
    for number, text in enumerate(texts):
        paths.append(folder / f"{number:04}" / "job.gjf")
        paths[-1].parent.mkdir(parents=True)
        paths[-1].write_bytes(text if isinstance(text, bytes) else text.encode())
    return paths


def main():
    tool, source, work = sys.argv[1], pathlib.Path(sys.argv[2]).resolve(), pathlib.Path(sys.argv[3])
    shutil.rmtree(work, ignore_errors=True)
    work = work.absolute()
    paths = [path for folder in ("jobs", "forms") for path in sorted((source / "examples" / folder).iterdir()) if path.suffix in SUFFIXES]
    if os.environ.get("QUOR_GJF_REAL_FILES"):
        paths += sorted(path for path in pathlib.Path(os.environ["QUOR_GJF_REAL_FILES"]).resolve().rglob("*") if path.suffix in SUFFIXES)
    alone = len(paths)
    paths += written(work / "explained", [text for _, right, wrong in faults.pairs_of_explanations(source) for text in (right, wrong)])
    paths += written(work / "faults", [faulty for _, _, faulty in faults.made_faults(source)])
    strange = [b"\xef\xbb\xbf# hf/sto-3g opt=clacfc\n\nt\n\n0 1\nHe 0 0 0\n\n", "# hf/sto-3g\r\n\ntitle \xe5\n\n0 1\r\nHe 0 0 0\n\n".encode("latin-1")]
    paths += written(work / "altered", strange)
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        findings = [each for (each,) in pool.map(lambda path: checked_by_tool(tool, [path]), paths[:alone])]
    findings += checked_by_tool(tool, paths[alone:])
    opens_files = len(sys.argv) == 4
    if not opens_files:
        findings = [[one for one in each if not one["code"].startswith(OF_FILES)] for each in findings]
    server = Server(sys.argv[4:] or [tool, "lsp"])
    server.ask("initialize", {"capabilities": {}})
    server.send({"method": "initialized", "params": {}})
    problems = [problem for path, each in zip(paths, findings) if (problem := compare(server, path, each, opens_files))]
    server.end()
    kept = sum(is_kept(path.read_bytes()) for path in paths)
    total = sum(map(len, findings))
    print("\n".join(problems[:5]) or f"{len(paths)} files, {kept} of them kept as they are by editors: {total} findings alike")
    return 1 if problems or alone < 40 or total < 300 or kept == len(paths) else 0


if __name__ == "__main__":
    sys.exit(main())
