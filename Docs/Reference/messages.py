# SPDX-License-Identifier: MIT
"""The page of messages: the texts for people in the sources of module, host and tool, as they are put together."""

import dataclasses
import re

import scopes
from cpp_tree import Group, Token, read_tree
from markdown import code, page, table

# A file belongs to the first part that has it.
PARTS = (
    (
        "The module and what modules are built from",
        ("Src", "Helpers", "InterfacesHelpers", "BasicInterfaceImplementations"),
    ),
    ("The serializer module", ("Host/JsonSerializer",)),
    ("The host", ("Host",)),
    ("The command tvx", ("Tool",)),
)
# The report lines have a page of their own, and scripts for shells are no messages.
LEFT_OUT = (
    "Helpers/Results.h",
    "Tool/BashCompletion.cpp",
    "Tool/FishCompletion.cpp",
    "Tool/ShellTables.cpp",
    "Tool/ZshCompletion.cpp",
)

_LINE_WRITERS = ("WriteLine", "Say", "Append")  # each writes its arguments one behind the other
_SEPARATORS = (",", ";", "?", ":", "=", "return", "throw")
_ESCAPES = {"n": "\n", "t": "\t", "r": "\r", "0": "\0"}


@dataclasses.dataclass
class Message:
    path: str
    line: int
    operation: str
    kind: str
    text: str


def read_messages(root):
    """Each part with its messages."""
    seen = set(LEFT_OUT)
    for title, folders in PARTS:
        found = []
        for path in (path for folder in folders for path in sorted((root / folder).rglob("*"))):
            name = path.relative_to(root).as_posix()
            if path.suffix in (".h", ".cpp") and name not in seen:
                seen.add(name)
                found += _messages_of(name, path.read_text(encoding="utf-8"))
        yield title, found


def make_messages(root):
    parts = [
        "What stands in ‹ › is put in when the text is made: the expression of the source. A row is one text, or one"
        " piece of a text that is put together in steps."
    ]
    for title, found in read_messages(root):
        heads = ("Text", "Kind of error", "In", "Source")
        parts += [f"## {title}", table(heads, map(_row, found))]
    return page("Messages", *parts)


def _row(message):
    where = f"{message.path}:{message.line}"
    return code(_visible(message.text)), message.kind, code(message.operation), code(where)


def _visible(text):
    shown = "".join(character if character >= " " else f"\\x{ord(character):02x}" for character in text)
    return shown.replace("\\x0a", "\\n").replace("\\x09", "\\t").replace("\\x0d", "\\r")


def _messages_of(path, text):
    for items, kind in _segments(read_tree(text), ""):
        shown = _render(text, items) if _is_for_people(items) else ""
        if shown:
            start = next(item.start for item in items if _is_text(item))
            yield Message(path, text.count("\n", 0, start) + 1, scopes.enclosing_operation(text, start), kind, shown)


def _segments(group, kind):
    """The pieces of the group, and of all groups in it, that are one expression each, with the kind of error."""
    kind = _error_kind(group) or (kind if group.opening == "{" else "")
    if group.before in _LINE_WRITERS and group.opening == "(":
        yield _flat(group), ""
        return
    if group.before == "static_assert":
        return
    segment = []
    for item in group.items:
        if not isinstance(item, Group) and item.shown in _SEPARATORS and item.kind in ("sign", "word"):
            yield segment, kind
            segment = []
            continue
        segment.append(item)
        if isinstance(item, Group) and not _is_wrapped_text(item):
            yield from _segments(item, kind)
    yield segment, kind


def _flat(group):
    """The items of a line: those of a list in braces, too, and without the commas."""
    items = []
    for item in group.items:
        if isinstance(item, Group) and item.opening == "{":
            items += _flat(item)
        else:
            items.append(item)
    return items


def _error_kind(group):
    words = [item.shown for item in group.items if not isinstance(item, Group)]
    for place, word in enumerate(words[:-2]):
        if word == "ErrorKind" and words[place + 1] == "::" and group.before != "switch":
            return words[place + 2]
    return ""


def _is_text(item):
    return item.kind == "text" if not isinstance(item, Group) else _is_wrapped_text(item)


def _is_wrapped_text(item):
    """Whether it is the bracket of std::string("text")."""
    return item.before in ("string", "string_view") and len(item.items) == 1 and _is_text(item.items[0])


def _is_for_people(items):
    literal = "".join(_unescape(_text_of(item)) for item in items if _is_text(item))
    return re.search(r"[A-Za-z]{2}", literal) is not None and " " in literal


def _text_of(item):
    return item.items[0].shown if isinstance(item, Group) else item.shown


def _unescape(shown):
    return re.sub(r"\\(.)", lambda match: _ESCAPES.get(match.group(1), match.group(1)), shown[1:-1])


def _render(text, items):
    """The text with the expressions in their places."""
    if any(getattr(item, "shown", "") == "<<" for item in items):
        items = items[next(place for place, item in enumerate(items) if getattr(item, "shown", "") == "<<") :]
    shown, expression = "", []
    for item in [*_without_choices(text, items), None]:
        joint = item is None or _is_text(item) or getattr(item, "shown", "") in ("+", "<<", ",")
        if not joint:
            expression.append(item)
            continue
        shown += _show_expression(text, expression, wrapped=isinstance(item, Group))
        expression = []
        shown += _unescape(_text_of(item)) if item is not None and _is_text(item) else ""
    return shown


def _without_choices(text, items):
    """The items, those from one comma to the next that choose between texts as one expression."""
    pieces = [[]]
    for item in items:
        if getattr(item, "shown", "") == ",":
            pieces.append([])
        else:
            pieces[-1].append(item)
    for piece in pieces:
        if any(getattr(item, "shown", "") == "?" for item in piece):
            piece = [Token("choice", text[piece[0].start : piece[-1].end], piece[0].start, piece[-1].end)]
        yield from piece
        yield Token("sign", ",", 0, 0)


def _show_expression(text, expression, wrapped):
    """The source of an expression; nothing for the name of the type around a text."""
    if not expression or wrapped:
        return ""
    source = " ".join(text[expression[0].start : expression[-1].end].split())
    if re.fullmatch(r"'(.|\\.)'", source):
        return _unescape(source)
    converted = re.fullmatch(r"std::(?:string|to_string)\(([^()]*(?:\([^()]*\))?[^()]*)\)", source)
    return "" if source == "std::endl" else f"‹{converted.group(1) if converted else source}›"
