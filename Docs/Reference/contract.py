# SPDX-License-Identifier: MIT
"""The contract as data: interfaces, operations and what their comments promise, read from the headers.

A header that breaks the shape of the comments ends the reading with a ShapeError, which names file and line.
"""

import dataclasses
import re

from scopes import cpp_text

_PARAMETER = re.compile(r"  +(\w+(?:, \w+)*)  +(\S.*)")


class ShapeError(Exception):
    """What is wrong, in one line."""

    def __init__(self, path, line, message):
        super().__init__(f"{path}:{line}: {message}")


@dataclasses.dataclass
class Operation:
    interface: str
    name: str
    slot: int
    header: str
    line: int
    result: str
    parameters: list  # (type, name)
    effect: str
    notes: dict  # what the comment says of a parameter
    threads: str
    fails: str

    def call(self):
        return f"{self.name}({', '.join(name for _, name in self.parameters)})"


@dataclasses.dataclass
class Interface:
    name: str
    namespace: str
    base: str
    header: str
    line: int
    comment: str
    identifier: str  # empty for one that is used through a pointer only
    operations: list


def headers_with_contract(root):
    """The headers that hold interfaces, as paths from the root: those of all modules, then the host's own."""
    found = sorted((root / "Interfaces").glob("*.h")) + sorted((root / "Host").glob("I[A-Z]*.h"))
    return [path.relative_to(root).as_posix() for path in found]


def read_contract(root):
    """Every interface by its name, in the order of headers and lines."""
    interfaces = {}
    for header in headers_with_contract(root):
        for interface in read_header(root, header, interfaces):
            interfaces[interface.name] = interface
    _number(interfaces)
    return interfaces


def read_header(root, header, known=()):
    text = (root / header).read_text(encoding="utf-8")
    lines = text.splitlines()
    for found in cpp_text.classes(text):
        if re.fullmatch(r"I[A-Z]\w+", found.name):
            yield _read_interface(header, lines, found)


def _read_interface(header, lines, found):
    comment = join_lines(comment_above(lines, found.line))
    if not comment:
        raise ShapeError(header, found.line, f"{found.name} is not documented")
    body = "\n".join(lines[found.line - 1 : found.line + found.body.count("\n") + 2])
    identifier = re.search(r'\bId\[\] = "([^"]+)"', body)
    operations = [_read_operation(header, lines, found.name, operation) for operation in found.operations]
    return Interface(
        found.name,
        found.namespace,
        found.base,
        header,
        found.line,
        comment,
        identifier.group(1) if identifier else "",
        operations,
    )


def _number(interfaces):
    """Checks the slots that the comments say against the order of declaration."""

    def count(name):
        interface = interfaces.get(name)
        return 0 if interface is None else count(interface.base) + len(interface.operations)

    for interface in interfaces.values():
        for slot, operation in enumerate(interface.operations, count(interface.base) + 1):
            if operation.slot != slot:
                raise ShapeError(
                    operation.header,
                    operation.line,
                    f"{interface.name}::{operation.name} is in slot {slot}, its comment says {operation.slot}",
                )


def comment_above(lines, number):
    """The lines of the comment that ends right above a line, without their marks; the number counts from 1."""
    start = number - 1
    while start > 0 and lines[start - 1].lstrip().startswith("//"):
        start -= 1
    return [line.lstrip()[2:].removeprefix(" ") for line in lines[start : number - 1]]


def join_lines(lines):
    return " ".join(line.strip() for line in lines if line.strip())


def declaration_at(lines, number):
    """The text of a declaration from its line up to its end or body, on one line."""
    code = cpp_text.code_only("\n".join(lines[number - 1 : number + 11]))
    return " ".join(re.split(r"[;{]", code, maxsplit=1)[0].split())


def parameters_of(declaration):
    """The parameters of a declared function, or of a pointer to one, as (type, name)."""
    start = declaration.find(")(") + 1 or declaration.find("(")
    if start < 0:
        return []
    parts = _split_at_commas(declaration[start + 1 : _closing(declaration, start)])
    found = [re.match(r"(.*?[\s*&.])(\w+)$", re.sub(r"\s*=.*", "", part)) for part in parts]
    return [(" ".join(match.group(1).split()), match.group(2)) for match in found if match]


def _closing(text, start):
    depth = 0
    for place in range(start, len(text)):
        depth += {"(": 1, ")": -1}.get(text[place], 0)
        if depth == 0:
            return place
    return len(text)


def _split_at_commas(text):
    parts, depth = [""], 0
    for character in text:
        depth += {"<": 1, "(": 1, ">": -1, ")": -1}.get(character, 0)
        if character == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += character
    return [part.strip() for part in parts if part.strip()]


def _read_operation(header, lines, interface, found):
    def fail(message):
        raise ShapeError(header, found.line, f"{interface}::{found.name}: {message}")

    declaration = declaration_at(lines, found.line)
    parameters = parameters_of(declaration)
    comment = comment_above(lines, found.line)
    head = re.match(r"Slot (\d+)\. ([A-Z]\w+ .*)", comment[0]) if comment else None
    if head is None:
        fail("its comment does not begin with 'Slot N. ' and a sentence")
    ending = next((number for number, line in enumerate(comment) if line.startswith("Threads: ")), None)
    if ending is None:
        fail("its comment has no line that begins with 'Threads: '")
    tail = re.fullmatch(r"Threads: (.+?)\. Fails: (.+?)\.?", join_lines(comment[ending:]))
    if tail is None:
        fail("its comment does not end with 'Threads: …. Fails: ….'")
    effect, notes = _split_notes([head.group(2)] + comment[1:ending], [name for _, name in parameters], fail)
    result = declaration.removeprefix("virtual ").split(f" {found.name}(")[0].strip()
    return Operation(
        interface, found.name, int(head.group(1)), header, found.line, result, parameters, effect, notes, *tail.groups()
    )


def _split_notes(lines, parameters, fail):
    """The effect, and what is said of each parameter."""
    effect, notes, names = [], {}, None
    for line in lines:
        match = _PARAMETER.fullmatch(line)
        if match and set(match.group(1).split(", ")) <= set(parameters):
            names = match.group(1)
            notes[names] = match.group(2)
        elif line.startswith("  ") and names is None:
            fail(f"'{line.strip()}' is documented, but no parameter")
        elif line.startswith("  " + " " * len(names or "")):
            notes[names] += " " + line.strip()
        elif line.startswith("  "):
            fail(f"'{line.strip()}' is documented, but no parameter")
        elif names is not None:
            fail("its effect goes on behind its parameters")
        else:
            effect.append(line)
    return join_lines(effect), notes


def first_sentence(text):
    return re.split(r"(?<=\.) (?=[A-Z])", text, maxsplit=1)[0]


def sentences(text):
    return re.split(r"(?<=\.) (?=[A-Z0-9\"])", text)
