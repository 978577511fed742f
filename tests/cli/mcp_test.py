"""Speaks the Model Context Protocol with `quor-gjf mcp`: its transcripts in docs/agents.md, more wrong messages than right ones, and paths
that lead out of its root.

Usage: mcp_test.py TOOL SOURCE WORK_FOLDER
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import threading

FIRST = {"jsonrpc": "2.0", "id": 0, "method": "initialize", "params": {"protocolVersion": "2025-06-18", "capabilities": {}}}
JOB = "# hf/sto-3g opt=clacfc\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\nH 0 1 0\n\n"


def spoken(tool, root, lines):
    """What the server answers to lines of bytes, as values. Its input stays open until all are answered."""
    command = [tool, "mcp"] + (["--root", str(root)] if root else [])
    last = b'{"jsonrpc":"2.0","id":"last","method":"ping"}'
    answers = []
    with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as server:
        writer = threading.Thread(target=lambda: (server.stdin.writelines(line + b"\n" for line in [*lines, last]), server.stdin.flush()))
        writer.start()
        for line in server.stdout:
            answers.append(json.loads(line))
            if answers[-1].get("id") == "last":
                break
        writer.join()
        server.stdin.close()
        assert server.wait(60) == 0 and not server.stdout.read() and not server.stderr.read(), "the end of its input ends it"
    return answers[:-1]


def line_of(message):
    return json.dumps(message).encode()


def call(number, tool, arguments):
    return line_of({"jsonrpc": "2.0", "id": number, "method": "tools/call", "params": {"name": tool, "arguments": arguments}})


def state_of(folder):
    return sorted((str(path), path.lstat().st_mtime_ns, path.lstat().st_size) for path in folder.rglob("*"))


def made_root(work):
    root = work / "root"
    (root / "sub").mkdir(parents=True)
    (work / "outside.gjf").write_text(JOB)
    (root / "in.gjf").write_text(JOB)
    (root / "latin.gjf").write_bytes(JOB.replace("\nt\n", "\n\xe9\n").encode("latin-1"))
    (root / "huge.gjf").touch()
    os.truncate(root / "huge.gjf", (256 << 20) + 1)
    os.mkfifo(root / "pipe.gjf")
    for name, target in (("out.gjf", "../outside.gjf"), ("absolute.gjf", work / "outside.gjf"), ("sub/back.gjf", "../in.gjf"),
                         ("circle.gjf", "circle.gjf"), ("up", ".."), ("gone.gjf", "nothing.gjf")):
        os.symlink(target, root / name)
    return root


def test_transcripts(tool, source, work):
    text = (source / "docs/agents.md").read_text(encoding="utf-8")
    root = work / "documented"
    root.mkdir()
    (root / "water.gjf").write_text(re.search(r"`water\.gjf`:\n\n```\n(.*?)```", text, re.DOTALL).group(1))
    shown = re.findall(r"^## (\w+): .*?\n\n```json\n(.*?)\n(.*?)\n```", text, re.MULTILINE)
    calls = [call(number, name, json.loads(arguments)) for number, (name, arguments, _) in enumerate(shown, 1)]
    first, *answers, listed = spoken(tool, root, [line_of(FIRST), *calls, line_of({"jsonrpc": "2.0", "id": 99, "method": "tools/list"})])
    assert first["result"]["serverInfo"]["name"] == "quor-gjf", first
    for (name, _, wanted), answer in zip(shown, answers):
        result = answer["result"]
        assert result["content"][0]["text"] == wanted and not result["isError"], (name, result["content"][0]["text"])
        assert result["structuredContent"] == json.loads(wanted), name
    assert [each["name"] for each in listed["result"]["tools"]] == [name for name, _, _ in shown], "each tool has its transcript"


def test_paths(tool, root):
    rows = [("in.gjf", None), ("./sub/../in.gjf", None), ("sub/back.gjf", None), (str(root / "in.gjf"), None), ("latin.gjf", None),
            ("../outside.gjf", "leads out of the root"), ("sub/../../outside.gjf", "leads out of the root"),
            ("../root/in.gjf", "leads out of the root"), ("/etc/passwd", "leads out of the root"),
            (str(root.parent / "outside.gjf"), "leads out of the root"), (str(root) + "/../outside.gjf", "leads out of the root"),
            ("out.gjf", "leads out of the root"), ("absolute.gjf", "leads out of the root"), ("up/outside.gjf", "leads out of the root"),
            ("circle.gjf", "cannot be read"), ("gone.gjf", "is not there"), ("nothing.gjf", "is not there"), ("in.gjf/", "is not there"),
            ("", "is not there"), ("in.gjf\0.txt", "has no NUL"), ("x" * 5000, "is not there"), ("sub", "is no regular file"),
            (".", "is no regular file"), (str(root), "leads out of the root"), ("pipe.gjf", "is no regular file"),
            ("huge.gjf", "is larger than 256 MB")]
    before = state_of(root.parent)
    answers = spoken(tool, root, [line_of(FIRST)] + [call(i, "check", {"path": path}) for i, (path, _) in enumerate(rows)])[1:]
    for (path, problem), answer in zip(rows, answers):
        text = answer["result"]["content"][0]["text"]
        assert answer["result"]["isError"] == (problem is not None), (path[:80], text)
        assert (text == f"'{path}' {problem}".replace("'in.gjf\0.txt'", "a path")) if problem else json.loads(text)["errors"] == 1, (path[:80], text)
    changes = [call(1, "fix", {"path": "in.gjf", "unsafe-fixes": True}), call(2, "edit", {"path": "latin.gjf", "charge": "1"})]
    fixed, edited = (answer["result"]["structuredContent"]["diff"] for answer in spoken(tool, root, [line_of(FIRST), *changes])[1:])
    assert fixed.startswith("--- in.gjf\n+++ in.gjf\n@@ -1,4 +1,4 @@\n-# hf/sto-3g opt=clacfc\n+# hf/sto-3g opt=calcfc\n"), fixed
    assert [line for line in edited.split("\n") if line.startswith(("+", "-"))][2:] == ["-0 1", "+1 1"], edited
    assert state_of(root.parent) == before, "the server writes nothing"
    without = spoken(tool, None, [line_of(FIRST), call(1, "check", {"path": "in.gjf"}), call(2, "check", {"text": JOB})])[1:]
    assert [answer["result"]["isError"] for answer in without] == [True, False], without


def test_messages(tool, root):
    rows = [(b"{", -32700), (b"\xff\xfe", -32700), (b"\0", -32700), (b'"', -32700), (b"[" * 100_000, -32700), (b"[]", -32600),
            (b"[1]", -32600), (b"7", -32600), (b"{}", -32600), (b'{"jsonrpc":"2.0","id":1,"method":"none"}', -32601),
            (b'{"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":"none"}}', -32602),
            (call(1, "check", {}), -32602), (call(1, "check", {"text": JOB, "path": "in.gjf"}), -32602),
            (call(1, "check", {"text": JOB, "more": 1}), -32602), (call(1, "check", {"text": 1}), -32602),
            (call(1, "explain", {}), -32602), (call(1, "edit", {"text": JOB, "job": "1"}), -32602)]
    silent = [b"", b"  \r", b'{"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":1}}', b'{"jsonrpc":"2.0","method":"x"}']
    answers = spoken(tool, root, [line_of(FIRST) + b"\r", *silent, *(line for line, _ in rows), call(1, "check", {"text": JOB})])
    codes = [answer.get("error", {}).get("code") for answer in answers]
    assert codes == [None, *(code for _, code in rows), None], codes
    half = call(1, "edit", {"text": JOB, "title": "TITLE"}).replace(b"TITLE", b"\\ud800x")
    edited = spoken(tool, root, [line_of(FIRST), half])[1]["result"]["structuredContent"]["diff"]
    assert "\n+\ufffdx\n" in edited, edited
    wrong = subprocess.run([tool, "mcp", "--root", root / "in.gjf"], stdin=subprocess.DEVNULL, capture_output=True, check=False)
    assert wrong.returncode == 2 and not wrong.stdout, wrong


def test_end(tool):
    """What was asked before the input ends is answered, however long that takes."""
    atoms = "".join(f"C {i % 40}.0 {i // 40 % 40}.0 {i // 1600}.0\n" for i in range(8_000))
    slow = call(0, "check", {"text": f"# hf/sto-3g\n\nt\n\n0 1\n{atoms}\n"})
    asked = [line_of(FIRST), *(slow.replace(b'"id": 0', b'"id": %d' % number) for number in range(1, 13))]
    result = subprocess.run([tool, "mcp"], input=b"\n".join(asked) + b"\n", capture_output=True, check=True, timeout=300)
    assert [json.loads(line)["id"] for line in result.stdout.splitlines()] == list(range(13)), result.stderr


def main():
    tool, source, work = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3]).resolve()
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    test_transcripts(tool, source, work)
    root = made_root(work / "paths")
    test_paths(tool, root)
    test_messages(tool, root)
    test_end(tool)


if __name__ == "__main__":
    main()
