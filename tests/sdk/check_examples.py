#!/usr/bin/env python3
"""Runs an example host on copies of the samples and checks what it prints and writes."""

import argparse
import os
import shutil
import subprocess
import sys
import tempfile

# What the samples were made of, as far as a host gets it: a block's records end at the first entry
# that is larger than its first one. Groups: 1 size and colour, 2 IFD0, 4 EXIF.
BASICS = ["1 256: 512", "1 257: 256", "1 274: 1", "1 277: 3", "1 11: 1"]
EXIF = ["4 33434: 1/500", "4 33437: 80/10", "4 34850: 2", "4 34855: 100", "4 36864: 30 32 33 32"]
POSE = ["panorama: yes", "heading: 123.5", "pitch: -4.25", "roll: 0.75"]
PANORAMA = POSE + ["packet: yes"] + BASICS + ["2 271: LumidexMgr"] + EXIF
PNG = ["panorama: yes", "packet: yes"]
KEYWORDS = ["panorama: no", "1 256: 320", "1 257: 240", "1 274: 1", "1 277: 3", "1 11: 0"]
ARTIST = "2 315: A. Photographer"
WHOLE_SECONDS = 1_700_000_000  # a time that every file system keeps


class Example:
    def __init__(self, options):
        self.command = options.command
        self.module = options.module
        self.faults = []

    def run(self, *arguments):
        done = subprocess.run([*self.command, self.module, *arguments], capture_output=True,
                              stdin=subprocess.DEVNULL, text=True, timeout=120)
        return done.returncode, done.stdout.splitlines(), done.stderr

    def check(self, what, expected, found):
        if expected != found:
            self.faults.append(f"{what}: expected {expected}, found {found}")

    def check_shown(self, photo, expected):
        status, lines, errors = self.run(photo)
        self.check(f"{photo}: exit code", 0, status)
        self.check(f"{photo}: output", expected, [line.rstrip("\0 ") for line in lines])
        self.check(f"{photo}: errors", "", errors)

    def check_failure(self):
        status, lines, errors = self.run("example-none.jpg")
        self.check("missing photograph: exit code", 1, status)
        self.check("missing photograph: output", [], lines)
        if "LMD_E_SRC_NOT_FOUND" not in errors:
            self.faults.append(f"missing photograph: no name of the code in {errors!r}")

    # The C example writes a copy, the C++ example changes the photograph.
    def check_written(self, writes_copy):
        original = "keywords-utf8.jpg"
        os.utime(original, (WHOLE_SECONDS, WHOLE_SECONDS))
        written = "copy.jpg" if writes_copy else original
        status, _, errors = self.run(original, written if writes_copy else "A. Photographer")
        self.check("writing: exit code", 0, status)
        self.check("writing: errors", "", errors)
        self.check_shown(written, KEYWORDS[:6] + [ARTIST])
        if not writes_copy:
            self.check("time of the photograph", WHOLE_SECONDS, os.stat(original).st_mtime)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--module", required=True)
    parser.add_argument("--samples", required=True)
    parser.add_argument("--writes-copy", action="store_true")
    parser.add_argument("command", nargs="+", help="the example, with what runs it")
    options = parser.parse_args()
    example = Example(options)
    with tempfile.TemporaryDirectory() as folder:
        for name in ("panorama.jpg", "panorama.png", "keywords-utf8.jpg"):
            shutil.copy(os.path.join(options.samples, name), folder)
        os.chdir(folder)
        example.check_shown("panorama.jpg", PANORAMA)
        example.check_shown("panorama.png", PNG)
        example.check_shown("keywords-utf8.jpg", KEYWORDS)
        example.check_failure()
        example.check_written(options.writes_copy)
        os.chdir("/")
    for fault in example.faults:
        print(fault)
    return 1 if example.faults else 0


if __name__ == "__main__":
    sys.exit(main())
