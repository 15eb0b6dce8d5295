"""The values that the check writes into photographs, and what has to be read back.

One row for each entry of the new EXIF segment: tag, type, count and value as the EXIF standard and
the command's forms give them, and what exiftool calls the tag and prints for it.
"""

import math
import struct
from dataclasses import dataclass
from fractions import Fraction

from entries import (ASCII, BYTE, EXIF, GPS, IFD0, IFD1, LONG, NUMBER_SIZE, RATIONAL, SHORT,
                     SRATIONAL, SSHORT, UNDEFINED, Entry, value_size)

# What is asked for: two tags for each type at least, in place and in the value area.
SETTINGS = (
    ("ImageDescription", "Harbour at dusk"),
    ("Artist", "Zoë Ørsted"),
    ("XResolution", "300"),
    ("ResolutionUnit", "2"),
    ("ExposureTime", "1/250"),
    ("FNumber", "f/2.8"),
    ("ExposureBiasValue", "-2/3"),
    ("DateTimeOriginal", "2024:05:01 12:00:00"),
    ("SubjectArea", "120,80,40,30"),
    ("PixelXDimension", "4000"),
    ("ExifVersion", "0232"),
    ("UserComment", "A long way home"),
    ("GPSVersionID", "2.3.0.0"),
    ("GPSPosition", "-33.8568,151.2153"),
    ("GPSAltitudeRef", "1"),
    ("GPSAltitude", "41.7"),
    ("GPSDifferential", "1"),
)

GROUP_OF_BLOCK = {IFD0: "IFD0", EXIF: "ExifIFD", GPS: "GPS", IFD1: "IFD1"}
SIGNED = (SRATIONAL, SSHORT)


@dataclass(frozen=True)
class Written:
    """A value of the new segment. Numbers are a tuple, texts and plain bytes are bytes."""

    block: int
    tag: int
    type: int
    value: object
    exiftool_name: str
    exiftool_value: object  # a text, or a tuple of numbers

    def count(self):
        return len(self.value)

    def exiftool_group(self):
        return GROUP_OF_BLOCK[self.block]

    def matches_entry(self, entry):
        """An entry as exiv2 reads it. A fraction is compared by its value, not by its terms."""
        return (entry.type == self.type and entry.count == self.count()
                and value_of(entry) == self.value)

    def matches_exiftool(self, text):
        if text is None or isinstance(self.exiftool_value, str):
            return text == self.exiftool_value
        parts = text.split(" ")
        return len(parts) == len(self.exiftool_value) and all(
            _is_close(part, number) for part, number in zip(parts, self.exiftool_value))


def value_of(entry):
    """Numbers of a little-endian entry as a tuple, everything else as its bytes."""
    size = NUMBER_SIZE.get(entry.type)
    if size is None:
        return entry.data
    code = {2: "h", 4: "i"}[size] if entry.type in SIGNED else {2: "H", 4: "I"}[size]
    if len(entry.data) % value_size(entry.type) != 0:
        return None
    numbers = struct.unpack(f"<{len(entry.data) // size}{code}", entry.data)
    if entry.type not in (RATIONAL, SRATIONAL):
        return numbers
    if 0 in numbers[1::2]:
        return None
    return tuple(Fraction(*pair) for pair in zip(numbers[::2], numbers[1::2]))


def _is_close(text, number):
    try:
        return math.isclose(float(text), number, rel_tol=1e-9)
    except ValueError:
        return False


def _row(block, tag, entry_type, value, name, shown=None):
    """`shown` is needed where exiftool prints something else than the value's own text."""
    if shown is None and isinstance(value, bytes):
        shown = value.rstrip(b"\0").decode("utf-8")
    if shown is None or isinstance(shown, (int, float)):
        shown = tuple(value) if shown is None else (shown,)
    return Written(block, tag, entry_type, value, name, shown)


ENTRIES = (
    _row(IFD0, 0x010E, ASCII, b"Harbour at dusk\0", "ImageDescription"),
    _row(IFD0, 0x011A, RATIONAL, (300,), "XResolution"),
    _row(IFD0, 0x0128, SHORT, (2,), "ResolutionUnit"),
    _row(IFD0, 0x013B, ASCII, "Zoë Ørsted\0".encode("utf-8"), "Artist"),
    _row(EXIF, 0x829A, RATIONAL, (Fraction(1, 250),), "ExposureTime", 0.004),
    _row(EXIF, 0x829D, RATIONAL, (Fraction(28, 10),), "FNumber", 2.8),
    _row(EXIF, 0x9000, UNDEFINED, b"0232", "ExifVersion"),
    _row(EXIF, 0x9003, ASCII, b"2024:05:01 12:00:00\0", "DateTimeOriginal"),
    _row(EXIF, 0x9204, SRATIONAL, (Fraction(-2, 3),), "ExposureCompensation", -2 / 3),
    _row(EXIF, 0x9214, SHORT, (120, 80, 40, 30), "SubjectArea"),
    _row(EXIF, 0x9286, UNDEFINED, b"ASCII\0\0\0A long way home", "UserComment", "A long way home"),
    _row(EXIF, 0xA002, LONG, (4000,), "ExifImageWidth"),
    _row(GPS, 0x0000, BYTE, bytes((2, 3, 0, 0)), "GPSVersionID", (2, 3, 0, 0)),
    _row(GPS, 0x0001, ASCII, b"S\0", "GPSLatitudeRef"),
    _row(GPS, 0x0002, RATIONAL, (33, 51, Fraction(2448, 100)), "GPSLatitude", 33.8568),
    _row(GPS, 0x0003, ASCII, b"E\0", "GPSLongitudeRef"),
    _row(GPS, 0x0004, RATIONAL, (151, 12, Fraction(5508, 100)), "GPSLongitude", 151.2153),
    _row(GPS, 0x0005, BYTE, b"\x01", "GPSAltitudeRef", 1),
    _row(GPS, 0x0006, RATIONAL, (Fraction(417, 10),), "GPSAltitude", 41.7),
    _row(GPS, 0x001E, SSHORT, (1,), "GPSDifferential"),
    _row(IFD1, 0x0103, SHORT, (6,), "Compression"),
    _row(IFD1, 0x011A, RATIONAL, (72,), "XResolution"),
    _row(IFD1, 0x011B, RATIONAL, (72,), "YResolution"),
    _row(IFD1, 0x0128, SHORT, (2,), "ResolutionUnit"),
)

THUMBNAIL_POSITION = (IFD1, 0x0201)
THUMBNAIL_LENGTH = (IFD1, 0x0202)


def first_entry(reading, key):
    """The first entry that exiv2 read under a key, None without one."""
    peers = reading.entries.get(key)
    return peers[0].entry if peers else None


def thumbnail_bytes(reading, data, tiff_position):
    """The thumbnail of a file where exiv2 says that it stands, None without one."""
    numbers = [value_of(first_entry(reading, key) or Entry(0, LONG, 0, b""))
               for key in (THUMBNAIL_POSITION, THUMBNAIL_LENGTH)]
    if any(number is None or len(number) != 1 for number in numbers):
        return None
    start = tiff_position + numbers[0][0]
    return data[start:start + numbers[1][0]]
