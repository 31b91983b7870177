#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the reference out of the code: pages in Markdown.

Usage: make_reference.py FOLDER [ROOT]

Exit code: 0 made, 1 with one line on standard error when a header or source is not in the shape that is read here.
"""

import pathlib
import sys

sys.dont_write_bytecode = True  # nothing is left behind among the sources
HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE / "Reference"))
from contract import ShapeError, read_contract  # noqa: E402
from events import make_events, read_events  # noqa: E402
from identifiers import make_identifiers  # noqa: E402
from messages import make_messages  # noqa: E402
from operations import make_operations  # noqa: E402
from report_lines import make_report_lines  # noqa: E402
from result_codes import make_result_codes  # noqa: E402


def make_pages(root):
    """The text of each page by its name."""
    interfaces = read_contract(root)
    events = read_events(root, interfaces)
    return {
        "Operations": make_operations(root, interfaces, events),
        "Identifiers": make_identifiers(root, interfaces, events),
        "ResultCodes": make_result_codes(root, interfaces),
        "Events": make_events(interfaces, events),
        "ReportLines": make_report_lines(root),
        "Messages": make_messages(root),
    }


def main(arguments):
    folder = pathlib.Path(arguments[0])
    root = pathlib.Path(arguments[1] if len(arguments) > 1 else HERE.parent).resolve()
    try:
        pages = make_pages(root)
    except ShapeError as problem:
        print(problem, file=sys.stderr)
        return 1
    folder.mkdir(parents=True, exist_ok=True)
    for name, text in pages.items():
        (folder / f"{name}.md").write_text(text, encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
