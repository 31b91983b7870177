# SPDX-License-Identifier: MIT
"""The page of report lines: every use of a checking macro in the module and in what modules are built from."""

import dataclasses
import re

import scopes
from contract import ShapeError, join_lines
from markdown import code, page, table

HEADER = "Helpers/Results.h"
FOLDERS = ("Src", "Helpers", "InterfacesHelpers", "BasicInterfaceImplementations")
_DEFINITION = re.compile(r"((?:^//.*\n)+)#define (TVX_\w+)\(", re.MULTILINE)


@dataclasses.dataclass
class Use:
    macro: str
    path: str
    line: int
    operation: str
    condition: str


def read_macros(root):
    """What each checking macro says of itself."""
    text = (root / HEADER).read_text(encoding="utf-8")
    found = {name: join_lines(line[2:] for line in comment.splitlines()) for comment, name in _DEFINITION.findall(text)}
    for match in re.finditer(r"^#define (TVX_\w+)", text, re.MULTILINE):
        if match.group(1) not in found:
            raise ShapeError(HEADER, text.count("\n", 0, match.start()) + 1, f"{match.group(1)} is not documented")
    return found


def read_uses(root):
    macros = re.compile(rf"\b({'|'.join(read_macros(root))})\s*\(")
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                yield from _uses_in(path.relative_to(root).as_posix(), path.read_text(encoding="utf-8"), macros)


def _uses_in(name, text, macros):
    code_text = scopes.declaring_code(text)
    for match in macros.finditer(code_text):
        line = text.count("\n", 0, match.start()) + 1
        operation = scopes.enclosing_operation(text, match.start())
        if not operation:
            raise ShapeError(name, line, f"{match.group(1)} stands outside of a function")
        yield Use(match.group(1), name, line, operation, " ".join(_argument(code_text, text, match.end()).split()))


def _argument(code_text, text, start):
    depth = 1
    for place in range(start, len(code_text)):
        depth += {"(": 1, ")": -1}.get(code_text[place], 0)
        if depth == 0:
            return text[start:place]
    return ""


def make_report_lines(root):
    macros = read_macros(root)
    uses = list(read_uses(root))
    rows = [_row(macros, use) for use in uses]
    return page(
        "Report lines",
        "A failed check is a programming error of the caller. It writes one line to standard output: the name of the"
        " check, and the place in the sources, from the project's root.",
        "```\nTVX_CHECK_PRECOND: [Src/SimpleMap.cpp:123]\n```",
        "## The checks",
        table(("Check", "What it does"), [(code(name), text) for name, text in macros.items()]),
        f"## The {len(uses)} places",
        table(("Place", "In", "Check", "Of", "Gives"), rows),
    )


def _row(macros, use):
    where = code(f"{use.path}:{use.line}")
    return where, code(use.operation), code(use.macro), code(use.condition), _given(macros, use)


def _given(macros, use):
    number = re.search(r"-\d+", macros[use.macro])
    return number.group() if number else "the code it is given"
