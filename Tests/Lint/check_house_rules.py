#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks the house rules that neither a compiler nor a general tool knows.

Usage: check_house_rules.py [ROOT]

Prints "file:line: what is wrong" for each finding. Exit code: 0 clean, 1 findings.
"""

import os
import pathlib
import re
import subprocess
import sys

sys.dont_write_bytecode = True  # nothing is left behind among the sources
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import cpp_text  # noqa: E402

# Each macro with the files that may define it.
MACROS = {
    "TVX_RETURN_FAIL_IF": ("Helpers/Results.h",),
    "TVX_RETURN_FAIL_IF_NULL": ("Helpers/Results.h",),
    "TVX_RETURN_FAIL_IF_FAILED": ("Helpers/Results.h",),
    "TVX_RETURN_EPOINTER_IF_NULL": ("Helpers/Results.h",),
    "TVX_CHECK_PRECOND": ("Helpers/Results.h",),
    "TVX_FORWARD_FAILURE": ("Helpers/Results.h",),
    "TVX_EXPORT": ("Platform/Export.h",),
    "HWY_TARGET_INCLUDE": ("Src/ItemScan.cpp", "Src/RowKernels.cpp"),  # how the library that picks the kernels finds them
}
# C has no other way to make a function of each row of the table of slots.
SLOT_CALLER = ("Tool/Checks/SlotCaller.c", "Tool/Checks/SlotCaller.h")
SYSTEM_MARKS = re.compile(
    r"\b(_WIN32|_WIN64|WIN32|_WINDOWS|__CYGWIN__|__MINGW\w*|__linux__|__linux|linux|__gnu_linux__|__ANDROID__|__unix__|"
    r"__unix|unix|__APPLE__|__MACH__|__FreeBSD__|__NetBSD__|__OpenBSD__|_POSIX_VERSION)\b"
)
SYSTEM_HEADERS = re.compile(
    r"(?i:(windows|winsock2?|ws2tcpip|shlobj|shlwapi|psapi|tchar|direct|io|process)\.h$)|"
    r"(unistd|dlfcn|link|elf|pthread|fcntl|dirent|sched|semaphore|poll|spawn|pwd|termios|syscall|execinfo|ftw|glob)\.h$|"
    r"(sys|linux|mach|asm)/"
)
# Written with classes of one letter, so that this file does not contain what it looks for.
ORIGIN = re.compile(r"[s]pecification|\b[s]pec\b|\b[P]art\s+[0-9]+\.[0-9]", re.IGNORECASE)

CPP = (".h", ".cpp", ".c")
BINARY = (".png", ".gz", ".zip", ".tvxlib", ".so", ".bin", ".elf")


class Source:
    """One file of the project: its path from the root, its text, and the text without comments and literals."""

    def __init__(self, path, text):
        self.path = path
        self.text = text
        self.lines = text.splitlines()
        self.is_cpp = path.endswith(CPP)
        self.code = cpp_text.code_only(text) if self.is_cpp else ""

    def is_in(self, *folders):
        return self.path.startswith(tuple(folder + "/" for folder in folders))

    def line_of(self, match):
        return cpp_text.line_of(self.code, match.start())

    def includes(self):
        for number, line in enumerate(self.lines, 1):
            match = re.match(r'\s*#\s*include\s*(["<])([^">]+)[">]', line)
            if match:
                yield number, match.group(1), match.group(2)


def check_macros(source):
    if not source.is_cpp or source.is_in("Tests") or source.path in SLOT_CALLER:
        return
    for match in re.finditer(r"^[ \t]*#[ \t]*define[ \t]+(\w+)", source.code, re.MULTILINE):
        homes = MACROS.get(match.group(1))
        if homes is None:
            yield source.line_of(match), f"the macro {match.group(1)} is neither a checking macro nor the export mark"
        elif source.path not in homes:
            yield source.line_of(match), f"the macro {match.group(1)} belongs in {' or '.join(homes)}"


def check_reference_counting(source):
    """Raw counting is for the holders only; declaring and defining the two operations is not calling them."""
    if not source.is_cpp or source.is_in("Tests", "Helpers") or source.path == "Interfaces/Ref.h":
        return
    for match in re.finditer(r"((?:\w+(?:<[^<>;]*>)?\s*::\s*)*)(?<!\w)(?<!&)(AddRef|Release)\s*\(", source.code):
        if not _is_declarator(source.code[: match.start()].rstrip()):
            yield source.line_of(match), f"{match.group(2)} is called here; hold the reference in a Ref"


def _is_declarator(before):
    word = re.search(r"(\w+)$", before)
    if word:
        return word.group(1) not in ("return", "else", "do", "throw", "co_return", "case")
    return re.search(r"(?<!-)>$|(?<![&])&$|\*$", before) is not None


def check_operating_system(source):
    if not source.is_cpp or source.is_in("Platform", "Tests"):
        return
    for match in re.finditer(r"^[ \t]*#[ \t]*(?:if|ifdef|ifndef|elif)\b((?:\\\n|.)*)", source.code, re.MULTILINE):
        system = SYSTEM_MARKS.search(match.group(1))
        if system:
            yield source.line_of(match), f"asks for the operating system ({system.group()}); that belongs in Platform/"
    for line, _, header in source.includes():
        if SYSTEM_HEADERS.match(header):
            yield line, f"includes the operating system's <{header}>; that belongs in Platform/"


def check_outside_of_the_module(source):
    if not source.is_cpp or not source.is_in("Host", "Tool", "Examples"):
        return
    for line, _, header in source.includes():
        if re.match(r"(\.\.?/)*Src/", header):
            yield line, f"includes {header}: hosts know the module by its interfaces only"


def check_query_is_data(source):
    if not source.is_cpp or not source.is_in("Src"):
        return
    for match in re.finditer(r"\bDoQueryInterface\s*\([^;{}]*\)[^;{}()]*\{", source.code):
        yield source.line_of(match), "DoQueryInterface has a body here; list the interfaces in an InterfaceList"


def check_heads(source):
    if source.is_cpp and not source.text.startswith("// SPDX-License-Identifier: MIT\n"):
        yield 1, "the first line is not '// SPDX-License-Identifier: MIT'"
    if source.path.endswith(".h") and "#pragma once" not in source.lines:
        yield 1, "the header has no '#pragma once'"


def check_origin(source):
    for number, line in enumerate(source.lines, 1):
        match = ORIGIN.search(line)
        if match:
            yield number, f"'{match.group()}': state the rule and its reason, not where it came from"


FILE_RULES = (
    check_macros,
    check_reference_counting,
    check_operating_system,
    check_outside_of_the_module,
    check_query_is_data,
    check_heads,
    check_origin,
)


def check_documentation(sources):
    """Every operation of the contract has its slot number, an effect, and its words on threads and failures."""
    headers = [source for source in sources if source.is_in("Interfaces") and source.path.endswith(".h")]
    declared = [(source, found) for source in headers for found in cpp_text.classes(source.text)]
    by_name = {found.name: found for _, found in declared}
    for source, found in declared:
        first = _slots_of(found.base, by_name) + 1
        for slot, operation in enumerate(found.operations, first):
            for line, message in _check_operation(source, operation, slot):
                yield source.path, line, f"{found.name}::{operation.name}: {message}"


def _slots_of(name, by_name):
    found = by_name.get(name)
    return 0 if found is None else _slots_of(found.base, by_name) + len(found.operations)


def _check_operation(source, operation, slot):
    if operation.name.startswith("~"):
        yield operation.line, "a virtual destructor would take a slot"
        return
    comment = _comment_above(source.lines, operation.line)
    if not comment:
        yield operation.line, f"is not documented; its comment begins with 'Slot {slot}.'"
        return
    yield from ((operation.line, message) for message in _check_comment(comment, slot))


def _comment_above(lines, number):
    """The comment's lines without their marks; the number counts from 1."""
    start = number - 1
    while start > 0 and lines[start - 1].lstrip().startswith("//"):
        start -= 1
    return [line.lstrip()[2:] for line in lines[start : number - 1]]


def _check_comment(comment, slot):
    head = re.match(r" Slot (\d+)\. [A-Z]\w+", comment[0])
    if head is None:
        yield f"its comment does not begin with 'Slot {slot}. ' and a sentence"
    elif int(head.group(1)) != slot:
        yield f"is in slot {slot}, its comment says {head.group(1)}"
    ending = next((number for number, line in enumerate(comment) if line.startswith(" Threads: ")), len(comment))
    tail = "\n".join(comment[ending:])
    if not tail:
        yield "its comment has no line that begins with 'Threads:'"
    elif re.match(r" Threads: (?!Fails:)\w", tail) is None or re.search(r"\bFails:\s+\S", tail) is None:
        yield "its comment does not say 'Threads:' and then 'Fails:', each with a text"
    if any(re.match(r" {2,}\S", line) for line in comment[ending:]):
        yield "a parameter is documented behind 'Threads:'"


def project_files(root):
    """The files of the project, also those not yet committed; without git, everything outside build/."""
    command = ["git", "-c", f"safe.directory={root}", "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    try:
        listed = subprocess.run(command, cwd=root, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
        return sorted(path for path in listed.decode().split("\0") if path and (root / path).is_file())
    except (OSError, subprocess.CalledProcessError):
        return sorted(_walk(root))


def _walk(root):
    for folder, folders, names in os.walk(root):
        here = pathlib.Path(folder).relative_to(root)
        folders[:] = [name for name in folders if name != ".git" and (here / name).as_posix() != "build"]
        yield from ((here / name).as_posix() for name in names)


def read_sources(root):
    return [
        Source(path, (root / path).read_text(encoding="utf-8", errors="replace"))
        for path in project_files(root)
        if not path.endswith(BINARY)
    ]


def findings(root):
    """All findings as (path, line, message)."""
    sources = read_sources(pathlib.Path(root))
    for source in sources:
        for rule in FILE_RULES:
            for line, message in rule(source):
                yield source.path, line, message
    yield from check_documentation(sources)


def main(arguments):
    root = pathlib.Path(arguments[0] if arguments else pathlib.Path(__file__).parent.parent.parent).resolve()
    found = sorted(findings(root))
    for path, line, message in found:
        print(f"{path}:{line}: {message}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
