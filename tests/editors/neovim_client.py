"""Neovim at work: it is driven by its keys, and asked what it shows. Yields (feature, fault), the fault empty where it was seen."""

import json
import os
import pathlib
import subprocess
import tempfile
import time

PATIENCE = 60  # seconds that one answer may take on a busy machine


class Neovim:
    def __init__(self, source, tool, work, name):
        self.folder = tempfile.TemporaryDirectory()  # the path of a socket may not be long
        self.socket = pathlib.Path(self.folder.name) / "nvim.sock"
        self.name = name
        start = work / "init.lua"
        start.write_text(
            f'vim.opt.rtp:prepend("{source}/editors/vim")\nvim.opt.rtp:prepend("{source}/editors/neovim")\n'
            f'vim.opt.swapfile = false\nrequire("quor_gjf").setup({{ cmd = {{ "{tool}", "lsp" }} }})\n'
            'vim.ui.select = function(items, options, on_choice)\n'
            "    choices = vim.tbl_map(options.format_item, items)\n"
            "    for i, text in ipairs(choices) do\n        if text == wanted then on_choice(items[i], i) end\n    end\nend\n"
        )
        environment = {**os.environ, **{f"XDG_{kind}_HOME": str(work / kind) for kind in ("CONFIG", "DATA", "STATE", "CACHE")}}
        command = [name, "--headless", "-u", start, "--listen", self.socket]
        self.process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.wait("1", 1)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait(PATIENCE)
        self.folder.cleanup()

    def lua(self, expression):
        """The value of a Lua expression; None where Neovim does not answer yet."""
        text = f"json_encode(luaeval({json.dumps(expression)}))"
        asked = subprocess.run([self.name, "--server", self.socket, "--remote-expr", text], capture_output=True, text=True, check=False)
        answer = asked.stdout or asked.stderr  # the value comes over either
        try:
            return json.loads(answer)
        except json.JSONDecodeError:
            return answer if asked.returncode == 0 else None

    def do(self, statement):
        self.lua(f"(function() {statement} return 1 end)()")

    def keys(self, keys):
        subprocess.run([self.name, "--server", self.socket, "--remote-send", keys], check=True, capture_output=True)

    def wait(self, expression, wanted):
        """Asks until the value is the wanted one, or `wanted` says yes to it; returns what is wrong otherwise."""
        end = time.monotonic() + PATIENCE
        while True:
            value = self.lua(expression)
            if wanted(value) if callable(wanted) else value == wanted:
                return ""
            if time.monotonic() > end:
                return f"{expression} gave {value!r}"
            time.sleep(0.05)

    def line(self, number):
        return f"vim.fn.getline({number})"


def features(source, tool, work, job):
    path = work / "water.com"
    path.write_text(job)
    with Neovim(source, tool, work, "nvim") as editor:
        editor.do(f"vim.cmd('edit {path}')")
        yield "type of a .com", editor.wait("vim.bo.filetype", "gaussian")
        codes = "(function() local c = vim.tbl_map(function(d) return d.code end, vim.diagnostic.get(0)) table.sort(c) return c end)()"
        yield "findings", editor.wait(codes, ["GJF-M002", "GJF-R021"])
        editor.do("vim.fn.setline(7, '0 1')")
        yield "findings after an edit", editor.wait(codes, ["GJF-R021"])
        editor.do("vim.fn.cursor(3, 20) vim.lsp.buf.hover()")
        floats = (
            "(function() for _, w in ipairs(vim.api.nvim_list_wins()) do if vim.api.nvim_win_get_config(w).relative ~= '' then"
            " return table.concat(vim.api.nvim_buf_get_lines(vim.api.nvim_win_get_buf(w), 0, -1, false), ' ') end end end)()"
        )
        yield "hover", editor.wait(floats, lambda text: isinstance(text, str) and "Optimizes" in text)
        editor.do("vim.fn.cursor(9, 5) vim.lsp.buf.definition()")
        yield "definition", editor.wait("vim.fn.line('.')", 12)
        editor.do("vim.fn.cursor(9, 5) vim.lsp.buf.references()")
        yield "references", editor.wait("vim.tbl_map(function(i) return i.lnum end, vim.fn.getqflist())", [9, 10, 12])
        editor.do("vim.cmd('cclose') vim.fn.cursor(9, 5) vim.lsp.buf.document_highlight()")
        marks = "#vim.api.nvim_buf_get_extmarks(0, vim.api.nvim_create_namespace('vim_lsp_references'), 0, -1, {})"
        yield "highlight", editor.wait(marks, 3)
        editor.do("vim.lsp.buf.rename('roh')")
        lines = "vim.fn.getline(9, 12)"
        yield "rename", editor.wait(lines, ["H 1 roh", "H 1 roh 2 a", "", "roh 0.96"])
        editor.do("vim.lsp.buf.document_symbol()")
        names = "table.concat(vim.tbl_map(function(i) return i.text end, vim.fn.getqflist()), ';')"
        yield "symbols", editor.wait(names, lambda text: isinstance(text, str) and "route" in text and "molecule" in text)
        editor.do("vim.cmd('cclose') wanted = 'ignore GJF-R021 in this job' vim.fn.cursor(3, 40) vim.lsp.buf.code_action()")
        yield "silence a finding", editor.wait(editor.line(3), "! quor-gjf: ignore GJF-R021") or editor.wait(codes, [])
        editor.do("vim.cmd('undo')")
        editor.wait(codes, ["GJF-R021"])
        editor.do("wanted = 'leave out tight' vim.fn.cursor(3, 40) vim.lsp.buf.code_action()")
        mended = "#p b3lyp/6-31g(d) opt freq scf=(tight)"
        fault = editor.wait(editor.line(3), mended)
        yield "mend a finding", fault and f"{fault}; offered {editor.lua('choices')}"
        yield "findings after mending", editor.wait(codes, [])
        editor.keys("3GA int=ultraf<C-x><C-o>")
        yield "completion", editor.wait(editor.line(3), mended + " int=ultrafine")
        editor.keys("<Esc>")
        editor.do("vim.fn.setline(8, '    O') vim.fn.setline(9, '    H 1 roh') vim.lsp.buf.range_formatting({}, {9, 0}, {9, 4})")
        two = f"{{{editor.line(8)}, {editor.line(9)}}}"
        yield "align a part", editor.wait(two, lambda lines: lines and lines[0] == "    O" and lines[1] != "    H 1 roh")
        editor.do("vim.lsp.buf.formatting()")
        yield "align", editor.wait(editor.line(8), lambda text: text is not None and not text.startswith("    O"))


if __name__ == "__main__":
    import sys

    here = pathlib.Path(__file__).resolve().parent
    folder = pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for feature, fault in features(here.parents[1], sys.argv[1], folder, (here / "water.com").read_text()):
        print(feature, fault or "ok", sep=": ")
