#!/usr/bin/env python3
"""Measures the module on photographs, natively and under Wine, and prints tables."""

import argparse
import json
import pathlib
import subprocess
import sys

import counts
import goals
import growth
import program
import reading
import table
import tool_speed
import writing

ROOT = pathlib.Path(__file__).resolve().parent.parent


class Bench:
    """The two builds and the photographs."""

    def __init__(self, folder, each):
        native, windows = (ROOT / "build" / preset for preset in ("native", "windows"))
        self.folder = folder
        self.each = each
        self.native = program.Program.native(native)
        self.windows = program.Program.windows(windows)
        self.tool = native / "lumidex"
        self.dll = windows / "LumidexMgr.dll"

    def read(self):
        return reading.measure(self.native, self.folder, each=self.each)

    def wine(self):
        return reading.measure(self.windows, self.folder, ", Wine", self.each)

    def growth(self):
        return growth.measure(self.native)

    def write(self):
        return writing.measure(self.native, self.folder)

    def count(self):
        return counts.measure(self.native, self.tool, self.folder)

    def tool_speed(self):
        return tool_speed.measure(self.tool, counts.allocations(self.native, self.folder))

    def size(self):
        size = self.dll.stat().st_size
        return f"{self.dll.name}: {size:,} bytes", {"bytes of the stripped DLL": size}


PARTS = {"read": Bench.read, "wine": Bench.wine, "growth": Bench.growth, "write": Bench.write,
         "count": Bench.count, "tool": Bench.tool_speed, "size": Bench.size}


def compare(old, new):
    """The table of the measures of two runs."""
    rows = [[name, old[name], new[name], new[name] / old[name]]
            for name in new if old.get(name)]
    return "Compared\n" + table.render(["", "old", "new", "new / old"], rows)


def parse_arguments():
    parser = argparse.ArgumentParser(prog="./dev bench", description=__doc__)
    parser.add_argument("folder", nargs="?", type=pathlib.Path, default=ROOT / "samples",
                        help="photographs to read; samples/ by default")
    parser.add_argument("--only", metavar="PART", action="append", choices=PARTS,
                        help=f"one part alone: {', '.join(PARTS)}; may be repeated")
    parser.add_argument("--each", action="store_true", help="print the times of each file as well")
    parser.add_argument("--store", metavar="FILE", type=pathlib.Path,
                        help="keep what was measured in a file")
    parser.add_argument("--against", metavar="FILE", type=pathlib.Path,
                        help="compare with what another run has kept")
    parser.add_argument("--check", action="store_true", help="fail when a limit is missed")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    old = json.loads(arguments.against.read_text("utf-8")) if arguments.against else None
    bench = Bench(arguments.folder, arguments.each)
    measures = {}
    for name in arguments.only or PARTS:
        try:
            text, found = PARTS[name](bench)
        except subprocess.CalledProcessError:  # which has said why
            return 1
        print(text, end="\n\n", flush=True)
        measures.update(found)
    print(goals.render(measures))
    if old:
        print("\n" + compare(old, measures))
    if arguments.store:
        arguments.store.write_text(json.dumps(measures, indent=1) + "\n", "utf-8")
    return 1 if arguments.check and goals.missed(measures) else 0


if __name__ == "__main__":
    sys.exit(main())
