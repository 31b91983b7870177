#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that the operations of Interfaces/ and the frozen numbers of Slots.inc are the same.

Usage: check_slots.py ROOT

Prints one line for each operation that has no number, another number or another name. Exit code: 0 clean, 1 findings.
"""

import pathlib
import re
import sys

sys.dont_write_bytecode = True  # nothing is left behind among the sources
sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "Lint"))
import cpp_text  # noqa: E402

# C has no overloads: the second operation of a name is called by a name of its own.
NAMES_IN_C = {("IUserDataContainer", 13): "GetConstUserData"}

# Behind the interfaces: what a class adds to the table itself.
BEHIND = {
    ("SimpleMap", 29): "FireChanged",
    ("SimpleMap", 30): "FireBatchUpdatingModeChanged",
    ("Collection", 32): "FireItemAdded",
    ("Collection", 33): "FireItemRemoved",
    ("Collection", 34): "FireItemMoved",
    ("Collection", 35): "FireUpdated",
}


def declared_slots(root):
    """The operations as the headers declare them: {(interface, slot): name}."""
    found = [found for path in sorted((root / "Interfaces").glob("*.h")) for found in cpp_text.classes(path.read_text())]
    by_name = {interface.name: interface for interface in found}

    def count(name):
        interface = by_name.get(name)
        return 0 if interface is None else count(interface.base) + len(interface.operations)

    slots = dict(BEHIND)
    for interface in found:
        for slot, operation in enumerate(interface.operations, count(interface.base) + 1):
            slots[interface.name, slot] = NAMES_IN_C.get((interface.name, slot), operation.name)
    return slots


def frozen_slots(root):
    """The same as the table says it."""
    table = (root / "Tool" / "Checks" / "Slots.inc").read_text()
    lines = re.findall(r"^TVX_(?:SLOT\([^,]*,|VOID_SLOT\(|HOLDER_SLOT\()\s*(\w+),\s*(\w+),\s*(\d+),", table, re.MULTILINE)
    return {(interface, int(slot)): operation for interface, operation, slot in lines}


def main(arguments):
    root = pathlib.Path(arguments[0]).resolve()
    declared, frozen = declared_slots(root), frozen_slots(root)
    if not declared or not frozen:
        print("found no operations")
        return 1
    differences = [key for key in sorted(declared.keys() | frozen.keys()) if declared.get(key) != frozen.get(key)]
    for interface, slot in differences:
        key = (interface, slot)
        print(f"{interface}, slot {slot}: declared {declared.get(key, 'nowhere')}, frozen {frozen.get(key, 'nowhere')}")
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
