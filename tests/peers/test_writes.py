#!/usr/bin/env python3
"""The check of written files finds what is wrong with one, and explains nothing else away."""

import collections
import dataclasses
import struct
import unittest
from fractions import Fraction
from unittest import mock

import exiftool_output
import jpeg_decoding
import marker_segments
import reader_warnings
import write_layout
from entries import (ASCII, BYTE, EXIF, IFD1, LONG, RATIONAL, SHORT, SRATIONAL, SSHORT, UNDEFINED,
                     Entry)
from exiv2_output import PeerEntry, PeerReading
from jpeg_decoding import Picture, decoded_colours, explain_pixels
from written_values import ENTRIES, thumbnail_bytes

SOI = b"\xff\xd8"
TIFF = b"II*\0\x08\0\0\0" + bytes(6)
XMP_BODY = b"http://ns.adobe.com/xap/1.0/\0<x/>"


def segment(marker, body):
    return bytes([0xFF, marker]) + struct.pack(">H", len(body) + 2) + body


def adobe(transform):
    return segment(0xEE, b"Adobe\0d\0\0\0\0" + bytes([transform]))


def frame(*components):
    body = b"\x08\0\x10\0\x10" + bytes([len(components)])
    return segment(0xC0, body + b"".join(bytes([c, 0x11, 0]) for c in components))


JFIF = segment(0xE0, b"JFIF\0\x01\x02\0\0\x01\0\x01\0\0")
OLD_EXIF = segment(0xE1, b"Exif\0\0" + TIFF + b"old")
NEW_EXIF = segment(0xE1, b"Exif\0\0" + TIFF + b"new")
XMP = segment(0xE1, XMP_BODY)
SCAN = segment(0xDA, b"\x01\x01\0\0\x3f\0") + b"\x12\x34\xff\0\x56\xff\xd9"


class MarkerSegmentsTest(unittest.TestCase):
    def test_walk_ends_at_the_scan(self):
        markers = [s.marker for s in marker_segments.marker_segments(SOI + JFIF + OLD_EXIF + SCAN)]
        self.assertEqual(markers, [0xE0, 0xE1, 0xDA])

    def test_positions_and_body(self):
        found = marker_segments.first_exif(SOI + JFIF + OLD_EXIF + SCAN)
        self.assertEqual((found.position, found.start, found.end), (20, 24, 24 + 6 + 14 + 3))
        self.assertEqual(found.body, b"Exif\0\0" + TIFF + b"old")

    def test_fill_byte_ends_only_the_walk_of_the_module(self):
        data = SOI + b"\xff" + OLD_EXIF + SCAN
        self.assertIsNone(marker_segments.first_exif(data))
        self.assertEqual([s.marker for s in marker_segments.header_segments(data)], [0xE1])

    def test_decoder_finds_markers_behind_other_bytes(self):
        data = SOI + b"\x01\x02" + JFIF + b"\xff\xff" + frame(1) + SCAN
        self.assertEqual([s.marker for s in marker_segments.header_segments(data)], [0xE0, 0xC0])

    def test_cut_segment(self):
        data = (SOI + OLD_EXIF)[:-5]
        self.assertEqual(marker_segments.first_exif(data).body, (b"Exif\0\0" + TIFF + b"old")[:-5])
        self.assertEqual(len(list(marker_segments.marker_segments(SOI + b"\xff\xe0"))), 1)

    def test_first_of_two_exif_segments(self):
        self.assertEqual(marker_segments.first_exif(SOI + NEW_EXIF + OLD_EXIF).position, 2)

    def test_xmp_is_known_by_the_whole_namespace(self):
        self.assertTrue(marker_segments.has_xmp(SOI + JFIF + XMP + SCAN))
        extended = segment(0xE1, b"http://ns.adobe.com/xmp/extension/\0")
        self.assertFalse(marker_segments.has_xmp(SOI + JFIF + extended + SCAN))

    def test_packet_goes_behind_the_last_exif_segment(self):
        at = marker_segments.xmp_insertion_position
        self.assertEqual(at(SOI + JFIF + SCAN), 2)
        self.assertEqual(at(SOI + NEW_EXIF + OLD_EXIF + JFIF + SCAN), 2 + 2 * len(NEW_EXIF))


class LayoutTest(unittest.TestCase):
    def test_source_without_exif_is_carried_over_from_2(self):
        source = SOI + JFIF + SCAN
        self.assertEqual(write_layout.check_write(source, SOI + NEW_EXIF + JFIF + SCAN), [])
        self.assertTrue(write_layout.check_write(source, SOI + NEW_EXIF + SCAN))

    def test_source_with_exif_is_carried_over_from_there(self):
        source = SOI + JFIF + OLD_EXIF + SCAN
        self.assertEqual(write_layout.check_write(source, SOI + NEW_EXIF + OLD_EXIF + SCAN), [])
        self.assertTrue(write_layout.check_write(source, SOI + NEW_EXIF + JFIF + OLD_EXIF + SCAN))
        self.assertTrue(write_layout.check_write(source, SOI + NEW_EXIF + SCAN))

    def test_one_changed_byte_is_found(self):
        source = SOI + OLD_EXIF + SCAN
        self.assertTrue(write_layout.check_write(source, SOI + NEW_EXIF + OLD_EXIF
                                                 + SCAN.replace(b"\x12", b"\x13")))
        self.assertTrue(write_layout.check_write(source, SOI + NEW_EXIF + OLD_EXIF + SCAN[:-1]))

    def test_new_segment_must_come_first_with_its_header(self):
        source = SOI + JFIF + SCAN
        self.assertTrue(write_layout.check_write(source, source))
        big_endian = segment(0xE1, b"Exif\0\0MM\0*\0\0\0\x08")
        self.assertTrue(write_layout.check_write(source, SOI + big_endian + JFIF + SCAN))

    def test_packet_in_a_jpeg(self):
        source = SOI + NEW_EXIF + OLD_EXIF + SCAN
        right = SOI + NEW_EXIF + OLD_EXIF + XMP + SCAN
        self.assertEqual(write_layout.check_embedded_jpeg(source, b"<x/>", right), [])
        wrong = SOI + NEW_EXIF + XMP + OLD_EXIF + SCAN
        self.assertTrue(write_layout.check_embedded_jpeg(source, b"<x/>", wrong))
        self.assertTrue(write_layout.check_embedded_jpeg(source, b"<y/>", right))
        self.assertTrue(write_layout.check_embedded_jpeg(source, b"<x/>", right[:-1]))

    def test_packet_in_a_png(self):
        end = b"\0\0\0\0IEND\xae\x42\x60\x82"
        self.assertEqual(write_layout.png_chunk(b"IEND", b""), end)
        before = write_layout.PNG_SIGNATURE + write_layout.png_chunk(b"IDAT", b"12345")
        chunk = write_layout.xmp_chunk(b"<x/>")
        self.assertEqual(chunk[:-4], b"\0\0\0\x1aiTXtXML:com.adobe.xmp\0\0\0\0\0<x/>")
        check = write_layout.check_embedded_png
        self.assertEqual(check(before + end, b"<x/>", before + chunk + end), [])
        self.assertTrue(check(before + end, b"<x/>", before + end + chunk))
        wrong_sum = chunk[:-1] + bytes([chunk[-1] ^ 1])
        self.assertTrue(check(before + end, b"<x/>", before + wrong_sum + end))

    def test_only_a_panorama_counts_as_a_packet_in_a_png(self):
        begin, end = write_layout.PNG_SIGNATURE, write_layout.png_chunk(b"IEND", b"")
        whole_sphere = write_layout.xmp_chunk(b"<a>equirectangular</a>")
        strip = write_layout.xmp_chunk(b"<a>cylindrical</a>")
        self.assertEqual(
            write_layout.without_panorama_chunks(begin + whole_sphere + strip + whole_sphere + end),
            begin + strip + end)


class DecodingTest(unittest.TestCase):
    def test_colours_by_marker_and_component(self):
        ycc, rgb, four = frame(1, 2, 3), frame(0x52, 0x47, 0x42), frame(1, 2, 3, 4)
        for header, colours in ((ycc, "YCbCr"), (rgb, "RGB"), (frame(0, 1, 2), "YCbCr"),
                                (JFIF + rgb, "YCbCr"), (adobe(0) + ycc, "RGB"),
                                (JFIF + adobe(0) + ycc, "YCbCr"), (adobe(1) + rgb, "YCbCr"),
                                (four, "CMYK"), (adobe(0) + four, "CMYK"),
                                (adobe(2) + four, "YCCK"), (frame(1), "1 components")):
            self.assertEqual(decoded_colours(SOI + header + SCAN), colours)

    def explain(self, left_out, rest, restored=True):
        """`restored`: the source's pixels come back with the segments that were left out."""
        source = SOI + left_out + OLD_EXIF + rest
        whole = {source, SOI + left_out + NEW_EXIF + OLD_EXIF + rest} if restored else {source}
        with mock.patch.object(jpeg_decoding, "decode",
                               lambda data: Picture(b"same" if data in whole else b"other", "")):
            return explain_pixels(source, left_out, NEW_EXIF + OLD_EXIF + rest)

    def test_colour_marker_left_out(self):
        ycc = frame(1, 2, 3) + SCAN
        self.assertEqual(self.explain(adobe(0), ycc), "colour marker not carried over")
        self.assertIsNone(self.explain(adobe(1), ycc))
        self.assertIsNone(self.explain(JFIF, ycc))
        self.assertIsNone(self.explain(adobe(0), ycc, restored=False))

    def test_tables_left_out(self):
        table = segment(0xDB, bytes(65))
        self.assertEqual(self.explain(table, frame(1) + SCAN), "coding tables not carried over")
        self.assertIsNone(self.explain(b"", table + frame(1) + SCAN))
        self.assertIsNone(self.explain(table, frame(1) + SCAN, restored=False))


class WarningsTest(unittest.TestCase):
    def news(self, after, source, before=()):
        counts = collections.Counter()
        return reader_warnings.new_warnings(list(before), after, source, counts), counts

    def test_old_segment_without_header(self):
        damaged = SOI + segment(0xE1, b"Exif\0\0\xff\xff\xff\xff") + SCAN
        warning = reader_warnings.MULTI_SEGMENT
        findings, counts = self.news([warning], damaged)
        self.assertEqual(findings, [])
        self.assertEqual(counts, {"warnings explained: old-segment-without-header": 1})
        for sound in (SOI + OLD_EXIF + SCAN, SOI + JFIF + SCAN):
            self.assertEqual(self.news([warning], sound)[0], [warning])

    def test_packet_behind_image_data(self):
        warning = reader_warnings.BEHIND_IMAGE_DATA
        png = write_layout.PNG_SIGNATURE + write_layout.png_chunk(b"IDAT", b"")
        self.assertEqual(self.news([warning], png)[0], [])
        self.assertEqual(self.news([warning], SOI + SCAN)[0], [warning])

    def test_others_are_findings_unless_said_before(self):
        findings, _ = self.news(["Bad offset", "Known"], SOI + SCAN, before=["Known"])
        self.assertEqual(findings, ["Bad offset"])


class ExiftoolOutputTest(unittest.TestCase):
    def test_first_of_two_values_and_warnings(self):
        text = ("======== a b.jpg\nExifTool\tWarning\t[minor] One\nExifTool\tWarning\tTwo\n"
                "IFD0\tMake\tnew\tone\nIFD0\tMake\told\n"
                "======== c.jpg\nIFD0\tArtist\t\n    2 image files read\n")
        readings = exiftool_output.parse(text)
        self.assertEqual(list(readings), ["a b.jpg", "c.jpg"])
        self.assertEqual(readings["a b.jpg"].warnings, ["[minor] One", "Two"])
        self.assertEqual(readings["a b.jpg"].first("IFD0", "Make"), "new\tone")
        self.assertEqual(readings["c.jpg"].first("IFD0", "Artist"), "")
        self.assertIsNone(readings["c.jpg"].first("IFD0", "Make"))

    def test_other_lines_are_an_error(self):
        for text in ("IFD0\tMake\tbefore any file\n", "======== a.jpg\nno columns\n"):
            with self.assertRaises(ValueError):
                exiftool_output.parse(text)


def row_of(block, tag):
    return next(row for row in ENTRIES if (row.block, row.tag) == (block, tag))


class ValuesTest(unittest.TestCase):
    def test_every_type_is_written(self):
        self.assertEqual({row.type for row in ENTRIES},
                         {ASCII, BYTE, SHORT, LONG, RATIONAL, UNDEFINED, SSHORT, SRATIONAL})

    def test_fractions_are_compared_by_value(self):
        aperture = row_of(EXIF, 0x829D)
        for numerator, denominator, same in ((28, 10, True), (14, 5, True), (29, 10, False),
                                             (28, 0, False)):
            data = struct.pack("<II", numerator, denominator)
            self.assertEqual(aperture.matches_entry(Entry(0x829D, RATIONAL, 1, data)), same)
        bias = row_of(EXIF, 0x9204)
        entry = Entry(0x9204, SRATIONAL, 1, struct.pack("<ii", -2, 3))
        self.assertTrue(bias.matches_entry(entry))
        self.assertFalse(bias.matches_entry(dataclasses.replace(entry, type=RATIONAL)))
        self.assertFalse(bias.matches_entry(dataclasses.replace(entry, count=2)))
        self.assertEqual(bias.value, (Fraction(-2, 3),))

    def test_numbers_and_bytes(self):
        area = Entry(0x9214, SHORT, 4, struct.pack("<4H", 120, 80, 40, 30))
        self.assertTrue(row_of(EXIF, 0x9214).matches_entry(area))
        self.assertFalse(row_of(EXIF, 0x9214).matches_entry(
            dataclasses.replace(area, data=struct.pack(">4H", 120, 80, 40, 30))))
        version = Entry(0x9000, UNDEFINED, 4, b"0232")
        self.assertTrue(row_of(EXIF, 0x9000).matches_entry(version))
        self.assertFalse(row_of(EXIF, 0x9000).matches_entry(
            dataclasses.replace(version, data=b"0231")))

    def test_what_exiftool_prints(self):
        area, bias, date = (row_of(EXIF, tag) for tag in (0x9214, 0x9204, 0x9003))
        self.assertTrue(area.matches_exiftool("120 80 40 30"))
        self.assertTrue(bias.matches_exiftool("-0.6666666667"))
        self.assertTrue(date.matches_exiftool("2024:05:01 12:00:00"))
        for row, text in ((area, "120 80 40"), (area, "120 80 40 31"), (bias, "-0.6667"),
                          (bias, "undef"), (bias, None), (date, None), (date, "2024:05:01")):
            self.assertFalse(row.matches_exiftool(text))

    def test_thumbnail_is_where_exiftool_says(self):
        def reading(position, length):
            return exiftool_output.ExiftoolReading({("IFD1", "ThumbnailOffset"): [position],
                                                    ("IFD1", "ThumbnailLength"): [length]})

        self.assertEqual(reading("3", "4").thumbnail(b"0123456789"), b"3456")
        self.assertEqual(reading("8", "4").thumbnail(b"0123456789"), b"89")
        self.assertIsNone(reading("3 4", "4").thumbnail(b"0123456789"))
        self.assertIsNone(exiftool_output.ExiftoolReading().thumbnail(b"0123456789"))

    def test_thumbnail_is_read_where_its_entries_say(self):
        def reading(position, length):
            return PeerReading({
                (IFD1, tag): [PeerEntry("Thumbnail", Entry(tag, LONG, 1, struct.pack("<I", n)))]
                for tag, n in ((0x0201, position), (0x0202, length))})

        data = bytes(12) + b"0123456789"
        self.assertEqual(thumbnail_bytes(reading(3, 4), data, 12), b"3456")
        self.assertEqual(thumbnail_bytes(reading(8, 4), data, 12), b"89")
        self.assertIsNone(thumbnail_bytes(PeerReading(), data, 12))


if __name__ == "__main__":
    unittest.main()
