"""The names, numbers and layouts of lumidex.py are those of the C headers."""

import ctypes
import re
import unittest

import lumidex
from host import ROOT


def header(name):
    return (ROOT / "include" / "lumidex" / name).read_text(encoding="utf-8")


def enumerators(prefix, text):
    return {name: int(value, 0)
            for name, value in re.findall(rf"^\s*{prefix}(\w+)\s*=\s*(\w+),", text, re.MULTILINE)}


class InterfaceTest(unittest.TestCase):
    def test_methods_stand_in_the_order_of_the_table(self):
        names = re.findall(r"STDMETHOD(?:_\(\w+, |\()(\w+)\)\(THIS", header("ILumidex.h"))
        self.assertEqual(len(names), 23)
        slots = {name: slot for name, (slot, _) in lumidex._METHODS.items()}
        self.assertEqual(slots, {name: slot for slot, name in enumerate(names, 3)})

    def test_result_codes_are_those_of_the_headers(self):
        rows = re.findall(r'X\((\w+),\s*(0x\w+)U,\s*"([^"]+)"\)',
                          header("ResultCodes.h") + header("ComTypes.h"))
        expected = {name: (int(value, 16), meaning) for name, value, meaning in rows
                    if int(value, 16) >= 0x80000000}
        self.assertEqual(len(expected), 27)
        self.assertEqual({code.name: (code.value, code.meaning) for code in lumidex.ResultCode},
                         expected)

    def test_enumerations_are_those_of_the_headers(self):
        for kind, prefix, file in ((lumidex.Group, "LMD_GROUP_", "ImageInfo.h"),
                                   (lumidex.RecordType, "LMD_RECORD_", "ImageInfo.h"),
                                   (lumidex.FileType, "LMD_FILE_", "ILumidex.h")):
            with self.subTest(prefix):
                self.assertEqual({member.name: member.value for member in kind},
                                 enumerators(prefix, header(file)))

    def test_layouts_are_those_of_the_module(self):
        record, records = lumidex._RawRecord, lumidex._RecordList
        self.assertEqual([getattr(record, name).offset for name, _ in record._fields_],
                         [0, 4, 8, 12, 16, 24])
        self.assertEqual([getattr(records, name).offset for name, _ in records._fields_],
                         [0, 8, 16, 24])
        self.assertEqual((ctypes.sizeof(record), ctypes.sizeof(records)), (32, 32))

    def test_identifiers_are_those_of_the_headers(self):
        for value, line in ((lumidex._CLSID_LUMIDEX, "CLSID CLSID_Lumidex"),
                            (lumidex._IID_LUMIDEX, "IID IID_ILumidex")):
            digits = header("Guids.h").partition(line)[2].partition(";")[0]
            numbers = [int(number, 16) for number in re.findall(r"0x(\w+)", digits)]
            expected = numbers[0].to_bytes(4, "little") + numbers[1].to_bytes(2, "little")
            expected += numbers[2].to_bytes(2, "little") + bytes(numbers[3:])
            self.assertEqual(bytes(value), expected)


if __name__ == "__main__":
    unittest.main()
