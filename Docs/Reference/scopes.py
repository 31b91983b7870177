# SPDX-License-Identifier: MIT
"""Which lines of a C++ text declare something, and which stand inside a function: blocks in braces and declarations."""

import bisect
import dataclasses
import functools
import pathlib
import re
import sys

sys.dont_write_bytecode = True  # nothing is left behind among the sources
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Tests" / "Lint"))
import cpp_text  # noqa: E402

_DIRECTIVE = re.compile(r"^[ \t]*#(?:\\\n|[^\n])*", re.MULTILINE)
_ACCESS = re.compile(r"\s*(public|protected|private)\s*:(?!:)")
_TYPE = re.compile(r"(?:typedef\s+)?(class|struct|union|enum)\b(?:\s+class\b)?\s*(?:\[\[[^\]]*\]\]\s*)?(\w*)")


@dataclasses.dataclass
class Block:
    """What stands between two braces. The kind is namespace, class, struct, union, enum or body."""

    kind: str
    name: str
    head: str
    start: int
    end: int


@dataclasses.dataclass
class Declaration:
    """One declaration at namespace, class or enum level: its lines, and its text up to the body."""

    first_line: int
    last_line: int
    text: str
    scope: Block
    access: str


def blank(match):
    return re.sub(r"[^\n]", " ", match.group())


@functools.lru_cache(maxsize=None)
def declaring_code(text):
    """The code without comments, literals and preprocessor lines, every position where it was."""
    return _DIRECTIVE.sub(blank, cpp_text.code_only(text))


def without_template_head(head):
    """The head behind its template parameters."""
    match = re.match(r"\s*template\s*<", head)
    if match is None:
        return head.strip()
    depth = 1
    for place in range(match.end(), len(head)):
        depth += {"<": 1, ">": -1}.get(head[place], 0)
        if depth == 0:
            return without_template_head(head[place + 1 :])
    return head.strip()


def _describe(head):
    plain = without_template_head(head)
    namespace = re.match(r"(?:inline\s+)?namespace\b\s*([\w:]*)", plain)
    if namespace:
        return "namespace", namespace.group(1)
    if re.fullmatch(r"extern\s*", plain):
        return "namespace", ""
    found = _TYPE.match(plain)
    return (found.group(1), found.group(2)) if found else ("body", "")


def _head_before(code, brace):
    boundary = max(code.rfind(mark, 0, brace) for mark in ";{}")
    return _ACCESS.sub("", code[boundary + 1 : brace])


@functools.lru_cache(maxsize=None)
def blocks(text):
    """Every block of the text, outer ones first."""
    code = declaring_code(text)
    found, opened = [], []
    for match in re.finditer(r"[{}]", code):
        if match.group() == "}":
            if opened:
                opened.pop().end = match.start()
            continue
        head = _head_before(code, match.start())
        block = Block(*_describe(head), head.strip(), match.start(), len(code))
        found.append(block)
        opened.append(block)
    return found


def blocks_around(text, position):
    return [block for block in blocks(text) if block.start < position <= block.end]


def enclosing_operation(text, position):
    """The function that a position stands in, with its class: 'SimpleMap::SetString'; empty outside of functions."""
    around = blocks_around(text, position)
    first = next((block for block in around if block.kind == "body"), None)
    if first is None:
        return ""
    head = _function_head(text, first)
    name = re.search(r"(operator\s*(?:\(\)|[^\s(\w]+)|[\w~]+(?:\s*<[^<>]*>)?(?:::[\w~]+)*)\s*\(", head)
    classes = [block.name for block in around if block.kind in ("class", "struct") and block.name]
    return "::".join(classes + [name.group(1)]) if name else "::".join(classes)


def _function_head(text, block):
    """The head of a function, also for what it catches, and when members are set with braces before its body."""
    head = without_template_head(block.head)
    if head and not re.match(r",|catch\b", head):
        return head
    before = [other for other in blocks(text) if other.end < block.start and other.kind == "body"]
    return _function_head(text, max(before, key=lambda other: other.end)) if before else ""


@functools.lru_cache(maxsize=None)
def declarations(text):
    """What the text declares outside of functions, in order."""
    walk = _Walk(text)
    walk.run()
    return walk.found


class _Walk:
    """One walk over a text, from each declaration to the next."""

    def __init__(self, text):
        self.code = declaring_code(text)
        self.by_start = {block.start: block for block in blocks(text)}
        self.lines = [match.start() for match in re.finditer(r"^", text, re.MULTILINE)]
        self.file = Block("namespace", "", "", -1, len(text))
        self.found = []

    def run(self):
        self._scope(self.file, hidden=False)

    def _scope(self, scope, hidden):
        access = "private" if hidden or scope.kind == "class" else "public"
        position = scope.start + 1
        while position < scope.end:
            word = _ACCESS.match(self.code, position)
            if word:
                access, position = "private" if hidden else word.group(1), word.end()
                continue
            position = self._declaration(scope, access, position)

    def _declaration(self, scope, access, position):
        first = re.compile(r"\S").search(self.code, position, scope.end)
        if first is None:
            return scope.end
        mark, inner, end = self._end(scope, first.start())
        head = self.code[first.start() : mark]
        if head.strip():
            self.found.append(Declaration(self._line(first.start()), self._line(end), head, scope, access))
        if inner is not None:
            self._scope(inner, access == "private")
        return end + 1

    def _end(self, scope, start):
        """Where the head ends, the scope that the declaration opens, and its last position."""
        depth, mark, position = 0, None, start
        while position < scope.end:
            character = self.code[position]
            block = self.by_start.get(position)
            if block is not None and depth == 0 and block.kind != "body":
                return position, block, self._behind(block)
            if block is not None:
                mark = position if mark is None and depth == 0 else mark
                position = block.end
                if depth == 0 and self._is_function_end(scope, position):
                    return mark, None, position
            elif character in "([":
                depth += 1
            elif character in ")]":
                depth -= 1
            elif depth == 0 and character == (";" if scope.kind != "enum" else ","):
                return (position if mark is None else mark), None, position
            position += 1
        last = self._last(position) if scope.kind == "enum" else position - 1
        return (position if mark is None else mark), None, last

    def _last(self, position):
        return len(self.code[:position].rstrip()) - 1

    def _behind(self, block):
        semicolon = re.compile(r"\s*;").match(self.code, block.end + 1)
        return semicolon.end() - 1 if semicolon and block.kind != "namespace" else block.end

    def _is_function_end(self, scope, position):
        behind = re.compile(r"\s*(;|,|=|catch\b|\{|)").match(self.code, position + 1).group(1)
        return behind == "" and scope.kind != "enum"

    def _line(self, position):
        return bisect.bisect_right(self.lines, position)
