# SPDX-License-Identifier: MIT
"""The page of events, from the comments of the contract and from the sources that fire them."""

import dataclasses
import re

from contract import ShapeError, sentences
from markdown import code, page, table
from operations import all_operations
from scopes import cpp_text

_CONSTANT = re.compile(r'constexpr const char\*?\s+(\w+)(?:\[\])? = "(\w+)";')
_INTERFACE = re.compile(r"\b(?:Fire|Connect|ConnectTo)\([^;]*?\b(\w+)::Id\b", re.DOTALL)
_PARAM = re.compile(r"\b(?:[Ii]ts|[Tt]heir|whose) param is ([^.;,]+)")


@dataclasses.dataclass
class Event:
    name: str
    interface: str
    source: str  # where it is fired
    subscriber: object
    param: str
    when: list


def read_events(root, interfaces):
    """Every event by its name."""
    events = {}
    for folder in ("Helpers", "Src"):
        for path in sorted((root / folder).glob("*.*")):
            source = path.relative_to(root).as_posix()
            for name, line in _names(path):
                events[name] = _read_event(interfaces, source, line, name, _interface(path, source, line))
    return events


def _names(path):
    """The event names that a source has as constants and uses to subscribe or fire."""
    text = path.read_text(encoding="utf-8")
    source = cpp_text.code_only(text)
    for match in _CONSTANT.finditer(text):
        if re.search(rf"\b(?:Fire|FireNamed|Connect|ConnectTo)\([^;{{}}]*\b{match.group(1)}\b", source):
            yield match.group(2), text.count("\n", 0, match.start()) + 1


def _interface(path, source, line):
    found = set(_INTERFACE.findall(cpp_text.code_only(path.read_text(encoding="utf-8"))))
    if len(found) != 1:
        raise ShapeError(source, line, f"the events here belong to {len(found)} interfaces, not to one")
    return found.pop()


def _read_event(interfaces, source, line, name, interface):
    if interface not in interfaces:
        raise ShapeError(source, line, f"the event \"{name}\" belongs to {interface}, which the headers do not have")
    subscribers = [
        operation
        for operation in all_operations(interfaces)
        if re.match(rf'Subscribes handler to (?:the event )?"{name}"', operation.effect)
    ]
    if len(subscribers) != 1:
        raise ShapeError(source, line, f"{len(subscribers)} operations subscribe to \"{name}\", not one")
    owner = interfaces[subscribers[0].interface]
    param = _PARAM.search(subscribers[0].effect) or _PARAM.search(owner.comment)
    if param is None:
        raise ShapeError(owner.header, subscribers[0].line, f"nothing is said of the param of \"{name}\"")
    when = list(_when(owner, name, subscribers[0]))
    if not when:
        raise ShapeError(owner.header, subscribers[0].line, f"nothing is said of when \"{name}\" fires")
    return Event(name, interface, source, subscribers[0], param.group(1), when)


def _when(owner, name, subscriber):
    """The sentences that say when the event fires, each with the operation that says so."""
    for sentence in sentences(owner.comment):
        if f'"{name}"' in sentence:
            yield "", sentence
    clause = re.search(r"which (fires [^.;]+)", subscriber.effect)
    if clause:
        yield "", clause.group(1).capitalize() + "."
    for operation in owner.operations:
        for sentence in sentences(operation.effect):
            if f'"{name}"' in sentence and "fire" in sentence.lower() and operation is not subscriber:
                yield operation.name, sentence


def make_events(interfaces, events):
    rows = [_row(interfaces, event) for event in events.values()]
    heads = ("Event", "Belongs to", "Param", "Subscribed by", "Fired in")
    parts = [
        "An event reaches a handler as a call of `IEventHandler::OnEvent`, on the thread that fires it, with the"
        " identifier of the interface that the event belongs to and its name.",
        table(heads, rows),
    ]
    for event in events.values():
        parts += [f"## {event.name}", "\n".join(f"- {_told_by(event, who)}{text}" for who, text in event.when)]
    return page("Events", *parts)


def _told_by(event, who):
    return f"{code(event.subscriber.interface + '::' + who)}: " if who else ""


def _row(interfaces, event):
    return (
        code(event.name),
        code(interfaces[event.interface].identifier),
        event.param,
        code(f"{event.subscriber.interface}::{event.subscriber.name}"),
        code(event.source),
    )
