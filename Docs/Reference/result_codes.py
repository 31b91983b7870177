# SPDX-License-Identifier: MIT
"""The page of result codes: what each means, and which operations say that they give it."""

import re

from contract import ShapeError
from markdown import code, page, table
from operations import all_operations, codes_of

HEADER = "Interfaces/Result.h"
_CONSTANT = re.compile(r"^constexpr Result (TVX_\w+) = (-?\d+);(?:\s*// (.+))?", re.MULTILINE)


def read_result_codes(root):
    """(name, number as text, meaning) of each constant."""
    text = (root / HEADER).read_text(encoding="utf-8")
    for match in _CONSTANT.finditer(text):
        if match.group(3) is None:
            raise ShapeError(HEADER, text.count("\n", 0, match.start()) + 1, f"{match.group(1)} is not documented")
        yield match.groups()


def make_result_codes(root, interfaces):
    codes = list(read_result_codes(root))
    givers = _givers(interfaces, {number for _, number, _ in codes})
    rows = [(code(name), number, meaning) for name, number, meaning in codes]
    parts = [
        f"From {code(HEADER)}. A negative code is a failure, also one that is not here; everything else is success.",
        table(("Name", "Code", "Meaning"), rows),
    ]
    for name, number, _ in codes:
        parts += [f"## {number}, {name}", _describe_givers(number, givers[number])]
    return page("Result codes", *parts)


def _givers(interfaces, numbers):
    givers = {number: [] for number in numbers}
    for operation in all_operations(interfaces):
        for number in codes_of(interfaces, operation):
            if number not in givers:
                message = f"{operation.interface}::{operation.name} gives {number}, which {HEADER} does not have"
                raise ShapeError(operation.header, operation.line, message)
            givers[number].append(operation)
    return givers


def _describe_givers(number, operations):
    if number == "0":
        return "Given by every operation with a result code that succeeds and has nothing more to say."
    if not operations:
        return "No operation of the contract promises it; an object of another module may give it."
    rows = [(f"{operation.interface}::{code(operation.call())}", _reason(operation)) for operation in operations]
    return table(("Given by", "When"), rows)


def _reason(operation):
    text = f"fails: {operation.fails}"
    return f"{operation.effect} {text}" if re.search(r"\b10[12]\b", operation.effect) else text
