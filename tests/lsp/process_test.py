"""The server as a process: how its input may come, and when it ends.

Usage: process_test.py TOOL WORK_FOLDER
"""
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import time

from run_messages import Server

LIMIT = 5.0  # seconds within which the server ends
JOB = "# hf/sto-3g opt=clacfc\n\nt\n\n0 1\nH 0 0 0\nH 0 0 1\n\n"
PARENT = """
import subprocess, sys, time
child = subprocess.Popen(sys.argv[1:])
print(child.pid, flush=True)
time.sleep(60)
"""


def frame(message):
    data = message if isinstance(message, bytes) else json.dumps({"jsonrpc": "2.0", **message}).encode()
    return b"Content-Length: %d\r\n\r\n" % len(data) + data


def initialize(**more):
    return frame({"id": 1, "method": "initialize", "params": {"capabilities": {}, **more}}) + frame({"method": "initialized", "params": {}})


def opened(text, uri="file:///a.gjf"):
    return frame({"method": "textDocument/didOpen", "params": {"textDocument": {"uri": uri, "languageId": "g", "version": 1, "text": text}}})


def ask(number, method, uri="file:///a.gjf"):
    return frame({"id": number, "method": "textDocument/" + method, "params": {"textDocument": {"uri": uri}}})


END = frame({"id": 99, "method": "shutdown"}) + frame({"method": "exit"})


def messages_in(output):
    found = []
    while output:
        head, _, output = output.partition(b"\r\n\r\n")
        length = int(head.removeprefix(b"Content-Length: "))
        found.append(json.loads(output[:length]))
        output = output[length:]
    return found


class Tests:
    def __init__(self, tool, work):
        self.command = [tool, "lsp"]
        self.work = work

    def run(self, data, code, error=""):
        result = subprocess.run(self.command, input=data, capture_output=True, check=False, timeout=30, cwd=self.work)
        assert result.returncode == code, (result.returncode, result.stderr, data[:200])
        assert result.stderr.decode() == error, result.stderr
        return messages_in(result.stdout)

    def begin(self):
        server = Server(self.command)
        server.ask("initialize", {"capabilities": {}, "processId": os.getpid()})
        server.send({"method": "initialized", "params": {}})
        return server

    def test_several_messages_in_one_write(self):
        found = self.run(initialize() + opened(JOB) + ask(2, "documentSymbol") + END, 0)
        assert [each.get("id") for each in found] == [1, 2, 99], found
        found = self.run(initialize() + opened(JOB), 1)
        assert found[-1]["params"]["diagnostics"][0]["code"] == "GJF-R001", found

    def test_bytes_one_by_one(self):
        process = subprocess.Popen(self.command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        for byte in initialize() + opened(JOB.replace("t", "\u00e5")) + ask(2, "documentSymbol") + END:
            process.stdin.write(bytes([byte]))
            process.stdin.flush()
        found = messages_in(process.communicate(timeout=30)[0])
        assert [each["id"] for each in found if "id" in each] == [1, 2, 99], found
        assert process.returncode == 0

    def test_what_is_no_message(self):
        for garbage in (b"\r\n", b"nonsense\n", b"\0\0\0\n", b"Content-Length: -5\r\n\r\n", b"Content-Length: x\r\n\r\n", b"Content-Length:\r\n\r\n",
                        b"Content-Length: 5 5\r\n\r\n", b"x" * 100_000, b"Other: 1\r\n\r\n", b"{}", frame(b"{"), b"Content-Length: 2\r\n\r\n{\"a\":1}",
                        b"Content-Length: 0\r\n\r\n"):
            found = self.run(initialize() + garbage + ask(2, "documentSymbol") + END, 0)
            errors = [each["error"]["code"] for each in found if "error" in each]
            assert errors.count(-32602) == 1 and set(errors) <= {-32700, -32600, -32602}, (garbage[:60], found)
            assert (garbage == b"\r\n") == (len(errors) == 1), (garbage[:60], found)
        headers = b"content-length:%d\r\nContent-Type: application/vscode-jsonrpc; charset=utf-8\n\n"
        body = json.dumps({"jsonrpc": "2.0", "id": 7, "method": "x"}).encode()
        assert [each["id"] for each in self.run(initialize() + headers % len(body) + body + END, 0)] == [1, 7, 99]

    def test_messages_too_long(self):
        word = "quor-gjf: a message is longer than 256 MB\n"
        self.run(initialize() + b"Content-Length: 268435457\r\n\r\n", 1, word)
        self.run(initialize() + b"Content-Length: 99999999999999999999999999\r\n\r\n", 1, word)

    def test_cancelled_requests(self):
        many = b"".join(ask(number, "documentSymbol") for number in range(2, 40))
        cancel = frame({"method": "$/cancelRequest", "params": {"id": 39}}) + frame({"method": "$/cancelRequest", "params": {"id": 1234}})
        found = {each["id"]: each for each in self.run(initialize() + opened(JOB) + many + cancel + END, 0) if "id" in each}
        assert sorted(found) == [1, *range(2, 40), 99]
        assert found[39]["error"]["code"] == -32800, found[39]
        assert "result" in found[2]

    def test_end_of_input(self):
        server = self.begin()
        begin = time.monotonic()
        assert server.end() == 1
        assert time.monotonic() - begin < LIMIT
        atoms = "".join(f"H {i}.0 0.0 0.0\n" for i in range(60_000))
        busy = subprocess.Popen(self.command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        busy.stdin.write(initialize() + opened(JOB[:-1] + atoms + "\n") + ask(2, "semanticTokens/full") * 200)
        begin = time.monotonic()
        busy.communicate(timeout=30)
        assert time.monotonic() - begin < LIMIT + 2, "a server that is busy ends too"
        assert busy.returncode == 1

    def test_end_of_reader(self):
        process = subprocess.Popen(self.command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        process.stdout.close()
        process.stdin.write(initialize())
        process.stdin.flush()
        assert process.wait(LIMIT) == 1

    def test_end_of_parent(self):
        """Although somebody else keeps its input open."""
        reader, writer = os.pipe()
        parent = subprocess.Popen([sys.executable, "-c", PARENT, *self.command], stdin=reader, stdout=subprocess.PIPE)
        child = int(parent.stdout.readline())
        os.write(writer, initialize())
        assert parent.stdout.readline().startswith(b"Content-Length"), "the server is up"
        parent.send_signal(signal.SIGKILL)
        parent.wait()
        self.expect_end(child)
        os.close(writer)
        os.close(reader)

    def test_end_of_client(self):
        client = subprocess.Popen(["sleep", "60"])
        server = Server(self.command)
        server.ask("initialize", {"capabilities": {}, "processId": client.pid})
        client.kill()
        client.wait()
        assert server.process.wait(LIMIT) == 1
        server = Server(self.command)
        server.ask("initialize", {"capabilities": {}, "processId": 2**22 + 5})
        time.sleep(1.5)
        assert server.process.poll() is None, "a process that was never seen is none to wait for"
        assert server.end() == 1

    @staticmethod
    def expect_end(process):
        begin = time.monotonic()
        while time.monotonic() - begin < LIMIT:
            try:
                state = pathlib.Path(f"/proc/{process}/stat").read_text(encoding="utf-8").rsplit(")", 1)[1].split()[0]
            except FileNotFoundError:
                return
            if state == "Z":
                return
            time.sleep(0.05)
        raise AssertionError("the server outlives its parent")

    def test_configuration(self):
        """The file beside a job has a say, as it is at each check; a mistake in it is told once."""
        (self.work / "a.gjf").write_text(JOB, encoding="utf-8")
        uri = f"file://{self.work}/a.gjf"
        configuration = self.work / ".quor-gjf"
        configuration.write_text('[check.severity]\n"GJF-R001" = "note"\n', encoding="utf-8")
        server = self.begin()
        server.process.stdin.write(opened(JOB, uri))
        server.process.stdin.flush()
        assert server.receive()["params"]["diagnostics"][0]["severity"] == 3
        for text, severities in (('ignore = ["GJF-R"]\n', []), ("nonsense\n", [1]), ("nonsense\n", [1]), ("", [1])):
            configuration.write_text(text, encoding="utf-8")
            server.send({"method": "textDocument/didSave", "params": {"textDocument": {"uri": uri}}})
            told = server.receive()
            if text == "nonsense\n" and told["method"] == "window/showMessage":
                assert ".quor-gjf:1" in told["params"]["message"], told
                told = server.receive()
            assert [each["severity"] for each in told["params"]["diagnostics"]] == severities, (text, told)
        assert server.end() == 1
        configuration.unlink()

    def check_workspace(self, folder, capabilities):
        server = Server(self.command)
        folders = [{"uri": f"file://{folder}", "name": "jobs"}]
        server.ask("initialize", {"capabilities": capabilities, "workspaceFolders": folders, "initializationOptions": {"workspaceDiagnostics": True}})
        server.send({"method": "initialized", "params": {}})
        return server

    def test_workspace(self):
        folder = self.work / "jobs"
        folder.mkdir()
        for number in range(30):
            (folder / f"{number}.gjf").write_text(JOB if number % 2 else JOB.replace("clacfc", "calcfc"), encoding="utf-8")
        server = self.check_workspace(folder, {"window": {"workDoneProgress": True}})
        created = server.receive()
        assert created["method"] == "window/workDoneProgress/create", created
        server.send({"id": created["id"], "result": None})
        told = []
        while not told or told[-1].get("params", {}).get("value", {}).get("kind") != "end":
            told.append(server.receive())
        published = [each["params"] for each in told if each["method"] == "textDocument/publishDiagnostics"]
        assert len(published) == 30 and sum(len(each["diagnostics"]) for each in published) == 15
        assert server.end() == 1
        server = self.check_workspace(folder, {"textDocument": {"diagnostic": {}}})
        answer = server.ask("workspace/diagnostic", {"previousResultIds": []})["result"]["items"]
        assert len(answer) == 30 and {each["kind"] for each in answer} == {"full"}
        known = [{"uri": each["uri"], "value": each["resultId"]} for each in answer]
        (folder / "7.gjf").write_text(JOB + "\n", encoding="utf-8")
        answer = server.ask("workspace/diagnostic", {"previousResultIds": known})["result"]["items"]
        assert [each["uri"][-5:] for each in answer if each["kind"] == "full"] == ["7.gjf"]
        server.send({"id": 77, "method": "workspace/diagnostic", "params": {"previousResultIds": [], "workDoneToken": "w"}})
        assert server.receive()["params"]["value"]["kind"] == "begin"
        server.send({"method": "$/cancelRequest", "params": {"id": 77}})
        while (last := server.receive()).get("id") != 77:
            assert last["method"] == "$/progress", last
        assert last.get("error", {}).get("code", -32800) == -32800
        assert server.end() == 1

    def test_workspace_of_many_files(self):
        folder = self.work / "many"
        folder.mkdir()
        for number in range(5001):
            (folder / f"{number}.gjf").write_bytes(b"")
        server = self.check_workspace(folder, {"textDocument": {"diagnostic": {}}})
        server.send({"id": 5, "method": "workspace/diagnostic", "params": {"previousResultIds": []}})
        assert "first 5,000" in server.receive()["params"]["message"]
        assert len(server.receive()["result"]["items"]) == 5000
        assert server.end() == 1

    def test_nothing_is_written(self):
        before = sorted(self.work.rglob("*"))
        self.run(initialize() + opened(JOB, f"file://{self.work}/b.gjf") + ask(2, "formatting", f"file://{self.work}/b.gjf") + END, 0)
        assert sorted(self.work.rglob("*")) == before


def main():
    work = pathlib.Path(sys.argv[2]).absolute()
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    tests = Tests(str(pathlib.Path(sys.argv[1]).resolve()), work)
    names = [name for name in dir(tests) if name.startswith("test_")]
    for name in names:
        begin = time.monotonic()
        getattr(tests, name)()
        print(f"{name}: {time.monotonic() - begin:.1f} s", flush=True)
    return 0 if len(names) > 10 else 1


if __name__ == "__main__":
    sys.exit(main())
