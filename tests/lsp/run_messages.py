"""Plays the messages of tests/lsp/messages/*.jsonl against a language server and compares what it sends.

Usage: run_messages.py SERVER... [-- FILE...]: the command of a server that speaks over standard input and output.

Each file begins a server. A line is an object: {"ask": method, "params", "result" or "error"} sends a request and compares its answer;
{"tell": method, "params"} sends a notification; {"raw": text} sends a text as it is; {"told": method, "params"} compares the next
message, which must be this notification or request; {"answer": ...} the next message whatever it is; {"ends": code} the exit code. What is
compared may have more keys than are named; {"$has": x} is a list with x in it, {"$no": x} one without, {"$count": n} one of n items.
"""
import json
import pathlib
import subprocess
import sys

FOLDER = pathlib.Path(__file__).resolve().parent / "messages"


class Server:
    """A server process, spoken with in frames."""

    def __init__(self, command):
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.number = 0

    def send_text(self, text):
        data = text.encode("utf-8", "surrogatepass")
        self.process.stdin.write(b"Content-Length: %d\r\n\r\n" % len(data) + data)
        self.process.stdin.flush()

    def send(self, message):
        self.send_text(json.dumps({"jsonrpc": "2.0", **message}))

    def receive(self):
        length = None
        while (line := self.process.stdout.readline().rstrip(b"\r\n")):
            key, _, value = line.partition(b":")
            assert key == b"Content-Length", line
            length = int(value)
        assert length is not None, "the server has ended"
        return json.loads(self.process.stdout.read(length))

    def ask(self, method, params):
        self.number += 1
        self.send({"id": self.number, "method": method, "params": params})
        answer = self.receive()
        assert answer.get("id") == self.number, answer
        return answer

    def end(self):
        self.process.stdin.close()
        return self.process.wait(10)


def difference(wanted, found, place=""):
    """What of the wanted is not found; None for nothing."""
    if isinstance(wanted, dict) and "$has" in wanted:
        return None if any(difference(wanted["$has"], each) is None for each in found) else f"{place}: nothing like {wanted['$has']} in {found}"
    if isinstance(wanted, dict) and "$no" in wanted:
        return f"{place}: {wanted['$no']} in {found}" if any(difference(wanted["$no"], each) is None for each in found) else None
    if isinstance(wanted, dict) and "$count" in wanted:
        return None if len(found) == wanted["$count"] else f"{place}: {len(found)} items: {found}"
    if isinstance(wanted, dict) and isinstance(found, dict):
        parts = (difference(value, found[key], f"{place}/{key}") if key in found else f"{place}/{key} is missing in {found}"
                 for key, value in wanted.items())
    elif isinstance(wanted, list) and isinstance(found, list) and len(wanted) == len(found):
        parts = (difference(one, other, f"{place}/{number}") for number, (one, other) in enumerate(zip(wanted, found)))
    else:
        return None if wanted == found else f"{place}: {found} instead of {wanted}"
    return next((part for part in parts if part is not None), None)


def play_step(server, step):
    params = step.get("params", {})
    if "ask" in step:
        answer = server.ask(step["ask"], params)
        wanted = {key: step[key] for key in ("result", "error") if key in step}
        assert wanted, "a request without what is expected"
        return difference(wanted, answer)
    if "tell" in step:
        return server.send({"method": step["tell"], "params": params})
    if "raw" in step:
        return server.send_text(step["raw"] * step.get("times", 1))
    if "told" in step:
        return difference({"method": step["told"], "params": params}, server.receive())
    if "answer" in step:
        return difference(step["answer"], server.receive())
    code = server.end()
    return None if code == step["ends"] else f"exit code {code}"


def play(command, path):
    """Returns what went wrong, and how many steps were compared."""
    server = Server(command)
    steps = [json.loads(line) for line in path.read_text(encoding="utf-8").splitlines() if line]
    try:
        for number, step in enumerate(steps, 1):
            problem = play_step(server, step)
            if problem:
                return f"{path.name}:{number}: {problem}", 0
        rest = b"" if server.process.poll() is None and not server.process.stdin.closed and server.end() is None else server.process.stdout.read()
        return (f"{path.name}: more was sent: {rest[:300]}", 0) if rest else (None, len(steps))
    except (AssertionError, OSError, ValueError) as error:
        return f"{path.name}:{number}: {error}", 0
    finally:
        server.process.kill()
        server.process.wait()


def main():
    command, _, files = (sys.argv[1:], None, []) if "--" not in sys.argv else (
        sys.argv[1 : sys.argv.index("--")], None, sys.argv[sys.argv.index("--") + 1 :])
    paths = [pathlib.Path(each) for each in files] or sorted(FOLDER.glob("*.jsonl"))
    results = [play(command, path) for path in paths]
    problems = [problem for problem, _ in results if problem]
    print("\n".join(problems) or f"{len(paths)} tables, {sum(steps for _, steps in results)} messages")
    return 1 if problems or not paths else 0


if __name__ == "__main__":
    sys.exit(main())
