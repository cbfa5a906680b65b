#!/usr/bin/env python3
"""Configures the whole project as for macOS, and has clang read every C++ source of that with the standard library of macOS.

What is written for one standard library alone, and what CMake would stumble over on a Mac, shows here. The frameworks are those of the tests,
Qt and the C library those of this machine; Objective-C++ is left to check.sh.

Usage: whole.py FOLDER [WORDS]    FOLDER holds what CMake makes. With WORDS, only the sources whose paths have them. Takes clang 19 and libc++ 19.
"""
import concurrent.futures
import json
import os
import pathlib
import shlex
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[3]
CLANG = shutil.which(os.environ.get("TILORA_CLANG", "clang++-19"))
# What CMake would find out by linking a program, for which there is no system here, and where it would look for frameworks.
FOR_MACOS = {
    "CMAKE_SYSTEM_NAME": "Darwin", "CMAKE_SYSTEM_PROCESSOR": "arm64", "CMAKE_OSX_DEPLOYMENT_TARGET": "13.0", "CMAKE_OSX_SYSROOT": "",
    "CMAKE_BUILD_TYPE": "RelWithDebInfo", "CMAKE_CXX_COMPILER": CLANG, "CMAKE_OBJCXX_COMPILER": CLANG,
    "CMAKE_CXX_COMPILER_TARGET": "arm64-apple-macos13.0", "CMAKE_OBJCXX_COMPILER_TARGET": "arm64-apple-macos13.0",
    "CMAKE_CXX_COMPILER_WORKS": "1", "CMAKE_OBJCXX_COMPILER_WORKS": "1", "CMAKE_INSTALL_NAME_TOOL": "/bin/true",
    "CMAKE_PREFIX_PATH": "/usr/lib/x86_64-linux-gnu/cmake", "CMAKE_LIBRARY_PATH": "/usr/lib/x86_64-linux-gnu",
    "CMAKE_HAVE_LIBC_PTHREAD": "1", "HAVE_STDATOMIC": "1", "HAVE_GLESv2": "1", "HAVE_EGL": "1", "OPENGL_INCLUDE_DIR": "/usr/include",
    "OPENGL_gl_LIBRARY": "/usr/lib/x86_64-linux-gnu/libGL.so", "OPENGL_glu_LIBRARY": "/usr/lib/x86_64-linux-gnu/libGL.so",
}


def configure(folder):
    command = ["cmake", "-S", str(ROOT), "-B", str(folder), "-G", "Ninja"] + [f"-D{name}={value}" for name, value in FOR_MACOS.items()]
    said = subprocess.run(command, capture_output=True, text=True)
    if said.returncode != 0:
        sys.exit(f"{said.stdout}{said.stderr}whole.py: the project cannot be configured for macOS")


def sources(folder, words):
    """Each source once, with the flags that say what it may include and what is defined."""
    found = {}
    for entry in json.loads((folder / "compile_commands.json").read_text()):
        path = pathlib.Path(entry["file"])
        if path.suffix != ".cpp" or folder in path.parents or words not in str(path):
            continue
        flags, arguments = [], iter(shlex.split(entry["command"])[1:])
        for argument in arguments:
            if argument == "-isystem":
                place = next(arguments)
                # The compiler knows it, and puts it behind its own.
                flags += [] if place == "/usr/include" else [argument, place]
            elif argument.startswith(("-I", "-D", "-std", "-W")):
                flags.append(argument)
        found[path] = flags
    return sorted(found.items())


def read(source):
    path, flags = source
    command = [CLANG, "-stdlib=libc++", "-fsyntax-only", "-ferror-limit=3", "-isystem", str(ROOT / "tests/macos/frameworks"), *flags, str(path)]
    return path, subprocess.run(command, capture_output=True, text=True)


def main():
    folder = pathlib.Path(sys.argv[1]).resolve()
    configure(folder)
    read_ones = sources(folder, sys.argv[2] if len(sys.argv) > 2 else "")
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for path, said in pool.map(read, read_ones):
            if said.returncode != 0:
                failed += 1
                print("\n".join(line for line in said.stderr.split("\n") if "error:" in line))
    print(f"{len(read_ones)} sources read with libc++, {failed} of them not compiled.")
    return 1 if failed or not read_ones else 0


sys.exit(main())
