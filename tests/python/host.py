"""What the tests of the Python host share: the built module, the samples, small files of their own.

LUMIDEX_MODULE names the module's file; the folder of lumidex.py is on PYTHONPATH.
"""

import os
import pathlib
import shutil
import struct
import tempfile
import unittest
import zlib

import lumidex

ROOT = pathlib.Path(__file__).resolve().parents[2]
SAMPLES = ROOT / "samples"
MODULE_FILE = os.environ["LUMIDEX_MODULE"]

SOI, EOI = b"\xFF\xD8", b"\xFF\xD9"
PNG_SIGNATURE = b"\x89PNG\r\n\x1A\n"
XMP_NAME = b"http://ns.adobe.com/xap/1.0/\0"


def segment(marker, payload):
    return struct.pack(">BBH", 0xFF, marker, len(payload) + 2) + payload


def jpeg(*segments, width=8, height=8):
    """The segments between SOI and a frame of one component with an empty scan."""
    frame = segment(0xC0, struct.pack(">BHHBBBB", 8, height, width, 1, 1, 0x11, 0))
    scan = segment(0xDA, bytes([1, 1, 0, 0, 63, 0]))
    return SOI + b"".join(segments) + frame + scan + EOI


def chunk(name, data, length=None):
    """A chunk, which may tell of another length than it has."""
    size = struct.pack(">I", len(data) if length is None else length)
    return size + name + data + struct.pack(">I", zlib.crc32(name + data))


def png(*chunks):
    return PNG_SIGNATURE + chunk(b"IHDR", bytes(13)) + b"".join(chunks) + chunk(b"IEND", b"")


def xmp_chunk(packet, length=None):
    return chunk(b"iTXt", b"XML:com.adobe.xmp\0\0\0\0\0" + packet, length)


class HostTest(unittest.TestCase):
    """Has the module and a folder for files, and leaves no object of the module alive."""

    @classmethod
    def setUpClass(cls):
        cls.module = lumidex.load(MODULE_FILE)

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def tearDown(self):
        self.assertTrue(self.module.can_unload())

    def write(self, name, data):
        path = self.folder / name
        path.write_bytes(data)
        return path

    def copy(self, name):
        return pathlib.Path(shutil.copy(SAMPLES / name, self.folder))

    def patched(self, name, old, new):
        """A copy of a sample with bytes changed that stand there once."""
        data = (SAMPLES / name).read_bytes()
        self.assertEqual(data.count(old), 1)
        return self.write(name, data.replace(old, new))

    def assert_code(self, code, call, *arguments, **options):
        with self.assertRaises(lumidex.LumidexError) as caught:
            call(*arguments, **options)
        self.assertEqual(caught.exception.name, code.name)
        self.assertEqual(caught.exception.code, code)
