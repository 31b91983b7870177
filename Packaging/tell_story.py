#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the page of a guide true: writes its files, runs its commands and compares what they print with what it shows.

  tell_story.py script PAGE            prints a shell script that does what the page tells
  tell_story.py check PAGE LOG         checks what that script printed
  tell_story.py run PAGE FOLDER        does both in a folder, but for the commands that install packages

In the page a code block below a line with nothing but a bold path is a file of that path; a block of "sh" are commands, run
in one shell; a block of "text" directly below them are lines that they print, in this order.
"""
import os
import pathlib
import re
import shlex
import subprocess
import sys
from typing import Iterator, NamedTuple

MARK = "@@@ step"


class Step(NamedTuple):
    kind: str  # file, commands, output
    name: str
    text: str


def read_steps(page: str) -> Iterator[Step]:
    previous = ""
    for block in re.finditer(r"(?:^\*\*`([^`\n]+)`\*\*\n\n?)?^```(\w+)\n(.*?)^```$", page, re.MULTILINE | re.DOTALL):
        path, language, text = block.groups()
        kind = "file" if path else {"sh": "commands", "text": "output"}.get(language, "")
        if not kind:
            sys.exit(f"a block of {language} has no path above it:\n{text}")
        if kind == "output" and previous != "commands":
            sys.exit(f"a block of text does not follow commands:\n{text}")
        previous = kind
        yield Step(kind, path or "", text)


def without_installing(steps: list[Step]) -> Iterator[Step]:
    """The steps but for the commands that install packages and what those print."""
    left_out = False
    for step in steps:
        if step.kind != "output":
            left_out = step.kind == "commands" and re.search(r"^(sudo )?apt", step.text, re.MULTILINE) is not None
        if not left_out:
            yield step


def make_script(steps: list[Step]) -> str:
    lines = ["set -euo pipefail"]
    for number, step in enumerate(steps):
        lines.append(f"echo '{MARK} {number}'")
        if step.kind == "file":
            folder = os.path.dirname(step.name) or "."
            lines.append(f"mkdir -p {shlex.quote(folder)}")
            lines.append(f"printf %s {shlex.quote(step.text)} >{shlex.quote(step.name)}")
        if step.kind == "commands":
            lines.append(step.text)
    return "\n".join([*lines, f"echo '{MARK} end'", ""])


def check(steps: list[Step], log: str) -> None:
    if f"{MARK} end" not in log:
        sys.exit("the commands of the page do not come to their end")
    printed = dict(re.findall(rf"^{MARK} (\d+)\n(.*?)(?=^{MARK} )", log, re.MULTILINE | re.DOTALL))
    compared = 0
    for number, step in enumerate(steps):
        if step.kind == "output":
            compare(step.text.splitlines(), printed[str(number - 1)].splitlines())
            compared += 1
    if compared == 0:
        sys.exit("the page shows nothing that is printed: there is nothing to compare")


def compare(wanted: list[str], printed: list[str]) -> None:
    rest = iter(line.rstrip() for line in printed)
    for line in wanted:
        if line.rstrip() not in rest:
            sys.exit(f"not printed, or not in this order: {line}\nprinted was:\n" + "\n".join(printed))


def main(verb: str, page: str, *rest: str) -> None:
    steps = list(read_steps(pathlib.Path(page).read_text(encoding="utf-8")))
    if verb == "script":
        print(make_script(steps))
    elif verb == "check":
        check(steps, pathlib.Path(rest[0]).read_text(encoding="utf-8", errors="replace"))
    else:
        steps = list(without_installing(steps))
        os.makedirs(rest[0], exist_ok=True)
        done = subprocess.run(["bash", "-c", make_script(steps)], cwd=rest[0], stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True, check=False)
        if done.returncode != 0:
            sys.exit(done.stdout)
        check(steps, done.stdout)


if __name__ == "__main__":
    main(*sys.argv[1:])
