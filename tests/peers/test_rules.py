#!/usr/bin/env python3
"""Every rule explains its own difference and nothing that merely looks like it."""

import dataclasses
import struct
import unittest

import exiv2_output
import rules
from entries import ASCII, BYTE, EXIF, GPS, IFD0, IFD1, LONG, SHORT, UNDEFINED, Entry
from exiv2_output import PeerEntry, PeerReading
from photograph import Photograph

GROUP = {IFD0: "Image", EXIF: "Photo", GPS: "GPSInfo", IFD1: "Thumbnail"}
AFTER_ONE_ENTRY = 8 + 2 + 12 + 4  # the first free offset behind an IFD0 of one entry


def directory(*entries, following=0):
    """Entries of tag, type, count and the four bytes of the value field, in little-endian order."""
    packed = [struct.pack("<HHI4s", tag, kind, count, field.ljust(4, b"\0"))
              for tag, kind, count, field in entries]
    return struct.pack("<H", len(entries)) + b"".join(packed) + struct.pack("<I", following)


def offset(value):
    return struct.pack("<I", value)


def block(ifd0, behind=b""):
    return b"II*\0" + offset(8) + ifd0 + behind


def segment(tiff, marker=b"\xff\xe1"):
    payload = b"Exif\0\0" + tiff
    return marker + struct.pack(">H", len(payload) + 2) + payload


def photograph(*tiffs, behind=bytes(8)):
    segments = b"".join(segment(tiff) for tiff in tiffs)
    return Photograph(b"\xff\xd8" + segments + b"\xff\xd9" + behind)


def peer(where, tag, kind, count, data, group=None):
    return PeerEntry(group or GROUP[where], Entry(tag, kind, count, data))


def case(where, tag, stored, peers, photo, reading=None):
    if stored is not None:
        stored = Entry(tag, *stored)
    return rules.Case(where, tag, stored, peers, photo.of_key(where, tag), reading or PeerReading(),
                      photo)


class RulesTest(unittest.TestCase):
    def assert_explained(self, subject, *names):
        """The rules named explain the case, until a byte of the store's value changes."""
        self.assertEqual(rules.explain(subject), list(names))
        if subject.stored is not None and subject.stored.data:
            data = bytes([subject.stored.data[0] ^ 1]) + subject.stored.data[1:]
            self.assert_unexplained(
                dataclasses.replace(subject, stored=dataclasses.replace(subject.stored, data=data)))

    def assert_unexplained(self, subject):
        self.assertIsNone(rules.explain(subject))

    def test_equal_values_need_no_rule(self):
        photo = photograph(block(directory((0x0112, SHORT, 1, b"\x06\0"))))
        self.assert_explained(case(IFD0, 0x0112, (SHORT, 1, b"\x06\0"),
                                   [peer(IFD0, 0x0112, SHORT, 1, b"\x06\0")], photo))

    def test_value_that_the_file_does_not_have_is_a_finding_even_if_the_peer_has_it(self):
        photo = photograph(block(directory((0x0112, SHORT, 1, b"\x06\0"))))
        self.assert_unexplained(case(IFD0, 0x0112, (SHORT, 1, b"\x07\0"),
                                     [peer(IFD0, 0x0112, SHORT, 1, b"\x07\0")], photo))
        self.assert_unexplained(case(IFD0, 0x0113, (SHORT, 1, b"\x06\0"),
                                     [peer(IFD0, 0x0113, SHORT, 1, b"\x06\0")], photo))

    def test_missing_value_is_a_finding(self):
        photo = photograph(block(directory((0x0112, SHORT, 1, b"\x06\0"))))
        self.assert_unexplained(
            case(IFD0, 0x0112, None, [peer(IFD0, 0x0112, SHORT, 1, b"\x06\0")], photo))

    def test_value_that_the_peer_lacks_without_a_reason_is_a_finding(self):
        photo = photograph(block(directory((0x0112, SHORT, 1, b"\x06\0"))))
        self.assert_unexplained(case(IFD0, 0x0112, (SHORT, 1, b"\x06\0"), [], photo))

    def test_clamped_to_1024(self):
        text = b"x" * 1999 + b"\0"
        ifd0 = directory((0x9286, UNDEFINED, 2000, offset(AFTER_ONE_ENTRY)))
        photo = photograph(block(ifd0, text))
        peers = [peer(IFD0, 0x9286, UNDEFINED, 2000, text)]
        self.assert_explained(case(IFD0, 0x9286, (UNDEFINED, 1024, text[:1024]), peers, photo),
                              "clamped-to-1024")
        self.assert_unexplained(case(IFD0, 0x9286, (UNDEFINED, 1023, text[:1023]), peers, photo))

    def test_clamped_text_is_terminated(self):
        text = b"x" * 1999 + b"\0"
        photo = photograph(block(directory((0x010E, ASCII, 2000, offset(AFTER_ONE_ENTRY))), text))
        self.assert_explained(
            case(IFD0, 0x010E, (ASCII, 1024, text[:1024] + b"\0"),
                 [peer(IFD0, 0x010E, ASCII, 2000, text)], photo),
            "clamped-to-1024", "ascii-terminated")

    def test_sbyte_kept_as_byte(self):
        photo = photograph(block(directory((0x9999, 6, 1, b"\xff"))))
        self.assert_explained(case(IFD0, 0x9999, (BYTE, 1, b"\xff"),
                                   [peer(IFD0, 0x9999, 6, 1, b"\xff")], photo),
                              "sbyte-kept-as-byte")

    def test_float_kept_as_bytes(self):
        photo = photograph(block(directory((0x9999, 11, 1, b"\x12\x34\x56\x78"))))
        self.assert_explained(
            case(IFD0, 0x9999, (UNDEFINED, 1, b"\x12"),
                 [peer(IFD0, 0x9999, 11, 1, b"\x12\x34\x56\x78")], photo),
            "float-kept-as-bytes")

    def test_unknown_type_kept_as_bytes(self):
        photo = photograph(block(directory((0x9999, 99, 2, b"ab"))))
        self.assert_explained(case(IFD0, 0x9999, (UNDEFINED, 2, b"ab"),
                                   [peer(IFD0, 0x9999, 0, 2, b"ab")], photo),
                              "unknown-type-kept-as-bytes")

    def test_ascii_terminated(self):
        photo = photograph(block(directory((0x010F, ASCII, 2, b"ab"))))
        self.assert_explained(case(IFD0, 0x010F, (ASCII, 2, b"ab\0"),
                                   [peer(IFD0, 0x010F, ASCII, 2, b"ab")], photo),
                              "ascii-terminated")

    def test_interop_in_exif_block(self):
        interop = directory((1, ASCII, 4, b"R98\0"), (0x1000, SHORT, 1, b"\x01"))
        exif = directory((0xA005, LONG, 1, offset(AFTER_ONE_ENTRY + 18)))
        ifd0 = directory((0x8769, LONG, 1, offset(AFTER_ONE_ENTRY)))
        photo = photograph(block(ifd0, exif + interop))
        self.assert_explained(case(EXIF, 1, (ASCII, 4, b"R98\0"),
                                   [peer(EXIF, 1, ASCII, 4, b"R98\0", "Iop")], photo),
                              "interop-in-exif-block")
        self.assert_explained(case(EXIF, 0x1000, None,
                                   [peer(EXIF, 0x1000, SHORT, 1, b"\x01\0", "Iop")], photo),
                              "interop-tag-not-stored")

    def test_last_duplicate_wins(self):
        ifd0 = directory((0x0112, SHORT, 1, b"\x01"), (0x0112, SHORT, 1, b"\x02"))
        photo = photograph(block(ifd0))
        peers = [peer(IFD0, 0x0112, SHORT, 1, b"\x01\0"), peer(IFD0, 0x0112, SHORT, 1, b"\x02\0")]
        self.assert_explained(case(IFD0, 0x0112, (SHORT, 1, b"\x02\0"), peers, photo),
                              "last-duplicate-wins")
        self.assert_unexplained(case(IFD0, 0x0112, (SHORT, 1, b"\x01\0"), peers, photo))

    def test_left_out_entries(self):
        photo = photograph(block(directory((0xEA1C, BYTE, 1, b"\0"), (0x014A, LONG, 1, offset(0)),
                                           (0x010E, ASCII, 9, offset(60000)))))
        for tag, name in ((0xEA1C, "padding-tag"), (0x014A, "special-tag-not-stored"),
                          (0x010E, "outside-segment")):
            peers = [peer(IFD0, tag, BYTE, 0, b"")]
            self.assert_explained(case(IFD0, tag, None, peers, photo), name)
            self.assert_unexplained(case(IFD0, tag, (BYTE, 0, b""), [], photo))

    def test_count_above_65535_in_ifd1(self):
        ifd1 = directory((0x9999, BYTE, 65536, offset(AFTER_ONE_ENTRY)))
        ifd0 = directory((0x0112, SHORT, 1, b"\x01"), following=AFTER_ONE_ENTRY)
        photo = photograph(block(ifd0, ifd1))
        self.assert_explained(case(IFD1, 0x9999, None, [peer(IFD1, 0x9999, BYTE, 0, b"")], photo),
                              "count-above-65535")

    def test_segment_behind_fill_bytes(self):
        tiff = block(directory((0x0112, SHORT, 1, b"\x06\0")))
        filled = Photograph(b"\xff\xd8" + segment(tiff, b"\xff\xff\xe1") + b"\xff\xd9")
        peers = [peer(IFD0, 0x0112, SHORT, 1, b"\x06\0")]
        self.assert_explained(case(IFD0, 0x0112, None, peers, filled), "segment-behind-fill-bytes")
        self.assert_unexplained(case(IFD0, 0x0113, None, peers, photograph(tiff)))

    def test_make_from_leaf(self):
        leaf = photograph(block(directory((0x85FF, BYTE, 1, b"\0"))))
        other = photograph(block(directory((0x0112, SHORT, 1, b"\x06\0"))))
        self.assert_explained(case(IFD0, 0x010F, (ASCII, 0, b"Leaf\0"), [], leaf), "make-from-leaf")
        self.assert_unexplained(case(IFD0, 0x010F, (ASCII, 0, b"Leaf\0"), [], other))

    def test_later_segment_wins(self):
        tiffs = [block(directory((0x0112, SHORT, 1, value))) for value in (b"\x01", b"\x06")]
        photo = photograph(*tiffs)
        self.assert_explained(case(IFD0, 0x0112, (SHORT, 1, b"\x06\0"),
                                   [peer(IFD0, 0x0112, SHORT, 1, b"\x01\0")], photo),
                              "later-segment-wins")

    def test_directory_refused_by_exiv2(self):
        photo = photograph(block(directory(*[(tag, SHORT, 1, b"\x01") for tag in range(300)])))
        reading = exiv2_output.parse(
            "", "Error: Directory Image with 300 entries considered invalid; not read.\n", "little")
        subject = case(IFD0, 7, (SHORT, 1, b"\x01\0"), [], photo, reading)
        self.assert_explained(subject, "directory-refused-by-exiv2")
        self.assert_unexplained(dataclasses.replace(subject, reading=PeerReading()))

    def test_entry_refused_by_exiv2(self):
        ifd0 = directory((0x9999, UNDEFINED, 0x10000001, offset(AFTER_ONE_ENTRY)))
        photo = photograph(block(ifd0), behind=b"")
        message = "Directory Image, entry 0x9999 has invalid size 268435457*1; skipping entry.\n"
        reading = exiv2_output.parse("", message, "little")
        outside = case(IFD0, 0x9999, (UNDEFINED, 1024, bytes(1024)), [], photo, reading)
        self.assert_unexplained(outside)  # the offset is the segment's end
        inner = photograph(block(directory((0x9999, UNDEFINED, 0x10000001, offset(8)))))
        expected = inner.of_key(IFD0, 0x9999)[0].stored
        self.assertEqual(expected.count, 1024)
        self.assert_explained(
            case(IFD0, 0x9999, (UNDEFINED, 1024, expected.data), [], inner, reading),
            "entry-refused-by-exiv2")

    def test_value_past_segment(self):
        photo = photograph(block(directory((0x010E, ASCII, 6, offset(AFTER_ONE_ENTRY))), b"abc"),
                           behind=b"z")
        message = ("Error: Upper boundary of data for directory Image, entry 0x010e is out of "
                   "bounds: Offset = 0x0000001a, size = 6, exceeds buffer size by 3 Bytes\n")
        reading = exiv2_output.parse("", message, "little")
        subject = case(IFD0, 0x010E, (ASCII, 6, b"abc\xff\xd9z\0"),
                       [peer(IFD0, 0x010E, ASCII, 0, b"")], photo, reading)
        self.assert_explained(subject, "value-past-segment")
        self.assert_unexplained(dataclasses.replace(subject, reading=PeerReading()))

    def test_value_at_offset_0(self):
        photo = photograph(block(directory((0x010E, ASCII, 5, offset(0)))))
        reading = PeerReading(cut_entries={("Image", 0x010E)})
        self.assert_explained(
            case(IFD0, 0x010E, (ASCII, 5, b"II*\0\x08\0"),
                 [peer(IFD0, 0x010E, ASCII, 0, b"")], photo, reading),
            "value-at-offset-0")

    def test_entry_past_segment(self):
        ifd0 = struct.pack("<H", 2) + struct.pack("<HHIHH", 0x0112, SHORT, 1, 6, 0)
        photo = photograph(block(ifd0), behind=struct.pack("<HIHH", SHORT, 1, 7, 0))
        reading = PeerReading(cut_directories={"Image": 1})
        subject = case(IFD0, 0xD9FF, (SHORT, 1, b"\x07\0"), [], photo, reading)
        self.assert_explained(subject, "entry-past-segment")
        self.assert_unexplained(dataclasses.replace(subject, reading=PeerReading()))
        self.assert_unexplained(case(IFD0, 0x0112, (SHORT, 1, b"\x06\0"), [], photo, reading))

    def test_pointer_type_not_checked(self):
        gps = directory((0x0012, ASCII, 2, b"W\0"))
        photo = photograph(block(directory((0x8825, SHORT, 1, offset(AFTER_ONE_ENTRY))), gps))
        reading = PeerReading(refused_pointers={("Image", 0x8825)})
        subject = case(GPS, 0x0012, (ASCII, 2, b"W\0"), [], photo, reading)
        self.assert_explained(subject, "pointer-type-not-checked")
        self.assert_unexplained(dataclasses.replace(subject, reading=PeerReading()))

    def test_directory_read_twice(self):
        photo = photograph(block(directory((0x0112, SHORT, 1, b"\x06"), following=8)))
        message = "Error: Thumbnail pointer references previously read Image directory; ignored.\n"
        reading = exiv2_output.parse("", message, "little")
        subject = case(IFD1, 0x0112, (SHORT, 1, b"\x06\0"), [], photo, reading)
        self.assert_explained(subject, "directory-read-twice")
        self.assert_unexplained(dataclasses.replace(subject, reading=PeerReading()))


class OutputTest(unittest.TestCase):
    def test_entries_are_read_with_all_their_bytes(self):
        text = ("0x0131 Image        Exif.Image.Software  Ascii  17  17\n"
                "  0000  70 61 69 6e 74 2e 6e 65 74 20 34 2e 31 2e 36 37  paint.net 4.1.67\n"
                "  0010  00                                               .\n"
                "\n"
                "0x0112 Image        Exif.Image.Orientation  Short  1   2\n"
                "  0000  00 06                                            ..\n"
                "\n")
        reading = exiv2_output.parse(text, "", "big")
        self.assertEqual(reading.entries[IFD0, 0x0131][0].entry,
                         Entry(0x0131, ASCII, 17, b"paint.net 4.1.67\0"))
        self.assertEqual(reading.entries[IFD0, 0x0112][0].entry, Entry(0x0112, SHORT, 1, b"\x06\0"))

    def test_missing_bytes_are_an_error(self):
        text = "0x0112 Image        Exif.Image.Orientation  Short  1   2\n\n"
        with self.assertRaises(ValueError):
            exiv2_output.parse(text, "", "big")


if __name__ == "__main__":
    unittest.main()
