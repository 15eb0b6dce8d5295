#!/usr/bin/env python3
"""Compares the metadata store with what exiv2 reads from the same JPEG files.

For every JPEG file of the folders given, each entry of IFD0, EXIF, GPS and IFD1 is compared: tag,
type, count and bytes. Differences that the store's contract requires are counted under the rule
that explains them; any other difference is printed and makes the result 1.
"""

import argparse
import collections
import json
import pathlib
import subprocess
import sys

import exiv2_output
import rules
from entries import BLOCK_NAMES, Entry
from photograph import Photograph

# Every category, and bit 31: the store as the readers left it, without the merge.
MASK = "0x80000EFF"


def stored_entries(tool, path):
    """(block, tag) to entry, as the host tool prints them."""
    command = [tool, "show", "--json", "--raw", "--store", "--mask", MASK, str(path)]
    done = subprocess.run(command, capture_output=True, timeout=120, check=False)
    lines = done.stdout.decode("utf-8").splitlines()
    if len(lines) != 1:
        raise ValueError(f"{tool} printed {len(lines)} lines")
    blocks = json.loads(lines[0])["store"]["blocks"]
    entries = {}
    for block in BLOCK_NAMES:
        for key, value in blocks.get(str(block), {}).items():
            data = bytes.fromhex(value["data"] or "")
            if len(data) != value["size"]:
                raise ValueError(f"tag {key} of block {block} has size {value['size']} and "
                                 f"{len(data)} bytes")
            entries[block, int(key)] = Entry(value["tag"], value["type"], value["count"], data)
    return entries


def peer_reading(path, photograph):
    """What exiv2 reads. A file that it cannot open is cut down to its first EXIF segment."""
    text, messages, readable = exiv2_output.run(path)
    reduced = not readable and bool(photograph.segments)
    if reduced:
        text, messages, _ = exiv2_output.run_cut_down(photograph)
    order = photograph.segments[0].order if photograph.segments else "little"
    return exiv2_output.parse(text, messages, order), reduced


def cases_of(stored, reading, photograph):
    for block, tag in sorted(set(stored) | set(reading.entries)):
        yield rules.Case(block, tag, stored.get((block, tag)),
                         reading.entries.get((block, tag), []), photograph.of_key(block, tag),
                         reading, photograph)


def describe(case):
    peers = [f"{peer.group}: {peer.entry}" for peer in case.peers] or ["absent"]
    lines = [f"  {BLOCK_NAMES[case.block]} {case.tag:#06x}",
             f"    store: {case.stored or 'absent'}"]
    lines += [f"    exiv2: {peer}" for peer in peers]
    for o in case.occurrences:
        what = o.left_out or f"to be stored as {o.stored}"
        lines.append(f"    file:  type {o.type}, count {o.count}, value at {o.position}: {what}")
    return "\n".join(lines)


def compare(tool, path, counts):
    """Counts the file's entries and rules; returns the descriptions of what nothing explains."""
    photograph = Photograph(path.read_bytes())
    reading, reduced = peer_reading(path, photograph)
    counts["files that exiv2 reads only cut down to their EXIF segment"] += reduced
    findings = []
    for case in cases_of(stored_entries(tool, path), reading, photograph):
        names = rules.explain(case)
        if names is None:
            findings.append(describe(case))
        counts["equal"] += names == []
        counts.update(names or [])
    return findings


def jpeg_files(folders):
    for folder in folders:
        for path in sorted(pathlib.Path(folder).rglob("*")):
            if not path.is_file():
                continue
            with path.open("rb") as file:
                if file.read(2) == b"\xff\xd8":
                    yield path


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--tool", default="build/native/lumidex", help="the host tool")
    parser.add_argument("folder", nargs="+")
    arguments = parser.parse_args()

    counts = collections.Counter()
    files = unexplained = 0
    for path in jpeg_files(arguments.folder):
        files += 1
        try:
            findings = compare(arguments.tool, path, counts)
        except (ValueError, KeyError, OSError, subprocess.TimeoutExpired) as error:
            findings = [f"  {error}"]
        unexplained += len(findings)
        if findings:
            print(f"{path}:", *findings, sep="\n")

    print(f"{files} JPEG files")
    for name, count in sorted(counts.items()):
        print(f"{count:7} {name}")
    print(f"{unexplained:7} unexplained")
    return 1 if unexplained or not files else 0


if __name__ == "__main__":
    sys.exit(main())
