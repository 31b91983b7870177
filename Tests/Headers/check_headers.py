#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compiles every public header alone, and links all interface identifiers, with one compiler for one C++ standard.

Usage: check_headers.py ROOT WORK COMPILER STANDARD     (for example: . build/headers g++ 11)
"""

import os
import pathlib
import shutil
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

sys.dont_write_bytecode = True  # nothing is left behind among the sources
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "Lint"))
import cpp_text  # noqa: E402

WARNINGS = "-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Werror".split()
INTERFACES = "Interfaces"
# What hosts and other modules may include, with the earliest standard that it promises.
FOLDERS = {INTERFACES: 11, "Helpers": 17, "InterfacesHelpers": 17, "BasicInterfaceImplementations/Include": 17}


class Check:
    def __init__(self, root, work, compiler, standard):
        self.root = pathlib.Path(root).resolve()
        self.work = pathlib.Path(work).resolve()
        self.command = [compiler, f"-std=c++{standard}", *WARNINGS, f"-I{self.root}"]
        self.standard = int(standard)

    def headers(self, folder):
        return sorted(path.relative_to(self.root).as_posix() for path in (self.root / folder).glob("**/*.h"))

    def headers_of_this_standard(self):
        return [header for folder, first in FOLDERS.items() if self.standard >= first for header in self.headers(folder)]

    def identifiers(self):
        """The qualified name of every identifier that a class of the interfaces has."""
        return [
            found.qualified_name() + "::Id"
            for header in self.headers(INTERFACES)
            for found in cpp_text.classes((self.root / header).read_text())
            if found.has_identifier()
        ]

    def compile_alone(self, header):
        """What the compiler says of a source that consists of the header, twice; empty when all is well."""
        text = f'#include "{header}"\n#include "{header}"\n'
        answer = self.run(["-fsyntax-only", "-x", "c++", "-"], text)
        return f"{header} does not compile alone:\n{answer}" if answer else ""

    def link_identifiers(self):
        """Two sources that take the address of every identifier, as one program."""
        identifiers = self.identifiers()
        if not identifiers:
            return f"no class in {INTERFACES}/ has an identifier"
        sources = [self.write("First.cpp", self.user_of(identifiers, "FirstAddresses"))]
        main = "int main()\n{\n    return FirstAddresses[0] == SecondAddresses[0] ? 0 : 1;\n}\n"
        declaration = "extern const void* FirstAddresses[];\n"
        sources.append(self.write("Second.cpp", declaration + self.user_of(identifiers, "SecondAddresses") + main))
        program = self.work / "identifiers"
        answer = self.run([*map(str, sources), "-o", str(program)])
        if answer:
            return f"the identifiers cannot be used without link errors:\n{answer}"
        if subprocess.run([str(program)], check=False).returncode != 0:
            return f"{identifiers[0]} has two addresses in one program"
        return ""

    def user_of(self, identifiers, name):
        includes = "".join(f'#include "{header}"\n' for header in self.headers(INTERFACES))
        addresses = "".join(f"    &{identifier},\n" for identifier in identifiers)
        return f"{includes}extern const void* {name}[];\nconst void* {name}[] = {{\n{addresses}}};\n"

    def write(self, name, text):
        self.work.mkdir(parents=True, exist_ok=True)
        path = self.work / name
        path.write_text(text)
        return path

    def run(self, arguments, text=None):
        done = subprocess.run(self.command + arguments, input=text, text=True, capture_output=True, check=False)
        return done.stderr if done.returncode == 0 else done.stderr or f"exit code {done.returncode}\n"


def main(arguments):
    root, work, compiler, standard = arguments
    if shutil.which(compiler) is None:
        print(f"{compiler} is not installed; the headers must be checked with it")
        return 1
    check = Check(root, work, compiler, standard)
    headers = check.headers_of_this_standard()
    with ThreadPoolExecutor(os.cpu_count()) as threads:
        answers = [*threads.map(check.compile_alone, headers), check.link_identifiers()]
    problems = [answer for answer in answers if answer]
    print("\n".join(problems) or f"{len(headers)} headers, {len(check.identifiers())} identifiers: as C++{standard}, fine")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
