#!/usr/bin/env python3
"""The killing check notices a source that changed, and tells a kill from an ordinary end."""

import contextlib
import io
import pathlib
import random
import sys
import tempfile
import unittest

import kill_writes
import marker_segments
import write_layout
from kill_writes import Job

# Writes the first half of the output, is killed or waits a moment, and writes the other half.
COPY = ("import pathlib, sys, time; source, output = map(pathlib.Path, sys.argv[1:])\n"
        "with output.open('wb', 0) as file:\n"
        "    file.write(b'12345'); time.sleep({wait}); file.write(b'67890')\n")
DAMAGE = COPY + "with source.open('ab') as file: file.write(b'!')\n"


class KillsTest(unittest.TestCase):
    def setUp(self):
        holder = tempfile.TemporaryDirectory()
        self.addCleanup(holder.cleanup)
        self.folder = pathlib.Path(holder.name)
        self.source = self.folder / "source"
        self.source.write_bytes(b"as it was")

    def job(self, script, wait):
        output = self.folder / "output"
        command = (sys.executable, "-S", "-c", script.format(wait=wait), str(self.source),
                   str(output))
        return Job("copy", command, (self.source,), output)

    def run_kills(self, script):
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            findings, counts = kill_writes.run([self.job(script, 0.1)], 2, random.Random(1))
        return findings, counts, printed.getvalue()

    def test_process_that_runs_is_killed(self):
        result = kill_writes.attempt(self.job(COPY, 60), 1)
        self.assertEqual((result.killed, result.written), (True, 5))

    def test_process_that_ended_is_not_killed(self):
        result = kill_writes.attempt(self.job(COPY, 0), 1)
        self.assertEqual((result.killed, result.written), (False, 10))

    def test_unchanged_sources(self):
        findings, counts, printed = self.run_kills(COPY)
        self.assertEqual((findings, printed), (0, ""))
        self.assertEqual(counts["copy: killed"], 2)

    def test_changed_source_is_found_and_put_back(self):
        findings, _, printed = self.run_kills(DAMAGE)
        self.assertGreaterEqual(findings, 1)
        self.assertIn("kill 0: copy left source changed", printed)
        self.assertEqual(self.source.read_bytes(), b"as it was")

    def test_vanished_source_is_found(self):
        self.source.unlink()
        found = kill_writes.changed(self.job(COPY, 0), {self.source: b"as it was"})
        self.assertEqual(found, ["source"])

    def test_command_that_fails_is_an_error(self):
        with self.assertRaises(ValueError):
            kill_writes.undisturbed(self.job("raise SystemExit(1)", 0))

    def test_sources_are_what_they_are_taken_for(self):
        noise = bytes(range(256)) * 4
        jpeg = kill_writes.make_jpeg(noise)
        self.assertEqual(marker_segments.first_exif(jpeg).position, 2)
        self.assertEqual([s.marker for s in marker_segments.marker_segments(jpeg)], [0xE1, 0xDA])
        png = kill_writes.make_png(noise)
        kinds = [kind for _, kind, _ in write_layout.png_chunks(png)]
        self.assertEqual(kinds, [b"IHDR", b"IDAT", b"IEND"])
        self.assertEqual(png[-12:], b"\0\0\0\0IEND\xae\x42\x60\x82")


if __name__ == "__main__":
    unittest.main()
