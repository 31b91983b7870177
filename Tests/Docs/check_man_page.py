#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Docs/Man/tvx.1 names the commands and options that the program has, and no others.

Usage: check_man_page.py PROGRAM

Prints one line for each difference. Exit code: 0 none, 1 some.
"""
import pathlib
import re
import subprocess
import sys

PAGE = pathlib.Path(__file__).resolve().parents[2] / "Docs/Man/tvx.1"
OPTION = re.compile(r"(?<![\w-])--?[a-z][a-z-]*")
EVERYWHERE = {"-h", "--help"}  # described once, for all commands


class Help:
    """What the program says of one command: its path, such as "settings get", and what stands behind it."""

    def __init__(self, program, path, line):
        text = subprocess.run([program, *line, "--help"], check=True, capture_output=True, text=True).stdout
        self.path = path
        self.commands = [row.split()[0] for row in rows(text, "Subcommands")]
        self.operands = [row.split()[0] for row in rows(text, "Positionals")]
        options = rows(text, "Options")
        self.options = {name for row in options for name in row.split()[0].split(",")}
        # A choice stands in braces.
        self.words = {word for row in options for found in re.findall(r"\{(.*?)\}", row) for word in found.split(",")}
        # The command's own operands come before the commands below it.
        self.line = line + self.operands if self.commands else line


def rows(text, title):
    section = re.search(rf"^{title}:\n(.*?)\n\n", text, re.MULTILINE | re.DOTALL)
    return re.findall(r"^  (\S.*)", section.group(1), re.MULTILINE) if section else []


def collect_help(program, path="", line=()):
    collected = [Help(program, path, list(line))]
    for command in collected[0].commands:
        collected += collect_help(program, f"{path} {command}".strip(), [*collected[0].line, command])
    return collected


def plain(text):
    """The text without its fonts and with the dashes that a terminal shows."""
    return re.sub(r"\\f.|\\&", "", text).replace("\\-", "-").replace("\\ ", " ").replace("\\e", "\\")


def sections(text, mark):
    """The texts below the headings of one sort, by heading."""
    parts = re.split(rf"^\.{mark} (.*)\n", text, flags=re.MULTILINE)
    return dict(zip(parts[1::2], parts[2::2]))


def tagged_options(text):
    return {name for tag in re.findall(r"^\.TP\n(.*)", text, re.MULTILINE) for name in OPTION.findall(tag)}


def check_command(command, text):
    name = f"tvx {command.path}".strip()
    described = tagged_options(text)
    expected = command.options - (EVERYWHERE if command.path else set())
    for option in sorted(expected - described):
        yield f"{name}: {option} is missing"
    for option in sorted(described - expected):
        yield f"{name}: {option} does not exist"
    for word in [*command.operands, *sorted(command.words)]:
        if not re.search(rf"\b{re.escape(word)}\b", text):
            yield f"{name}: {word} is missing"


def check_mentions(text, commands):
    options = {option for command in commands for option in command.options}
    for option in sorted({name for name in OPTION.findall(text) if name.startswith("--")} - options):
        yield f"{option} does not exist"
    for example in re.findall(r"^\.EX\n(.*?)^\.EE", text, re.MULTILINE | re.DOTALL):
        for name in re.findall(r"\btvx (\w+)", example):
            if name not in commands[0].commands:
                yield f"the example's command {name} does not exist"


def check(program):
    page = plain(PAGE.read_text(encoding="utf-8"))
    chapters = sections(page, "SH")
    described = sections(chapters["COMMANDS"], "SS")
    commands = collect_help(program)
    yield from check_command(commands[0], chapters["OPTIONS"])
    for command in commands[1:]:
        if command.path in described:
            yield from check_command(command, described[command.path])
        else:
            yield f"tvx {command.path} is missing"
    for path in sorted(set(described) - {command.path for command in commands}):
        yield f"tvx {path} does not exist"
    yield from check_mentions(page, commands)


if len(sys.argv) != 2:
    sys.exit(__doc__)
differences = list(check(sys.argv[1]))
for difference in differences:
    print(f"Docs/Man/tvx.1: {difference}")
sys.exit(1 if differences else 0)
