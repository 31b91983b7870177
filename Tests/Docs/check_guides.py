#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The code that the guides show is code of Examples/, which is compiled and run.

A block with the path of its file above it is the whole file of Examples/template, every other one consecutive lines of
some example, whatever its indentation. The line with the licence is not shown.
"""

import pathlib
import re
import sys
import textwrap

ROOT = pathlib.Path(__file__).resolve().parents[2]
SUFFIXES = (".h", ".cpp", ".xml", ".txt", ".ini")
LANGUAGES = ("cpp", "cmake", "xml", "ini")
BLOCK = re.compile(r"^(?:\*\*`[^`/]+/([^`]+)`\*\*\n\n?)?```(\w+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def read_without_licence(path):
    text = path.read_text(encoding="utf-8")
    return text.partition("\n")[2].lstrip("\n") if "SPDX" in text.partition("\n")[0] else text


def read_examples():
    files = sorted((ROOT / "Examples").rglob("*"))
    return [read_without_licence(path) for path in files if path.suffix in SUFFIXES]


def stands_in(shown, text):
    """Whether the lines follow each other in a text, all moved by the same indentation."""
    wanted = textwrap.dedent(shown).splitlines()
    lines = text.splitlines()
    return any(
        textwrap.dedent("\n".join(lines[start : start + len(wanted)])).splitlines() == wanted
        for start in range(len(lines) - len(wanted) + 1)
    )


def findings(guide, examples):
    text = guide.read_text(encoding="utf-8")
    for match in BLOCK.finditer(text):
        name, language, shown = match.groups()
        line = text.count("\n", 0, match.start(2)) + 1
        if language not in LANGUAGES:
            continue
        if name is not None and shown != read_without_licence(ROOT / "Examples" / "template" / name):
            yield f"{guide.name}:{line}: differs from Examples/template/{name}"
        if name is None and not any(stands_in(shown, example) for example in examples):
            yield f"{guide.name}:{line}: these lines stand in no example"


def main():
    guides = sorted((ROOT / "Docs" / "Guide").glob("*.md"))
    examples = read_examples()
    found = [finding for guide in guides for finding in findings(guide, examples)]
    print("\n".join(found) or f"{len(guides)} guides show what the examples hold")
    return 1 if found or not guides else 0


if __name__ == "__main__":
    sys.exit(main())
