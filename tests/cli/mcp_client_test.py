"""Speaks with `quor-gjf mcp` by the protocol's own client, which comes from PyPI into an environment of its own and is kept there.

Usage: mcp_client_test.py TOOL WORK_FOLDER
"""
import asyncio
import json
import os
import pathlib
import subprocess
import sys

CLIENT = "mcp==2.3.0"
JOB = "# hf/sto-3g opt=clacfc\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\nH 0 1 0\n\n"
LONG = "# hf/sto-3g\n\nt\n\n0 1\n" + "".join(f"H 0 0 {number}.0\n" for number in range(20_000)) + "\n"
CALLS = (("check", {"path": "in.gjf"}, lambda answer: answer["findings"][0]["code"] == "GJF-R001"),
         ("explain", {"word": "GJF-R001"}, lambda answer: answer["code"] == "GJF-R001"),
         ("fix", {"path": "in.gjf", "unsafe-fixes": True}, lambda answer: "+# hf/sto-3g opt=calcfc\n" in answer["diff"]),
         ("route", {"text": "hf/gen"}, lambda answer: answer["sections"][0]["request"] == "gen"),
         ("complete", {"text": "hf opt=calcf"}, lambda answer: answer["completions"][0]["text"] == "calcfc"),
         ("outline", {"text": JOB}, lambda answer: len(answer["jobs"]) == 1),
         ("select", {"text": JOB, "select": "H"}, lambda answer: answer["jobs"][0]["atoms"] == [2, 3]),
         ("select", {"text": LONG, "select": "all"},
          lambda answer: answer["left"]["/jobs/0/atoms"] + len(answer["jobs"][0]["atoms"]) == 20_000),
         ("edit", {"text": JOB, "title": "new"}, lambda answer: "+new\n" in answer["diff"]))
FAILING = (("check", {"path": "../outside.gjf"}), ("select", {"text": JOB, "select": "within"}), ("edit", {"text": JOB}))
REFUSED = (("next", {}), ("check", {}), ("check", {"text": JOB, "more": 1}), ("edit", {"text": JOB, "job": 0}))


def installed(work):
    """The Python of the environment with the client, or None where it cannot be had."""
    python = work / "venv" / "bin" / "python"
    mark = work / CLIENT
    if not mark.exists():
        subprocess.run([sys.executable, "-m", "venv", "--clear", work / "venv"], check=True)
        got = subprocess.run([python, "-m", "pip", "install", "--quiet", "--disable-pip-version-check", "--retries", "1",
                              "--timeout", "20", CLIENT], check=False, capture_output=True, text=True)
        if got.returncode != 0:
            print(got.stderr[-500:])
            return None
        mark.touch()
    return python


async def spoken(tool, root, mode):
    """All calls, after the newest client's first question, which is none of ours, or with the handshake at once."""
    from mcp import Client, MCPError, StdioServerParameters, stdio_client
    server = stdio_client(StdioServerParameters(command=tool, args=["mcp", "--root", str(root)], env=dict(os.environ)))
    async with Client(server, mode=mode) as client:
        assert client.protocol_version == "2025-06-18" and client.server_info.name == "quor-gjf", client.protocol_version
        tools = {tool.name: tool for tool in (await client.list_tools()).tools}
        assert sorted(tools) == sorted({name for name, _, _ in CALLS}), sorted(tools)
        assert all(tool.annotations.read_only_hint for tool in tools.values())
        for name, arguments, holds in CALLS:
            result = await client.call_tool(name, arguments)  # which compares the answer with the tool's schema
            answer = json.loads(result.content[0].text)
            assert not result.is_error and holds(answer), (mode, name, answer)
            assert result.structured_content == answer, (mode, name)
        for name, arguments in FAILING:
            assert (await client.call_tool(name, arguments)).is_error, (mode, name)
        for name, arguments in REFUSED:
            try:
                await client.call_tool(name, arguments)
            except MCPError as error:
                assert error.code == -32602, (mode, name, error)
            else:
                raise AssertionError((mode, name, "was not refused"))


def main():
    tool, work = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    if len(sys.argv) == 4:  # within the environment
        for mode in ("auto", "legacy"):
            asyncio.run(spoken(str(tool), work / "root", mode))
        return 0
    (work / "root").mkdir(parents=True, exist_ok=True)
    (work / "root" / "in.gjf").write_text(JOB, encoding="utf-8")
    python = installed(work)
    if python is None:
        print(f"left out: {CLIENT} cannot be had from PyPI")
        return 0
    return subprocess.run([python, __file__, tool, work, "speak"], check=False, timeout=300).returncode


if __name__ == "__main__":
    sys.exit(main())
