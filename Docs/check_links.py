#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that the pages of a folder lead to nothing that is missing there.

Usage: check_links.py FOLDER

Prints one line for each link from a page to a file that does not exist. Exit code: 0 clean, 1 findings.
"""

import pathlib
import re
import sys
import urllib.parse

_LINK = re.compile(r'\b(?:href|src|data)="([^"#?:]+)(?:#[^"]*)?"')


def broken_links(folder):
    for page in sorted(folder.rglob("*.html")):
        targets = set(_LINK.findall(page.read_text(encoding="utf-8", errors="replace")))
        for target in sorted(targets):
            if not (page.parent / urllib.parse.unquote(target)).exists():
                yield f"{page.relative_to(folder)}: leads to {target}, which is not there"


def main(arguments):
    found = list(broken_links(pathlib.Path(arguments[0])))
    for line in found:
        print(line, file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
