# SPDX-License-Identifier: MIT
"""The tokens of a C++ text, those in brackets as a group of their own."""

import dataclasses
import re

_TOKEN = re.compile(
    r"""(?P<skipped>//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:\\\n|[^\n])*|\s+)"""
    r"""|(?P<script>R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)")|(?P<text>"(?:\\.|[^"\\\n])*")"""
    r"""|(?P<character>(?<!\w)'(?:\\.|[^'\\\n])*')|(?P<word>\w[\w.']*)|(?P<sign>::|->|<<|>>|==|<=|>=|!=|&&|\|\||.)""",
    re.DOTALL | re.MULTILINE | re.VERBOSE,
)
_CLOSING = {"(": ")", "[": "]", "{": "}"}


@dataclasses.dataclass
class Token:
    kind: str
    shown: str
    start: int
    end: int


@dataclasses.dataclass
class Group:
    """What stands between two brackets; before is the token in front of them."""

    opening: str
    before: str
    items: list
    start: int
    end: int


def read_tree(text):
    root = Group("{", "", [], 0, len(text))
    opened = [root]
    for match in _TOKEN.finditer(text):
        if match.lastgroup == "skipped" or match.group("skipped"):
            continue
        _add(opened, _token(match))
    return root


def _token(match):
    kind = next(name for name in ("script", "text", "character", "word", "sign") if match.group(name) is not None)
    return Token(kind, match.group(), match.start(), match.end())


def _add(opened, token):
    items = opened[-1].items
    if token.kind == "sign" and token.shown in _CLOSING:
        before = items[-1].shown if items and isinstance(items[-1], Token) else ""
        group = Group(token.shown, before, [], token.start, token.end)
        items.append(group)
        opened.append(group)
    elif token.kind == "sign" and token.shown == _CLOSING.get(opened[-1].opening) and len(opened) > 1:
        opened.pop().end = token.end
    else:
        items.append(token)
