#!/usr/bin/env python3
"""Measures the module, natively and under Wine, and prints tables."""

import argparse
import pathlib
import sys

import program
import reading

ROOT = pathlib.Path(__file__).resolve().parent.parent


def main():
    parser = argparse.ArgumentParser(prog="./dev bench", description=__doc__)
    parser.add_argument("folder", nargs="?", type=pathlib.Path, default=ROOT / "samples",
                        help="photographs to read; samples/ by default")
    arguments = parser.parse_args()
    native, windows = program.builds(ROOT)
    for build, where in ((program.Program.native(native), ""),
                         (program.Program.windows(windows), ", Wine")):
        text, _ = reading.measure(build, arguments.folder, where)
        print(text, end="\n\n", flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
