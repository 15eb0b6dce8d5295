#!/usr/bin/env python3
"""Writes into copies of photographs and has exiv2, exiftool, djpeg and pngcheck read the results.

For every JPEG file of the folders given that djpeg decodes: a write with tags of every type and a
thumbnail, then, where no XMP segment stands, an embedded packet. Both peers must read the new
values without a warning that the source did not have; the pixels must be the source's, and every
byte that is carried over too. For every PNG file: an embedded packet, to another file and in place.
Whatever no rule explains is printed and makes the result 1.
"""

import argparse
import collections
import pathlib
import subprocess
import sys
import tempfile

import written_jpeg
import written_png
from write_bench import Bench, make_thumbnail

CHECKS = {b"\xff\xd8": written_jpeg.check, b"\x89P": written_png.check}
WRITES = ("JPEG files written", "packets embedded in PNG files")


def photographs(folders):
    """Path, bytes and check of every JPEG and PNG file."""
    for folder in folders:
        for path in sorted(pathlib.Path(folder).rglob("*")):
            data = path.read_bytes() if path.is_file() else b""
            if data[:2] in CHECKS:
                yield path, data, CHECKS[data[:2]]


def findings_of(check, data, tool, thumbnail, counts):
    with tempfile.TemporaryDirectory() as folder:
        try:
            return check(Bench(tool, pathlib.Path(folder), thumbnail, counts), data)
        except (ValueError, KeyError, OSError, subprocess.SubprocessError) as error:
            return [str(error)]


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--tool", default="build/native/lumidex", help="the host tool")
    parser.add_argument("folder", nargs="+")
    arguments = parser.parse_args()

    thumbnail = make_thumbnail()
    counts = collections.Counter()
    files = wrong = 0
    for path, data, check in photographs(arguments.folder):
        files += 1
        findings = findings_of(check, data, arguments.tool, thumbnail, counts)
        wrong += len(findings)
        if findings:
            print(f"{path}:", *(f"  {finding}" for finding in findings), sep="\n", flush=True)

    print(f"{files} JPEG and PNG files")
    for name, count in sorted(counts.items()):
        print(f"{count:7} {name}")
    print(f"{wrong:7} unexplained")
    return 1 if wrong or not any(counts[name] for name in WRITES) else 0


if __name__ == "__main__":
    sys.exit(main())
