#!/usr/bin/env python3
"""Builds a copy of the sources in a folder of another name and compares the products byte by byte."""

import argparse
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
FOLDERS = ("bindings", "cmake", "docs", "examples", "include", "src", "tools")


def run(folder, *command):
    # A cache of compiled objects would answer with those of the first build.
    environment = dict(os.environ, CCACHE_DISABLE="1")
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL, text=True,
                          cwd=folder, env=environment)
    if done.returncode != 0:
        sys.exit(done.stdout)


def copy_sources(folder):
    for path in ROOT.iterdir():
        if path.is_file():
            shutil.copy(path, folder)
        elif path.name in FOLDERS:
            shutil.copytree(path, folder / path.name,
                            ignore=shutil.ignore_patterns("__pycache__"))


# Where the products differ first, for a look at what stands there.
def difference(expected, found):
    if len(expected) != len(found):
        return f"{len(expected)} and {len(found)} bytes"
    place = next(i for i, (a, b) in enumerate(zip(expected, found)) if a != b)
    return f"byte {place}: {expected[place:place + 32]!r} and {found[place:place + 32]!r}"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--cmake", required=True)
    parser.add_argument("--preset", required=True)
    parser.add_argument("--build", required=True, type=Path)
    parser.add_argument("--target", required=True)
    parser.add_argument("product", nargs="+", help="file names of the build folder")
    options = parser.parse_args()
    bad = 0
    with tempfile.TemporaryDirectory(prefix="another_place_") as name:
        sources = Path(name).resolve() / "sources"
        sources.mkdir()
        copy_sources(sources)
        build = sources.parent / "a/build"
        run(sources, options.cmake, "--preset", options.preset, "-B", build, "-DLUMIDEX_BUILD_TESTS=OFF")
        run(sources, options.cmake, "--build", build, "--target", options.target, "-j2")
        for product in options.product:
            expected = (options.build / product).read_bytes()
            found = (build / product).read_bytes()
            if expected != found:
                print(f"{product}: {difference(expected, found)}")
                bad = 1
    return bad


if __name__ == "__main__":
    sys.exit(main())
