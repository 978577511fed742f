"""A language server as tests ask it: one request after the other, and what each character of a job is."""

import json
import subprocess

PARTS = {7: "link0", 12: "route", 15: "title", 5: "molecule", 13: "molecule"}


class Server:
    """A running `quor-gjf lsp`; ends with the block that uses it."""

    def __init__(self, tool):
        self.process = subprocess.Popen([tool, "lsp"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.count = 0
        capabilities = {"general": {"positionEncodings": ["utf-8"]}}
        started = self.ask("initialize", {"processId": None, "rootUri": None, "capabilities": capabilities})
        self.types = started["capabilities"]["semanticTokensProvider"]["legend"]["tokenTypes"]
        self.tell("initialized", {})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.ask("shutdown", None)
        self.tell("exit", None)
        self.process.wait(20)
        self.process.stdin.close()
        self.process.stdout.close()

    def send(self, message):
        body = json.dumps({"jsonrpc": "2.0", **message}).encode()
        self.process.stdin.write(b"Content-Length: %d\r\n\r\n" % len(body) + body)
        self.process.stdin.flush()

    def tell(self, method, parameters):
        self.send({"method": method, "params": parameters})

    def ask(self, method, parameters):
        self.count += 1
        self.send({"id": self.count, "method": method, "params": parameters})
        while True:
            length = 0
            while header := self.process.stdout.readline().strip():
                name, value = header.split(b":")
                length = int(value) if name.lower() == b"content-length" else length
            answer = json.loads(self.process.stdout.read(length))
            if answer.get("id") == self.count:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']}")
                return answer["result"]

    def describe(self, path):
        """Of each line of an ASCII file the type of each character ("" for none), and the part that the line belongs to."""
        text = path.read_text("ascii")
        document = {"uri": path.as_uri()}
        self.tell("textDocument/didOpen", {"textDocument": {**document, "languageId": "gaussian", "version": 1, "text": text}})
        lines = text.split("\n")
        types = [[""] * len(line) for line in lines]
        line = begin = 0
        data = self.ask("textDocument/semanticTokens/full", {"textDocument": document})["data"]
        for step, column, length, kind, _ in zip(*[iter(data)] * 5):
            line, begin = line + step, column if step else begin + column
            types[line][begin : begin + length] = [self.types[kind]] * length
        parts = [""] * len(lines)
        for job in self.ask("textDocument/documentSymbol", {"textDocument": document}):
            for part in job["children"] if job["kind"] == 2 else [job]:
                for number in range(part["range"]["start"]["line"], part["range"]["end"]["line"] + 1):
                    parts[number] = PARTS.get(part["kind"], "section")
        self.tell("textDocument/didClose", {"textDocument": document})
        return types, parts
