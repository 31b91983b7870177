# SPDX-License-Identifier: MIT
"""The page of all operations: slot, effect, ownership, threads, codes and events."""

import pathlib
import re
import sys

from contract import ShapeError, first_sentence, sentences
from markdown import code, page, table

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Tests" / "Abi"))
import check_slots  # noqa: E402

HEADS = ("Slot", "Operation", "Effect", "Ownership, parameters", "Threads", "Codes", "Events")
OWNERSHIP = re.compile(r"\b(borrowed|kept|owned|valid as long)\b")


def make_operations(root, interfaces, events):
    check_numbers(root, interfaces)
    parts = [
        "Every operation by its slot number, the place in the object's table that it is called by. An interface that"
        " derives from another one goes on where that ends. *Borrowed*: valid for the call, the callee keeps no"
        " reference. *Kept*: the callee adds a reference of its own. *Receives one reference, owned by the caller*:"
        " whoever called releases it."
    ]
    for interface in interfaces.values():
        parts += _section(interfaces, interface, events)
    return page("Operations", *parts, *_behind(root))


def check_numbers(root, interfaces):
    """The numbers of the comments are the frozen ones."""
    frozen = check_slots.frozen_slots(root)
    for operation in all_operations(interfaces):
        key = (operation.interface, operation.slot)
        name = check_slots.NAMES_IN_C.get(key, operation.name)
        if operation.header.startswith("Interfaces/") and frozen.get(key) != name:
            message = f"{operation.interface}::{operation.name} is not in slot {operation.slot} of Tool/Checks/Slots.inc"
            raise ShapeError(operation.header, operation.line, message)


def all_operations(interfaces):
    return [operation for interface in interfaces.values() for operation in interface.operations]


def _section(interfaces, interface, events):
    title = f"## {interface.name}"
    where = f"{code(interface.header)}, " + (code(interface.identifier) if interface.identifier else "no identifier")
    base = f"Behind the operations of {interface.base}." if interface.base else ""
    if not interface.operations:
        return [title, f"{where}. {interface.comment} {base} It adds no operations."]
    rows = [_row(interfaces, operation, events) for operation in interface.operations]
    return [title, f"{where}. {interface.comment} {base}", table(HEADS, rows)]


def _row(interfaces, operation, events):
    codes = sorted(codes_of(interfaces, operation), key=lambda text: (int(text) < 0, abs(int(text))))
    told = f"{', '.join(codes)}. " if codes else ""
    return (
        operation.slot,
        code(operation.call()),
        operation.effect,
        "; ".join(_ownership(operation)),
        operation.threads,
        f"{told}Fails: {operation.fails}",
        ", ".join(code(name) for name in events_of(interfaces, operation, events)),
    )


def _ownership(operation):
    for names, note in operation.notes.items():
        yield f"{code(names)} {note}"
    if operation.result.endswith("*"):
        described = re.search(r", (.*?)\.?$", first_sentence(operation.effect))
        yield f"result {described.group(1) if described else 'borrowed'}"
    for sentence in sentences(operation.effect)[1:]:
        if OWNERSHIP.search(sentence):
            yield sentence.rstrip(".")


def codes_of(interfaces, operation, seen=()):
    """The result codes that an operation gives, those included that it takes over from others of its interface."""
    text = f"{operation.effect} {operation.fails}"
    found = set(re.findall(r"(?<![\w^.\-])-\d+\b", operation.fails)) | set(re.findall(r"\b10[12]\b", text))
    for other in _named(interfaces, operation, text, seen):
        found |= codes_of(interfaces, other, (*seen, operation))
    return found


def events_of(interfaces, operation, events, seen=()):
    """The events that an operation fires, or subscribes to."""
    found = {name for name in events if f'"{name}"' in operation.effect}
    for other in _named(interfaces, operation, operation.effect, seen):
        found |= set(events_of(interfaces, other, events, (*seen, operation)))
    return sorted(found)


def _named(interfaces, operation, text, seen):
    """The operations that a text refers to: 'as SetString', 'the events of RemoveLast', 'the same as slot 12'."""
    words = set(re.findall(r"\b(?:as|of|with|and|or|map's) ([A-Z]\w+)", text))
    words |= set(re.findall(r"\b([A-Z]\w+)'s code", text))
    slots = {int(number) for number in re.findall(r"the same as slot (\d+)", text)}
    for other in _candidates(interfaces, operation):
        if other is not operation and other not in seen and (other.name in words or other.slot in slots):
            yield other


def _candidates(interfaces, operation):
    """The operations of the interface, of those that it derives from, and of the settings map that plug-ins ask."""
    name = operation.interface
    while name in interfaces:
        yield from interfaces[name].operations
        name = interfaces[name].base
    if operation.interface == "IConstTVXPlugin":
        yield from (other for other in interfaces["ISimpleMap"].operations if other.name == "GetString")


def _behind(root):
    """What classes of the module add behind their interfaces."""
    rows = [
        (name, slot, code(operation), _comment_on(root, name, operation))
        for (name, slot), operation in sorted(check_slots.BEHIND.items())
    ]
    intro = "Two classes of the module add operations of their own behind those of their interfaces, in the same table."
    return ["## Behind the interfaces", intro, table(("Class", "Slot", "Operation", "What for"), rows)]


def _comment_on(root, class_name, operation):
    header = f"Src/{class_name}.h"
    lines = (root / header).read_text(encoding="utf-8").splitlines()
    line = next((number for number, text in enumerate(lines, 1) if f"void {operation}(" in text), 0)
    while line and not lines[line - 2].strip().startswith("//") and lines[line - 2].strip():
        line -= 1
    comment = []
    while line and lines[line - 2].strip().startswith("//"):
        line -= 1
        comment.insert(0, lines[line - 1].strip()[2:].strip())
    if not comment:
        raise ShapeError(header, line, f"{class_name}::{operation} is not documented")
    return " ".join(comment)
