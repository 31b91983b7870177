#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The generated reference is complete, and a header out of shape is refused.

Usage: check_reference.py

Prints one line for each finding. Exit code: 0 clean, 1 findings.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True  # nothing is left behind among the sources
ROOT = pathlib.Path(__file__).resolve().parents[2]
SOURCES_WITH_REPORTS = ("Src", "Helpers", "InterfacesHelpers", "BasicInterfaceImplementations")
FOLDERS = (*SOURCES_WITH_REPORTS, "Interfaces", "Platform", "Host", "Tool", "Tests/Abi")

# A line of a header, what breaks its shape, and a word of the error that has to follow.
BROKEN = (
    ("    // Slot 11. Gives the NUL-terminated", "    // Gives the NUL-terminated", "Slot N"),
    ("    // Slot 12. Gives the number of bytes", "    // Slot 13. Gives the number of bytes", "slot 12"),
    ("    //   text  borrowed", "    //   word  borrowed", "no parameter"),
    ("    // Threads: any. Fails: never.", "    // Fails: never.", "Threads"),
    ("    // Threads: any. Fails: never.", "    // Threads: any.", "Fails"),
    ("// Makes strings.\n", "", "not documented"),
)


def make_reference(folder, root):
    command = [sys.executable, str(ROOT / "Docs" / "make_reference.py"), str(folder), str(root)]
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)


def read_pages(folder):
    return {path.stem: path.read_text(encoding="utf-8") for path in folder.glob("*.md")}


def check_identifiers(pages):
    for path in sorted((ROOT / "Interfaces").glob("*.h")):
        for identifier in re.findall(r'Id\[\] = "([^"]+)"', path.read_text(encoding="utf-8")):
            if f"| `{identifier}` |" not in pages["Identifiers"]:
                yield f"{identifier} of {path.name} is not among the identifiers"


def check_slots(pages):
    """Each frozen slot stands once, in the section of its interface."""
    table = (ROOT / "Tool" / "Checks" / "Slots.inc").read_text(encoding="utf-8")
    pattern = r"^TVX_(?:SLOT\([^,]*,|VOID_SLOT\(|HOLDER_SLOT\()\s*(\w+),\s*(\w+),\s*(\d+),"
    frozen = re.findall(pattern, table, re.MULTILINE)
    if len(frozen) < 100:
        yield f"only {len(frozen)} slots were found in Slots.inc"
    for interface, operation, slot in frozen:
        if count_rows(pages["Operations"], interface, operation, slot) != 1:
            yield f"{interface}::{operation}, slot {slot}, does not stand once among the operations"


def count_rows(page, interface, operation, slot):
    section = re.search(rf"^## {interface}$(.*?)(?=^## |\Z)", page, re.MULTILINE | re.DOTALL)
    if section is None:  # a class's own, behind the interface's
        return page.count(f"| {interface} | {slot} | `{operation}` |")
    name = "GetUserData" if operation == "GetConstUserData" else operation  # C has no overloads
    return section.group(1).count(f"\n| {slot} | `{name}(")


def check_result_codes(pages):
    constants = (ROOT / "Interfaces" / "Result.h").read_text(encoding="utf-8")
    for name, number in re.findall(r"constexpr Result (TVX_\w+) = (-?\d+);", constants):
        if f"| `{name}` | {number} |" not in pages["ResultCodes"]:
            yield f"{name} is not among the result codes"


def check_report_lines(pages):
    for folder in SOURCES_WITH_REPORTS:
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix in (".h", ".cpp") and path.name != "Results.h":
                yield from _check_uses(path, pages["ReportLines"])


def _check_uses(path, page):
    uses = re.findall(r"^\s+TVX_(?:RETURN|CHECK|FORWARD)_\w+\(", path.read_text(encoding="utf-8"), re.MULTILINE)
    listed = page.count(f"| `{path.relative_to(ROOT).as_posix()}:")
    if listed != len(uses):
        yield f"{path.name} has {len(uses)} checks, {listed} are among the report lines"


def check_events(pages):
    for path in (ROOT / "Interfaces").glob("*.h"):
        text = re.sub(r"\s*//\s*", " ", path.read_text(encoding="utf-8"))
        for name in re.findall(r'Subscribes handler to (?:the event )?"(\w+)"', text):
            if f"\n## {name}\n\n- " not in pages["Events"]:
                yield f"nothing tells when {name} fires"


def check_messages(pages):
    for text in ("PlugDLL created", 'LibManager: NULL object proxy returned for "‹name›".', "MissingImport"):
        if text not in pages["Messages"]:
            yield f"{text} is not among the messages"


def copy_sources(root):
    for folder in FOLDERS:
        shutil.copytree(ROOT / folder, root / folder)


def check_refusals(folder):
    root = folder / "root"
    copy_sources(root)
    header = root / "Interfaces" / "IString.h"
    whole = header.read_text(encoding="utf-8")
    if make_reference(folder / "copy", root).returncode != 0:
        yield "the reference of an unchanged copy is not made"
    for line, broken, word in BROKEN:
        header.write_text(whole.replace(line, broken, 1), encoding="utf-8")
        result = make_reference(folder / "refused", root)
        if line not in whole or result.returncode != 1:
            yield f"{broken.strip() or 'a missing comment'!r} is not refused"
        elif not re.fullmatch(rf"Interfaces/IString\.h:\d+: .*{word}.*\n", result.stderr):
            yield f"{broken.strip() or 'a missing comment'!r} is refused with: {result.stderr}"


def findings(folder):
    result = make_reference(folder / "pages", ROOT)
    if result.returncode != 0:
        yield f"the reference cannot be made: {result.stderr}"
        return
    pages = read_pages(folder / "pages")
    checks = (check_identifiers, check_slots, check_result_codes, check_report_lines, check_events, check_messages)
    for check in checks:
        yield from check(pages)
    yield from check_refusals(folder)


def main():
    with tempfile.TemporaryDirectory() as folder:
        found = list(findings(pathlib.Path(folder)))
    for line in found:
        print(line)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
