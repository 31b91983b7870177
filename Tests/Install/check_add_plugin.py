#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""tvx_add_plugin of the installed package makes a module that can be unloaded, and finds what is wrong with one.

Arguments: the prefix of the package, a folder for builds, the folder of a sound plug-in.
"""
import _ctypes
import ctypes
import pathlib
import shutil
import subprocess
import sys
from typing import Callable, Optional

prefix, work, sound = (pathlib.Path(argument) for argument in sys.argv[1:4])
Change = Callable[[pathlib.Path], None]


def run(*command: object) -> tuple[int, str]:
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False)
    return done.returncode, done.stdout + done.stderr


def replacing(file: str, old: str, new: str) -> Change:
    def change(folder: pathlib.Path) -> None:
        text = (folder / file).read_text(encoding="utf-8")
        assert old in text, f"{file} has no {old}"
        (folder / file).write_text(text.replace(old, new), encoding="utf-8")

    return change


def build(name: str, change: Optional[Change]) -> tuple[str, str]:
    """Builds a changed copy of the sound plug-in. Gives the step that failed, or none, and what it printed."""
    source, binary = work / name / "source", work / name / "build"
    shutil.rmtree(work / name, ignore_errors=True)
    shutil.copytree(sound, source)
    if change is not None:
        change(source)
    steps = {
        "configure": ["cmake", "-G", "Ninja", "-S", source, "-B", binary, f"-DCMAKE_PREFIX_PATH={prefix}"],
        "build": ["cmake", "--build", binary],
        "test": ["ctest", "--test-dir", binary, "--output-on-failure", "--no-tests=error"],
    }
    for step, command in steps.items():
        status, printed = run(*command)
        if status != 0:
            return step, printed
    return "", printed


def expect(name: str, change: Change, step: str, text: str) -> None:
    failed, printed = build(name, change)
    if failed != step or text not in printed:
        sys.exit(f"{name}: wanted {step or 'success'} with '{text}', got {failed or 'success'}:\n{printed}")


def is_mapped(file: pathlib.Path) -> bool:
    return str(file) in pathlib.Path("/proc/self/maps").read_text(encoding="utf-8")


def check_sound_module() -> None:
    failed, printed = build("sound", None)
    if failed:
        sys.exit(f"the sound plug-in does not {failed}:\n{printed}")
    if "GivesEveryExportOfItsDocument" not in printed:
        sys.exit(f"CTest was not told of the plug-in's check:\n{printed}")
    file = (work / "sound" / "build" / "Plugin.tvxlib").resolve()
    _, symbols = run("nm", "--dynamic", "--defined-only", file)
    if symbols.split()[2:] != ["GetExport"]:
        sys.exit(f"GetExport is not the only symbol:\n{symbols}")
    library = ctypes.CDLL(str(file))
    if not is_mapped(file):
        sys.exit("the module is not mapped where it was loaded: the next check could not fail")
    _ctypes.dlclose(library._handle)
    if is_mapped(file):
        sys.exit("the module stays mapped after it was let go")


check_sound_module()
expect("no-xml", replacing("Plugin.plugcfg.xml", "</id>", "</it>"), "build", "line 3: not well-formed XML")
expect("no-name", replacing("Plugin.plugcfg.xml", "<name>Thing</name>", ""), "build", "has a bad configuration document")
expect("no-document", replacing("CMakeLists.txt", "DOCUMENT Plugin.plugcfg.xml", ""), "configure",
       "a module needs SOURCES and a DOCUMENT")
expect("absent-document", replacing("CMakeLists.txt", "Plugin.plugcfg.xml", "Other.xml"), "configure",
       "there is no configuration document")
expect("unknown-argument", replacing("CMakeLists.txt", "SOURCES", "THING SOURCES"), "configure", "unknown arguments: THING")
expect("unknown-export", replacing("Plugin.cpp", '"test.Thing/1.0"', '"test.Thing/1.1"'), "test", "test.Thing/1.0")
expect("missing-function", replacing("Plugin.cpp", "return tvx::GiveExport(Exports, id, out);",
                                     "extern int Missing(); return Missing();"), "build", "Missing")
# The function works wherever the package was found, and with the sanitizers, whose own functions come with the program.
expect("found-elsewhere", replacing("CMakeLists.txt", "find_package(TVXGenericPlugins 1.0 REQUIRED)",
                                    "function(find)\nfind_package(TVXGenericPlugins 1.0 REQUIRED GLOBAL)\nendfunction()\nfind()"),
       "", "100% tests passed")
expect("sanitized", replacing("CMakeLists.txt", "(VERSION 3.25)", "(VERSION 3.25)\nset(CMAKE_CXX_COMPILER clang++)\n"
                              "add_compile_options(-fsanitize=address)"), "test", "__asan_")
expect("newer-version", replacing("CMakeLists.txt", "TVXGenericPlugins 1.0", "TVXGenericPlugins 1.999"), "configure",
       'requested version "1.999"')
