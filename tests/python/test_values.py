"""Records as Python values, and errors; without the module."""

import pickle
import unittest
from fractions import Fraction

from lumidex import LumidexError, Rational, Record, RecordType, ResultCode


def value(kind, data):
    return Record(1, 2, kind, data).value


class RecordValueTest(unittest.TestCase):
    EIGHT = b"\xFE\xFF\xFF\xFF\x03\0\0\0"

    def test_every_type_has_its_value(self):
        self.assertEqual(value(RecordType.INT32, self.EIGHT), (-2, 3))
        self.assertEqual(value(RecordType.UINT32, self.EIGHT), (4294967294, 3))
        self.assertEqual(value(RecordType.SRATIONAL, self.EIGHT), (Rational(-2, 3),))
        self.assertEqual(value(RecordType.URATIONAL, self.EIGHT), (Rational(4294967294, 3),))
        self.assertEqual(value(RecordType.DOUBLE, b"\0\0\0\0\0\0\xF8\x3F"), (1.5,))
        self.assertEqual(value(RecordType.ASCII, b"ab\0"), "ab")
        self.assertEqual(value(RecordType.WIDE_TEXT, b"A\0\xAC\x20\0\0"), "A\u20AC")
        self.assertEqual(value(RecordType.BYTES, b"\1\2\3"), b"\1\2\3")

    def test_unknown_type_is_bytes(self):
        self.assertEqual(value(77, b"\1\0\3"), b"\1\0\3")

    def test_rest_that_is_no_item_is_left_out(self):
        self.assertEqual(value(RecordType.UINT32, b"\1\0\0\0\x09"), (1,))
        self.assertEqual(value(RecordType.URATIONAL, b"\1\0\0\0\2\0\0\0\3\0\0\0"),
                         (Rational(1, 2),))
        self.assertEqual(value(RecordType.WIDE_TEXT, b"A\0B"), "A")
        self.assertEqual(value(RecordType.DOUBLE, b"\1"), ())

    def test_text_ends_at_its_first_zero(self):
        self.assertEqual(value(RecordType.ASCII, b"photo\0editor\0"), "photo")
        self.assertEqual(value(RecordType.ASCII, b"open end"), "open end")
        self.assertEqual(value(RecordType.WIDE_TEXT, b"A\0\0\0B\0"), "A")

    def test_rationals_are_exact(self):
        self.assertEqual(Rational(25, 10).fraction(), Fraction(5, 2))
        self.assertNotEqual(Rational(25, 10), Rational(5, 2))
        with self.assertRaises(ZeroDivisionError):
            Rational(1, 0).fraction()


class RecordOfTest(unittest.TestCase):
    def check(self, given, kind, data):
        self.assertEqual(Record.of(2, 271, given), Record(2, 271, kind, data))

    def test_text_and_bytes(self):
        self.check("\u00FCb", RecordType.ASCII, b"\xC3\xBCb\0")
        self.check("", RecordType.ASCII, b"\0")
        self.check(b"0232", RecordType.BYTES, b"0232")
        self.check(bytearray(b"\1"), RecordType.BYTES, b"\1")

    def test_integers_take_32_bits(self):
        self.check(400, RecordType.UINT32, b"\x90\1\0\0")
        self.check([1, 4294967295], RecordType.UINT32, b"\1\0\0\0\xFF\xFF\xFF\xFF")
        self.check((1, -2), RecordType.INT32, b"\1\0\0\0\xFE\xFF\xFF\xFF")

    def test_fractions_take_two_times_32_bits(self):
        self.check(Rational(25, 10), RecordType.URATIONAL, b"\x19\0\0\0\x0A\0\0\0")
        self.check(Fraction(25, 10), RecordType.URATIONAL, b"\5\0\0\0\2\0\0\0")
        self.check((Fraction(-1, 3), Rational(0, 0)), RecordType.SRATIONAL,
                   b"\xFF\xFF\xFF\xFF\3\0\0\0\0\0\0\0\0\0\0\0")

    def test_numbers_that_do_not_fit_are_refused(self):
        for given in (4294967296, -2147483649, (-1, 2147483648), Rational(1, 4294967296)):
            with self.subTest(given), self.assertRaises(ValueError):
                Record.of(4, 1, given)

    def test_other_values_are_refused(self):
        for given in (0.5, [1, 0.5], [1, Fraction(1, 2)], [], None):
            with self.subTest(given), self.assertRaises(TypeError):
                Record.of(4, 1, given)

    def test_text_that_is_no_utf8_comes_back_byte_for_byte(self):
        read = Record(2, 271, RecordType.ASCII, b"Gen\xE8ve\0")
        self.assertEqual(Record.of(2, 271, read.value), read)


class ErrorTest(unittest.TestCase):
    def test_names_its_code(self):
        error = LumidexError("Open", ResultCode.LMD_E_SRC_NOT_FOUND)
        self.assertEqual(str(error), "Open: LMD_E_SRC_NOT_FOUND (0x8004C001): "
                                     "the file does not exist or is not a regular file")
        self.assertEqual((error.code, error.operation), (0x8004C001, "Open"))

    def test_unknown_code_is_told_by_its_number(self):
        self.assertEqual(str(LumidexError("Open", 0x80041234)),
                         "Open: HRESULT (0x80041234): a result code of the system")

    def test_goes_to_another_process(self):
        error = pickle.loads(pickle.dumps(LumidexError("Open", 0x8004C022)))
        self.assertEqual((error.operation, error.name), ("Open", "LMD_E_BAD_FORMAT"))


if __name__ == "__main__":
    unittest.main()
