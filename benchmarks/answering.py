"""What people wait for while they write: the first findings, those after a key stroke, and what may be written, by `quor-gjf lsp`.

Times that go by, each the best of several, in turn with what they are compared with.
"""
import ctypes
import os
import pathlib
import subprocess
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "tests/lsp"))
from run_messages import Server  # noqa: E402

EDITS = 10_000
URI = "file:///a.gjf"
ABOUT = {"textDocument": {"uri": URI}}


def seconds(run):
    begin = time.perf_counter()
    run()
    return time.perf_counter() - begin


class Client:
    """A server with one text open."""

    def __init__(self, build, text, uri=URI):
        self.server = Server([str(build / "cli/quor-gjf"), "lsp"])
        self.server.ask("initialize", {"capabilities": {"general": {"positionEncodings": ["utf-8"]}}})
        self.server.send({"method": "initialized", "params": {}})
        self.about = {"textDocument": {"uri": uri, "version": 1}}
        self.server.send({"method": "textDocument/didOpen", "params": {"textDocument": {**self.about["textDocument"], "languageId": "g", "text": text}}})
        self.findings()

    def findings(self):
        assert self.server.receive()["method"] == "textDocument/publishDiagnostics"

    def type(self, line, character, text, length=0):
        place = {"start": {"line": line, "character": character}, "end": {"line": line, "character": character + length}}
        self.server.send({"method": "textDocument/didChange", "params": {**self.about, "contentChanges": [{"range": place, "text": text}]}})

    def complete(self, line, character):
        return self.server.ask("textDocument/completion", {**self.about, "position": {"line": line, "character": character}})["result"]["items"]

    def kilobytes(self):
        status = pathlib.Path(f"/proc/{self.server.process.pid}/status").read_text(encoding="utf-8")
        return int(status.split("VmRSS:")[1].split()[0])


def first_findings(build, path, runs):
    """Seconds of a server from its start to the findings, and of `check`."""
    text = path.read_text(encoding="utf-8")

    def serve():
        Client(build, text, f"file://{path.resolve()}").server.end()

    def check():
        subprocess.run([str(build / "cli/quor-gjf"), "check", "--exit-zero", str(path)], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)

    times = [(seconds(serve), seconds(check)) for _ in range(runs)]
    return [min(column) for column in zip(*times)]


def check_text_seconds(build, text):
    library = ctypes.CDLL(str(build / "src/libquor_g16_gjf.so"))
    library.gjf_request.restype = ctypes.c_void_p
    data = text.encode()
    return seconds(lambda: library.gjf_result_destroy(ctypes.c_void_p(library.gjf_request(b"check", data, ctypes.c_size_t(len(data)), None))))


def key_strokes(build, text, runs):
    """Seconds from a key to its findings, of `check_text` alone, and of the first completion behind a key, after a moment."""
    client = Client(build, text)
    route = next(number for number, line in enumerate(text.split("\n")) if line.startswith("#"))
    column = len(text.split("\n")[route])
    times = []
    for _ in range(runs):
        client.type(route, column, " opt=cal")
        client.findings()
        time.sleep(0.3)
        completing = seconds(lambda: client.complete(route, column + 8))
        client.type(route, column, "", 8)
        client.findings()
        times.append((seconds(lambda: (client.type(route + 2, 0, "x"), client.findings())), check_text_seconds(build, text), completing))
    client.server.end()
    return [min(column) for column in zip(*times)]


def memory_growth(build, text):
    """Kilobytes more after many edits, of which the first tenth is not counted."""
    client = Client(build, text)
    before = 0
    for number in range(EDITS):
        client.type(2, 0, "xy" if number % 2 == 0 else "", 0 if number % 2 == 0 else 2)
        client.findings()
        if number == EDITS // 10:
            before = client.kilobytes()
    growth = client.kilobytes() - before
    client.server.end()
    return growth


def add_answering(table, build, environment):
    os.environ.update(environment)
    small, large = (build / "inputs" / f"{name}.gjf" for name in ("small", "large"))
    for key, path, runs in (("first_findings", small, 30), ("first_findings_large", large, 5)):
        serving, checking = first_findings(build, path, runs)
        table.add(key, f"`lsp`, from its start to the findings in {path.name}, ms more than `check`", 1e3 * (serving - checking), "{:.1f}", most=5,
                  note=f"{1e3 * serving:.1f} and {1e3 * checking:.1f} ms")
    typing, checking, completing = key_strokes(build, large.read_text(encoding="utf-8"), 7)
    table.add("key_stroke", "`lsp`, from a key in 100,000 atoms to the findings, ms more than `check_text`", 1e3 * (typing - checking), "{:.1f}",
              most=20, note=f"{1e3 * typing:.0f} and {1e3 * checking:.0f} ms")
    table.add("completion", "`lsp`, a completion there, a third of a second after a key, ms", 1e3 * completing, "{:.1f}", most=5)
    table.add("memory_of_edits", f"`lsp`, kB more after {EDITS:,} edits", memory_growth(build, small.read_text(encoding="utf-8")), "{:.0f}", most=1000)
