"""Reading through the built module; the samples have the values that their generator put in."""

import struct
import sys
import tracemalloc
import unittest

import lumidex
from host import SAMPLES, XMP_NAME, HostTest, jpeg, png, segment, xmp_chunk
from lumidex import FileType, Group, Pose, Rational, ResultCode

# Tag 0x0011 of maker-note.jpg.
QUOTIENTS = struct.pack(">6i", 25, 10, -1, 4, 3, 1)


class ReadingTest(HostTest):
    def open(self, path):
        photo = self.module.open(path)
        self.addCleanup(photo.close)
        return photo

    def tearDown(self):
        self.doCleanups()
        super().tearDown()

    def sample(self, name):
        return self.open(SAMPLES / name)

    def records_of(self, photo):
        return [(record.group, record.id, record.value) for record in photo.records()]

    def test_file_types(self):
        for data, expected in ((jpeg(), FileType.JPEG), (png(), FileType.PNG),
                               (b"II*\0\x08\0\0\0", FileType.TIFF),
                               (b"MM\0*\0\0\0\x08", FileType.TIFF),
                               (b"no image", FileType.UNKNOWN), (b"", FileType.UNKNOWN)):
            with self.subTest(data[:8]):
                path = self.write("file", data)
                self.assertIs(self.module.file_type(path), expected)
        self.assertIs(self.module.file_type(self.folder / "none"), FileType.UNKNOWN)
        self.assertIs(self.sample("panorama.jpg").type, FileType.JPEG)
        self.assertIs(self.sample("panorama.png").type, FileType.PNG)

    def test_refused_files_name_the_code(self):
        self.assert_code(ResultCode.LMD_E_SRC_NOT_FOUND, self.module.open, self.folder / "none.jpg")
        self.assert_code(ResultCode.LMD_E_SRC_NOT_FOUND, self.module.open, self.folder)
        text = self.write("text", b"no photograph")
        self.assert_code(ResultCode.LMD_E_BAD_FORMAT, self.module.open, text)

    def test_absent_values_are_none(self):
        for data in (jpeg(), png()):
            photo = self.open(self.write("file", data))
            self.assertIs(photo.is_panorama(), False)
            self.assertEqual(photo.pose(), Pose(None, None, None))
            for value in (photo.info16(), photo.info17(), photo.info17_triple(), photo.info18(),
                          photo.info19(), photo.info20(), photo.info21(), photo.xmp_packet()):
                self.assertIsNone(value)

    def test_panorama_has_its_mark_and_its_pose(self):
        photo = self.sample("panorama.jpg")
        self.assertIs(photo.is_panorama(), True)
        self.assertEqual(photo.pose(), Pose(heading=123.5, pitch=-4.25, roll=0.75))
        self.assertIs(self.sample("panorama.png").is_panorama(), True)
        # Its rating comes first and hides the rest.
        self.assertIs(self.sample("panorama-rated.jpg").is_panorama(), False)
        self.assertIs(self.sample("landscape-le.jpg").is_panorama(), False)

    def test_maker_note_values_are_exact(self):
        photo = self.sample("maker-note.jpg")
        counting = bytes(range(1, 21))
        self.assertEqual(photo.info16(), 5)
        self.assertEqual(photo.info17(), (Rational(25, 10), Rational(-1, 4), Rational(3, 1)))
        self.assertEqual(photo.info17_triple(), (2.5, -0.25, 3.0))
        self.assertEqual(photo.info18(), counting[:16])
        self.assertEqual(photo.info19(), counting[:8])
        self.assertEqual(photo.info20(), (100, 200, 300))
        self.assertEqual(photo.info21(), counting)

    def test_quotient_by_zero_is_an_error_of_the_triple_alone(self):
        by_zero = struct.pack(">6i", 25, 10, -1, 0, 3, 1)
        photo = self.open(self.patched("maker-note.jpg", QUOTIENTS, by_zero))
        self.assert_code(ResultCode.E_FAIL, photo.info17_triple)
        self.assertEqual(photo.info17(), (Rational(25, 10), Rational(-1, 0), Rational(3, 1)))

    def test_value_of_a_wrong_type_is_an_error(self):
        entry = struct.pack(">HHII", 0x0010, 4, 1, 5)
        undefined = struct.pack(">HHI4s", 0x0010, 7, 4, b"abcd")
        photo = self.open(self.patched("maker-note.jpg", entry, undefined))
        self.assert_code(ResultCode.LMD_E_TYPE_MISMATCH_16, photo.info16)

    def test_records_are_typed_values(self):
        photo = self.sample("maker-note.jpg")
        self.assertEqual(self.records_of(photo), [
            (Group.BASICS, 256, (320,)), (Group.BASICS, 257, (240,)), (Group.BASICS, 274, (1,)),
            (Group.BASICS, 277, (3,)), (Group.BASICS, 11, (1,)),
            (Group.IFD0, 271, "SAMSUNG"), (Group.IFD0, 272, "NX10"), (Group.IFD0, 274, (1,)),
            (Group.IFD0, 282, (Rational(72, 1),)), (Group.IFD0, 283, (Rational(72, 1),)),
            (Group.IFD0, 296, (2,)),
            (Group.EXIF, 33434, (Rational(1, 60),)), (Group.EXIF, 33437, (Rational(35, 10),)),
            (Group.EXIF, 34850, (2,)), (Group.EXIF, 34855, (400,)), (Group.EXIF, 36864, b"0232"),
        ])

    def test_gps_records(self):
        gps = [(record.id, record.value) for record in self.sample("landscape-le.jpg").records()
               if record.group == Group.GPS]
        self.assertEqual(gps, [(0, b"\2\3\0\0"), (1, "N")])

    def test_records_outlive_their_photograph(self):
        photo = self.sample("maker-note.jpg")
        records = photo.records()
        photo.close()
        self.assertEqual(records[5].value, "SAMSUNG")

    def test_png_has_no_records(self):
        self.assertEqual(self.sample("panorama.png").records(), ())

    def test_packet_is_read_byte_for_byte(self):
        for packet in (b"<x/>", b"x" * 65504):
            path = self.write("a.jpg", jpeg(segment(0xE1, XMP_NAME + packet)))
            self.assertEqual(self.open(path).xmp_packet(), packet)
        packet = b"equirectangular" + b"p" * 100000
        path = self.write("a.png", png(xmp_chunk(packet)))
        self.assertEqual(self.open(path).xmp_packet(), packet)

    def test_packet_that_grows_is_read_whole(self):
        path = self.write("a.jpg", jpeg(segment(0xE1, XMP_NAME + b"<x/>")))
        photo = self.open(path)
        self.assertEqual(photo.xmp_packet(), b"<x/>")
        self.write("a.jpg", jpeg(segment(0xE1, XMP_NAME + b"<longer than before/>")))
        self.assertEqual(photo.xmp_packet(), b"<longer than before/>")

    def test_packet_that_grows_between_size_and_bytes_is_read_whole(self):
        photo = self.open(self.write("a.jpg", jpeg(segment(0xE1, XMP_NAME + b"<x/>"))))
        packet = b"y" * 60000
        tell = photo._object.has
        sizes = []

        def tell_and_grow(name, size):
            found = tell(name, size)
            sizes.append(size.value)
            self.write("a.jpg", jpeg(segment(0xE1, XMP_NAME + packet)))
            return found

        photo._object.has = tell_and_grow
        self.assertEqual(photo.xmp_packet(), packet)
        self.assertEqual(sizes, [4 + 31, 60000 + 31])

    def test_packet_larger_than_its_file_is_an_error(self):
        path = self.write("a.png", png(xmp_chunk(b"equirectangular", length=0xFFFFFFF0)))
        photo = self.open(path)
        self.assertIs(photo.is_panorama(), True)
        tracemalloc.start()
        self.addCleanup(tracemalloc.stop)
        self.assert_code(ResultCode.LMD_E_READ_FAILED, photo.xmp_packet)
        self.assertLess(tracemalloc.get_traced_memory()[1], 1 << 20)

    def test_photograph_that_is_gone_keeps_its_values(self):
        path = self.copy("panorama.jpg")
        photo = self.open(path)
        path.unlink()
        self.assertEqual(photo.pose().heading, 123.5)
        self.assert_code(ResultCode.LMD_E_SRC_NOT_FOUND, photo.records)
        self.assert_code(ResultCode.LMD_E_OPEN_FAILED, photo.xmp_packet)

    def test_paths_of_every_kind(self):
        data = (SAMPLES / "maker-note.jpg").read_bytes()
        path = self.write("abi-\u00E9\u0416\u4E2D\U0001F4F7.jpg", data)
        for given in (path, str(path), str(path).encode("utf-8")):
            self.assertEqual(self.open(given).info16(), 5)
        with self.assertRaises(ValueError):
            self.module.open("a\0b.jpg")

    @unittest.skipIf(sys.platform == "win32", "names are UTF-16")
    def test_name_that_is_no_utf8_is_refused(self):
        with self.assertRaises(UnicodeEncodeError):
            self.module.open(b"Gen\xE8ve.jpg")

    def test_long_path_is_opened_and_not_found_again(self):
        folder = self.folder / ("d" * 200) / ("d" * 100)
        folder.mkdir(parents=True)
        for name in ("panorama.jpg", "panorama.png"):
            (folder / name).write_bytes((SAMPLES / name).read_bytes())
        photo = self.open(folder / "panorama.jpg")
        self.assertEqual(photo.pose().heading, 123.5)
        self.assertIs(photo.is_panorama(), True)
        self.assertEqual(photo.records()[5].value, "LumidexMgr")
        self.assert_code(ResultCode.LMD_E_OPEN_FAILED, photo.xmp_packet)
        self.assertIs(self.open(folder / "panorama.png").is_panorama(), False)

    def test_file_that_is_no_module_is_refused(self):
        with self.assertRaises(OSError):
            lumidex.load(self.folder / "none.so")
        with self.assertRaises(OSError):
            lumidex.load(self.write("text.so", b"no library"))


if __name__ == "__main__":
    unittest.main()
