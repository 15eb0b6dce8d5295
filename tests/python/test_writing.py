"""Writing through the built module: what stands in the files, byte for byte where it is new."""

import unittest
from fractions import Fraction

from host import SOI, XMP_NAME, HostTest, jpeg, png, segment, xmp_chunk
from lumidex import Group, Rational, Record, RecordType, ResultCode

PACKET = b"<x/>"
THUMBNAIL = b"\xFF\xD8\xFF\xD9"

# Make "Cam" and a sensitivity of 400.
RECORDS = [Record.of(Group.EXIF, 34855, 400), Record.of(Group.IFD0, 271, "Cam")]
BLOCK = (b"II*\0\x08\0\0\0"
         b"\2\0"                              # at 8: two entries
         b"\x0F\1\2\0\4\0\0\0Cam\0"           # at 10: Make
         b"\x69\x87\4\0\1\0\0\0\x26\0\0\0"    # at 22: the EXIF directory, at 38
         b"\0\0\0\0"
         b"\1\0"                              # at 38: one entry
         b"\x27\x88\3\0\1\0\0\0\x90\1\0\0"    # at 40: the sensitivity
         b"\0\0\0\0")
EXIF_SEGMENT = segment(0xE1, b"Exif\0\0" + BLOCK)


class WritingTest(HostTest):
    def setUp(self):
        super().setUp()
        self.plain = jpeg()
        self.source = self.write("source.jpg", self.plain)
        self.target = self.folder / "target.jpg"
        self.packet = self.write("packet.xmp", PACKET)

    def written_records(self, records):
        self.module.write_metadata(self.source, self.target, records)
        with self.module.open(self.target) as photo:
            return photo.records()

    def assert_target(self, expected):
        self.assertEqual(self.target.read_bytes(), expected)
        self.assertEqual(self.source.read_bytes(), self.plain)

    def test_records_become_a_segment(self):
        self.module.write_metadata(self.source, self.target, iter(RECORDS))
        self.assert_target(SOI + EXIF_SEGMENT + self.plain[2:])

    def test_packet_follows_the_segment(self):
        self.module.write_metadata(self.source, self.target, RECORDS, xmp_file=self.packet)
        self.assert_target(SOI + EXIF_SEGMENT + segment(0xE1, XMP_NAME + PACKET) + self.plain[2:])

    def test_packet_goes_alone(self):
        self.module.write_metadata(self.source, self.target, xmp_file=str(self.packet))
        self.assert_target(SOI + segment(0xE1, XMP_NAME + PACKET) + self.plain[2:])

    def test_thumbnail_ends_the_segment(self):
        self.module.write_metadata(self.source, self.target, RECORDS, thumbnail=THUMBNAIL)
        data = self.target.read_bytes()
        end = len(data) - len(self.plain) + 2
        self.assertEqual(data[end:], self.plain[2:])
        self.assertEqual(data[end - 4:end], THUMBNAIL)
        # Six entries of 12 bytes, two fractions of 8, the count and the end of the directory.
        self.assertEqual(end, 2 + len(EXIF_SEGMENT) + 2 + 6 * 12 + 4 + 2 * 8 + 4)

    def test_records_come_back_as_they_were_given(self):
        given = [
            Record.of(Group.IFD0, 315, "Z\u00FCrich \u5C71"),
            Record.of(Group.EXIF, 33434, Fraction(1, 250)),
            Record.of(Group.EXIF, 37380, Rational(-2, 6)),
            Record.of(Group.GPS, 6, Rational(4294967295, 10)),
        ]
        found = [record for record in self.written_records(given) if record.group != Group.BASICS]
        self.assertEqual(found, given)
        self.assertEqual(found[2].type, RecordType.SRATIONAL)
        self.assertEqual(found[2].value, (Rational(-2, 6),))

    def test_bytes_behind_a_zero_are_written(self):
        both = Record(Group.IFD0, 33432, RecordType.ASCII, b"photo\0editor\0")
        self.module.write_metadata(self.source, self.target, [both])
        self.assertIn(b"photo\0editor\0", self.target.read_bytes())

    def test_records_without_data_are_dropped(self):
        found = self.written_records([Record(Group.IFD0, 271, RecordType.ASCII, b""), RECORDS[0]])
        self.assertEqual([record for record in found if record.group != Group.BASICS], [RECORDS[0]])

    def test_overwrite_is_asked_for(self):
        self.module.write_metadata(self.source, self.target, RECORDS)
        first = self.target.read_bytes()
        write = self.module.write_metadata
        self.assert_code(ResultCode.LMD_E_DST_EXISTS, write, self.source, self.target, RECORDS)
        self.assert_code(ResultCode.LMD_E_HAS_EXIF, write, self.target, self.folder / "next.jpg",
                         RECORDS)
        write(self.target, self.folder / "next.jpg", RECORDS, overwrite=True)
        self.assertEqual((self.folder / "next.jpg").read_bytes(), SOI + EXIF_SEGMENT + first[2:])
        self.assert_code(ResultCode.LMD_E_DST_EXISTS, write, self.target, self.target, RECORDS,
                         overwrite=True)
        self.assertEqual(self.target.read_bytes(), first)

    def test_refused_writes_leave_no_target(self):
        write = self.module.write_metadata
        none = self.folder / "none"
        self.assert_code(ResultCode.LMD_E_INVALID_ARG, write, self.source, self.target)
        self.assert_code(ResultCode.LMD_E_SRC_NOT_FOUND, write, none, self.target, RECORDS)
        self.assert_code(ResultCode.LMD_E_SRC_NOT_FOUND, write, self.source, self.target, RECORDS,
                         xmp_file=none)
        self.assert_code(ResultCode.LMD_E_BUFFER_TOO_SMALL, write, self.source, self.target,
                         RECORDS, thumbnail=bytes(64000))
        self.assertFalse(self.target.exists())

    def test_packet_is_embedded_into_a_jpeg(self):
        self.module.embed_xmp(self.source, self.target, self.packet)
        self.assert_target(SOI + segment(0xE1, XMP_NAME + PACKET) + self.plain[2:])
        with self.module.open(self.target) as photo:
            self.assertEqual(photo.xmp_packet(), PACKET)
        self.assert_code(ResultCode.LMD_E_XMP_FOUND, self.module.embed_xmp, self.target,
                         self.folder / "next.jpg", self.packet)

    def test_packet_is_embedded_into_a_png_in_place(self):
        packet = b"equirectangular"
        path = self.write("a.png", png())
        self.module.embed_xmp(path, path, self.write("packet.xmp", packet))
        self.assertEqual(path.read_bytes(), png(xmp_chunk(packet)))
        with self.module.open(path) as photo:
            self.assertIs(photo.is_panorama(), True)
            self.assertEqual(photo.xmp_packet(), packet)

    def test_trailer_is_appended_once(self):
        photo = self.write("a.jpg", jpeg(segment(0xFE, bytes(64))))
        before = photo.read_bytes()
        self.module.append_trailer(photo)
        after = photo.read_bytes()
        self.assertEqual(len(after), len(before) + 64)
        self.assertTrue(after.startswith(before) and after.endswith(b"SEFT"))
        self.assert_code(ResultCode.LMD_E_ALREADY_MARKED, self.module.append_trailer, photo)
        self.assertEqual(photo.read_bytes(), after)
        self.assert_code(ResultCode.LMD_E_READ_FAILED, self.module.append_trailer, self.packet)


if __name__ == "__main__":
    unittest.main()
