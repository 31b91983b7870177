#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""An installed package has all its files, knows nothing of where it was made, and each of its headers compiles alone.

Arguments: the prefix, the folder of libraries in it, the folders of sources and of the build.
"""
import concurrent.futures
import os
import pathlib
import shlex
import subprocess
import sys

prefix, libraries = pathlib.Path(sys.argv[1]), sys.argv[2]
origins = sys.argv[3:5]

FILES = f"""
bin/tvx
{libraries}/tvx/TVXGenericPlugins.tvxlib
{libraries}/tvx/TVXJsonSerializer.tvxlib
{libraries}/libTVXHost.a
{libraries}/libTVXPlatform.a
{libraries}/cmake/TVXGenericPlugins/TVXGenericPluginsConfig.cmake
{libraries}/cmake/TVXGenericPlugins/TVXGenericPluginsConfigVersion.cmake
{libraries}/cmake/TVXGenericPlugins/TvxAddPlugin.cmake
{libraries}/cmake/TVXGenericPlugins/PluginDocument.cpp.in
{libraries}/cmake/TVXGenericPlugins/GetExport.map
{libraries}/pkgconfig/tvx-interfaces.pc
{libraries}/pkgconfig/tvx-helpers.pc
{libraries}/pkgconfig/tvx-host.pc
share/man/man1/tvx.1
share/man/man5/tvxlib.5
share/bash-completion/completions/tvx
share/zsh/vendor-completions/_tvx
share/fish/vendor_completions.d/tvx.fish
share/doc/tvx-generic-plugins/copyright
share/doc/tvx-generic-plugins-dev/copyright
share/doc/tvx-generic-plugins/examples/template/CMakeLists.txt
share/doc/tvx-generic-plugins/docs/Guide/FirstPlugin.md
""".split()

# The folder of headers, the pkg-config module that has it, and the oldest C++ that it promises.
PROMISES = {
    "Interfaces": ("tvx-interfaces", 11),
    "Helpers": ("tvx-helpers", 17),
    "InterfacesHelpers": ("tvx-helpers", 17),
    "BasicInterfaceImplementations": ("tvx-helpers", 17),
    "Platform": ("tvx-helpers", 17),
    "Host": ("tvx-host", 20),
}


def check_files() -> None:
    missing = [name for name in FILES if not (prefix / name).is_file() or (prefix / name).stat().st_size == 0]
    if missing:
        sys.exit("not installed, or empty: " + " ".join(missing))
    empty = [str(path) for path in prefix.rglob("*") if path.is_dir() and not any(path.iterdir())]
    inner = [str(path) for path in prefix.rglob("Host/Traced*")]
    if empty or inner:
        sys.exit("installed, but empty or of no use to anybody: " + " ".join(empty + inner))


def check_origins() -> None:
    for path in prefix.rglob("*"):
        if not path.is_file():
            continue
        content = path.read_bytes()
        told = [origin for origin in origins if origin.encode() in content]
        if told:
            sys.exit(f"{path} tells where it was made: {told[0]}")


def get_flags(module: str, *wanted: str) -> list[str]:
    environment = {**os.environ, "PKG_CONFIG_PATH": str(prefix / libraries / "pkgconfig")}
    done = subprocess.run(["pkg-config", *wanted, module], env=environment, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"pkg-config {module}: {done.stderr}")
    return shlex.split(done.stdout)


def compile_alone(header: pathlib.Path) -> str:
    module, standard = PROMISES[header.parts[0]]
    program = f'#include "{header.as_posix()}"\n'
    command = ["g++", f"-std=c++{standard}", "-fsyntax-only", "-Wall", "-Wextra", "-Werror", "-x", "c++", "-",
               *get_flags(module, "--cflags")]
    done = subprocess.run(command, input=program, capture_output=True, text=True, check=False)
    return "" if done.returncode == 0 else f"{header} does not compile alone as C++{standard}:\n{done.stderr}"


def check_headers() -> None:
    folder = prefix / "include" / "TVXGenericPlugins"
    headers = sorted(path.relative_to(folder) for path in folder.rglob("*.h"))
    if {header.parts[0] for header in headers} != set(PROMISES):
        sys.exit("the folders of headers are not those that were promised")
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        problems = [problem for problem in pool.map(compile_alone, headers) if problem]
    if problems:
        sys.exit("".join(problems))


def check_pkg_config() -> None:
    """A host is built with pkg-config alone, and finds the modules where pkg-config says."""
    modules = get_flags("tvx-host", "--variable=moduledir")[0]
    example = prefix / "share/doc/tvx-generic-plugins/examples/01-load-and-create/main.cpp"
    program = prefix / "pkg-config-host"
    command = ["g++", "-std=c++20", f'-DTVX_MODULES="{modules}"', str(example), "-o", str(program),
               *get_flags("tvx-host", "--cflags", "--libs")]
    subprocess.run(command, check=True)
    done = subprocess.run([str(program)], capture_output=True, text=True, check=True)
    program.unlink()
    if "Width = 1920" not in done.stdout:
        sys.exit(f"the host built with pkg-config printed: {done.stdout}{done.stderr}")


check_files()
check_origins()
check_headers()
check_pkg_config()
