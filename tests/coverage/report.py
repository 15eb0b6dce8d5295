#!/usr/bin/env python3
"""Says from an lcov trace what of the source the tests reach, and fails below a limit.

Reads the trace of `llvm-cov export -format=lcov` from standard input.
"""

import argparse
import collections
import os
import sys


class Source:
    """What one file counts: line number -> reached, line number -> [branch reached, ...]."""

    def __init__(self):
        self.lines = {}
        self.branches = collections.defaultdict(list)

    def line_count(self):
        return sum(self.lines.values()), len(self.lines)

    def branch_count(self):
        all_branches = [reached for row in self.branches.values() for reached in row]
        return sum(all_branches), len(all_branches)

    def missed_lines(self):
        return sorted(number for number, reached in self.lines.items() if not reached)

    def missed_branches(self):
        """Pairs of a line and a text such as "1 of 4"; lines that are not reached are left out."""
        missed = []
        for number, row in sorted(self.branches.items()):
            if not all(row) and self.lines.get(number, True):
                missed.append((number, f"{row.count(False)} of {len(row)}"))
        return missed


def read_trace(stream, root, folder):
    """The files of a trace that lie in a folder below the root, by path below the root."""
    sources = {}
    source = None
    for row in stream:
        kind, _, value = row.strip().partition(":")
        if kind == "SF":
            path = os.path.relpath(os.path.realpath(value), root)
            source = Source()
            if path.startswith(folder + "/"):
                sources[path] = source
        elif kind == "DA":
            number, count = value.split(",")[:2]
            source.lines[int(number)] = int(count) > 0
        elif kind == "BRDA":
            number, _, _, count = value.split(",")
            source.branches[int(number)].append(count not in ("-", "0"))
    return sources


def total(counts):
    counts = list(counts)
    return sum(count[0] for count in counts), sum(count[1] for count in counts)


def percent(count):
    reached, all_of_them = count
    return 100.0 * reached / all_of_them if all_of_them else 100.0


def table_row(name, sources):
    row = f"{name:<16}"
    for count in (total(s.line_count() for s in sources), total(s.branch_count() for s in sources)):
        row += f"{count[0]:>6} of {count[1]:>5} {percent(count):6.2f} %"
    return row


def ranges(numbers):
    """[1, 2, 3, 7] as "1-3, 7"."""
    texts = []
    for number in numbers:
        if texts and texts[-1][1] == number - 1:
            texts[-1][1] = number
        else:
            texts.append([number, number])
    return ", ".join(str(a) if a == b else f"{a}-{b}" for a, b in texts)


def report(sources):
    """The lines to print."""
    folders = collections.defaultdict(list)
    for path, source in sources.items():
        folders[os.path.dirname(path)].append(source)
    yield f"{'':<16}{'lines':>24}{'branches':>24}"
    for folder in sorted(folders):
        yield table_row(folder, folders[folder])
    yield table_row("all", sources.values())
    yield ""
    for path, source in sorted(sources.items()):
        if source.missed_lines():
            yield f"{path}: lines not reached: {ranges(source.missed_lines())}"
        for number, share in source.missed_branches():
            yield f"{path}:{number}: {share} branches not taken"


def failures(sources, line_limit, branch_limit):
    """What is below its limit, as texts."""
    if not sources:
        return ["the trace names no source file"]
    texts = []
    for name, limit, counts in (
        ("lines", line_limit, (s.line_count() for s in sources.values())),
        ("branches", branch_limit, (s.branch_count() for s in sources.values())),
    ):
        share = percent(total(counts))
        if share < limit:
            texts.append(f"{share:.2f} % of {name} are reached, less than {limit:g} %")
    return texts


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--root", required=True, help="paths are told relative to this folder")
    parser.add_argument("--folder", required=True, help="the one below the root that counts")
    parser.add_argument("--lines", type=float, required=True, help="the least share, in percent")
    parser.add_argument("--branches", type=float, required=True)
    options = parser.parse_args()
    sources = read_trace(sys.stdin, os.path.realpath(options.root), options.folder)
    for row in report(sources):
        print(row)
    bad = failures(sources, options.lines, options.branches)
    for text in bad:
        print(text, file=sys.stderr)
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
