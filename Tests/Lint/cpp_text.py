# SPDX-License-Identifier: MIT
"""Just enough understanding of C++ text for checks: code without comments and literals, classes, their operations."""

import dataclasses
import re

_NO_CODE = re.compile(
    r"""//[^\n]*|/\*.*?\*/|R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"|"(?:\\.|[^"\\\n])*"|(?<!\w)'(?:\\.|[^'\\\n])*'""", re.DOTALL
)
_CLASS = re.compile(r"(?<!enum )\b(?:class|struct)\s+(\w+)(?:\s+final)?\s*(?::([^;{}()]*))?\{")
_NAMESPACE = re.compile(r"\bnamespace\s+([\w:]+)\s*\{")


@dataclasses.dataclass
class Operation:
    name: str
    line: int


@dataclasses.dataclass
class Class:
    name: str
    namespace: str
    base: str  # the first one without its namespace; empty when there is none
    line: int
    body: str
    operations: list  # the virtual ones it declares, in order

    def qualified_name(self):
        return f"{self.namespace}::{self.name}" if self.namespace else self.name

    def has_identifier(self):
        return re.search(r"\bId\b", self.body) is not None


def code_only(text):
    """The text with comments, strings and characters blanked, every line and column where it was."""
    return _NO_CODE.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), text)


def line_of(text, position):
    return text.count("\n", 0, position) + 1


def end_of_block(code, opening):
    """The position of the brace that closes the one at opening."""
    depth = 0
    for match in re.compile(r"[{}]").finditer(code, opening):
        depth += 1 if match.group() == "{" else -1
        if depth == 0:
            return match.start()
    return len(code)


def classes(text):
    """The classes of a file in order, those inside other classes included."""
    code = code_only(text)
    namespaces = [(match.end(), end_of_block(code, match.end() - 1), match.group(1)) for match in _NAMESPACE.finditer(code)]
    return [_read_class(code, match, namespaces) for match in _CLASS.finditer(code)]


def _read_class(code, match, namespaces):
    opening = match.end() - 1
    closing = end_of_block(code, opening)
    return Class(
        name=match.group(1),
        namespace="::".join(name for start, end, name in namespaces if start <= match.start() < end),
        base=_first_base(match.group(2) or ""),
        line=line_of(code, match.start()),
        body=code[opening:closing],
        operations=_operations(code, opening, closing),
    )


def _first_base(bases):
    words = re.sub(r"\b(?:public|protected|private|virtual)\b", " ", bases).split(",")[0].split("<")[0].strip()
    return words.split("::")[-1].strip()


def _operations(code, opening, closing):
    found = []
    for match in re.finditer(r"\bvirtual\b", code[opening:closing]):
        start = opening + match.start()
        if _depth(code, opening, start) != 1:
            continue
        declaration = re.match(r"virtual\b[^;{}(]*?(~?\w+)\s*\(", code[start:closing])
        if declaration:
            found.append(Operation(declaration.group(1), line_of(code, start)))
    return found


def _depth(code, opening, position):
    before = code[opening:position]
    return before.count("{") - before.count("}")
