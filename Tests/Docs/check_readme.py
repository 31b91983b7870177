#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The program that README.md shows is the one in Examples/, to the letter."""
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parents[2]
shown = re.search(r"```cpp\n(.*?)```", (root / "README.md").read_text(encoding="utf-8"), re.DOTALL)
built = (root / "Examples/01-load-and-create/main.cpp").read_text(encoding="utf-8")
wanted = built.partition("\n")[2].lstrip("\n")
if shown is None or shown.group(1) != wanted:
    sys.exit("README.md: the program shown differs from Examples/01-load-and-create/main.cpp")
