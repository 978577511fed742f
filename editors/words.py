#!/usr/bin/env python3
"""Writes the word lists of the grammars, which `quor-gjf schema words` prints: words.py TOOL [--check]."""

import json
import pathlib
import re
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
VIM = HERE / "vim/syntax/gaussian_words.vim"
EMACS = HERE / "emacs/quor-gjf-words.el"
TEXTMATE = HERE / "vscode/syntaxes/gaussian.tmLanguage.json"
PLAIN = re.compile(r"[a-z0-9+*-]+$")
# What may stand behind a word, in Vim's grammar.
VIM_FOLLOWERS = {
    "Method": " nextgroup=gaussianEquals,gaussianOptionList skipwhite",
    "Keyword": " nextgroup=gaussianEquals,gaussianOptionList skipwhite",
    "Basis": " nextgroup=gaussianBasisTail",
}


def words_of(tool, kind):
    """The words of a kind, but those that end within a parenthesis."""
    listed = subprocess.run([tool, "schema", "words", kind], capture_output=True, text=True, check=True).stdout.split()
    return [word for word in listed if word.count("(") == word.count(")")]


def with_beginnings(keys):
    """Link 0 keys, which Gaussian takes by their first five letters too."""
    return sorted({key[:length] for key in keys for length in range(min(5, len(key)), len(key) + 1)})


def one_of(words):
    """A regular expression, the same for all editors but for its escapes, of words that begin alike written once."""
    heads = {}
    for word in words:
        heads.setdefault(word[:1], []).append(word[1:])
    is_end = heads.pop("", None) is not None
    branches = [re.escape(head).replace(r"\-", "-") + one_of(tails) for head, tails in sorted(heads.items())]
    if not branches:
        return ""
    joined = branches[0] if len(branches) == 1 else "|".join(branches)
    return f"(?:{joined})" + ("?" if is_end else "") if is_end or len(branches) > 1 else joined


def vim_pattern(expression):
    """The same for Vim's \\v: what a sign means there, and does not elsewhere, is escaped."""
    return re.sub(r"\(\?:", "%(", expression)


def wrapped(words, begin, width):
    lines = [begin]
    for word in words:
        if len(lines[-1]) + len(word) + 1 > width:
            lines.append(begin)
        lines[-1] += " " + word
    return "\n".join(lines)


def vim_text(kinds):
    text = '" Written by editors/words.py from the vocabulary: quor-gjf schema words.\n'
    for group, words in kinds.items():
        # Keywords of Vim come before its patterns: "ccsd" would hide "ccsd(t)".
        begins = {word.partition("(")[0] for word in words if not PLAIN.match(word)}
        plain = [word for word in words if PLAIN.match(word) and word not in begins]
        others = [word for word in words if not PLAIN.match(word) or word in begins]
        follows = f"contained{VIM_FOLLOWERS.get(group, '')}"
        text += wrapped(plain, f"syn keyword gaussian{group} {follows}", 125) + "\n"
        if others:
            text += f'syn match gaussian{group} "\\v<{vim_pattern(one_of(others))}\\k@!" {follows}\n'
    return text


def emacs_text(kinds):
    text = ";;; quor-gjf-words.el --- words of Gaussian routes -*- lexical-binding: t; -*-\n"
    text += ";; Written by editors/words.py from the vocabulary: quor-gjf schema words.\n;;; Code:\n"
    for group, words in kinds.items():
        body = wrapped([f'"{word}"' for word in words], " ", 120)
        text += f"(defconst quor-gjf-words-{group.lower()}\n  '(\n{body}))\n"
    return text + "(provide 'quor-gjf-words)\n;;; quor-gjf-words.el ends here\n"


def textmate_text(kinds, old):
    grammar = json.loads(old)
    for group, words in kinds.items():
        rule = grammar["repository"][group.lower()]
        # A basis set goes on with its polarisation functions.
        tail = r"(?:\([^)\s]*\)|[*+])*" if group == "Basis" else ""
        rule["match"] = rf"(?i)(?<![^\s,/:(=%])(?:{one_of(words)}){tail}(?![\w*+-])"
    return json.dumps(grammar, indent=2, ensure_ascii=False) + "\n"


def main(arguments):
    tool = arguments[0]
    methods = words_of(tool, "method")
    kinds = {
        "Link0Key": with_beginnings(words_of(tool, "link0")),
        "Method": methods,
        # What stands behind ONIOM is no list of options: grammars know it themselves.
        "Keyword": sorted(set(words_of(tool, "keyword")) - set(methods) - {"oniom"}),
        "Basis": words_of(tool, "basis"),
    }
    texts = {VIM: vim_text(kinds), EMACS: emacs_text(kinds)}
    if TEXTMATE.exists():
        texts[TEXTMATE] = textmate_text(kinds, TEXTMATE.read_text())
    stale = [path for path, text in texts.items() if not path.exists() or path.read_text() != text]
    if "--check" in arguments:
        for path in stale:
            print(f"{path.relative_to(HERE)} is not what the vocabulary says: run editors/words.py")
        return 1 if stale else 0
    for path in stale:
        path.write_text(texts[path])
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
