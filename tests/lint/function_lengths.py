"""Measures functions in lines, from the first of the signature to the closing bracket.

C++ is read by its layout, which clang-format holds: a definition begins at some indentation, its head ends with "{", and the first line
that is "}" at the same indentation closes it. What a function holds, lambdas too, counts for it. Python's docstrings do not count.
"""
import ast
import re

# What opens a bracket without being a function: scopes, types, tables, and control flow.
NO_FUNCTION = re.compile(r"(?:namespace|extern|struct|class|union|enum|if|for|while|switch|do|else|try|catch|return|case|default)\b"
                         r"|[^A-Za-z_~]")
HEAD_LIMIT = 12


def name_in(head):
    """The name before the first parenthesis of a head, or nothing where it is no function's."""
    if NO_FUNCTION.match(head) or "(" not in head or re.search(r"(=|\breturn)\s*\{$", head) or re.match(r"[^(]*[^=!<>]=[^=(]", head):
        return None
    match = re.search(r"([\w:~]+|operator[^(]+)\s*\(", head)
    return match and match.group(1)


def cpp_functions(text):
    """Yields name, first line (from 1) and number of lines of every function that has a body of several lines."""
    lines = text.split("\n")
    start = 0
    while start < len(lines):
        indentation = re.match(r" *", lines[start]).group(0)
        head, end = lines[start].strip(), start
        if re.match(r"template\b", head) and not head.endswith(("{", ";")):
            end, head = end + 1, lines[end + 1].strip() if end + 1 < len(lines) else ""
        while head and not head.endswith(("{", ";", "}")) and end + 1 < len(lines) and end - start < HEAD_LIMIT:
            end += 1
            head += " " + lines[end].strip()
        name = name_in(head) if head.endswith("{") else None
        if name is None:
            start += 1
            continue
        close = next((i for i in range(end + 1, len(lines)) if lines[i] == indentation + "}"), None)
        if close is None:
            start += 1
            continue
        yield name, start + 1, close - start + 1
        start = close + 1


def python_functions(text):
    """The same of a Python source."""
    for node in ast.walk(ast.parse(text)):
        if isinstance(node, (ast.FunctionDef, ast.AsyncFunctionDef)):
            lines = node.end_lineno - node.lineno + 1
            if ast.get_docstring(node) is not None:
                lines -= node.body[0].end_lineno - node.body[0].lineno + 1
            yield node.name, node.lineno, lines
