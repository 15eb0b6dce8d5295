"""A directory entry as the comparison sees it, and the directories that are compared."""

from dataclasses import dataclass

IFD0, EXIF, GPS, IFD1 = 1, 2, 3, 4
BLOCK_NAMES = {IFD0: "IFD0", EXIF: "EXIF", GPS: "GPS", IFD1: "IFD1"}

BYTE, ASCII, SHORT, LONG, RATIONAL, SBYTE, UNDEFINED = 1, 2, 3, 4, 5, 6, 7
SSHORT, SLONG, SRATIONAL, FLOAT, DOUBLE, IFD = 8, 9, 10, 11, 12, 13

VALUE_SIZE = {BYTE: 1, ASCII: 1, SHORT: 2, LONG: 4, RATIONAL: 8, SBYTE: 1, UNDEFINED: 1,
              SSHORT: 2, SLONG: 4, SRATIONAL: 8, FLOAT: 4, DOUBLE: 8, IFD: 4}
NUMBER_SIZE = {SHORT: 2, SSHORT: 2, LONG: 4, SLONG: 4, IFD: 4, RATIONAL: 4, SRATIONAL: 4}


@dataclass(frozen=True)
class Entry:
    """A value; its bytes are little-endian, FLOAT and DOUBLE as they stand in the file."""

    tag: int
    type: int
    count: int
    data: bytes

    def __str__(self):
        shown = self.data[:32].hex() + ("..." if len(self.data) > 32 else "")
        return f"type {self.type}, count {self.count}, size {len(self.data)}, {shown or 'no data'}"


def value_size(entry_type):
    """The bytes of one value; unknown types count one."""
    return VALUE_SIZE.get(entry_type, 1)


def to_little_endian(data, entry_type, order):
    """Turns the numbers of a value in the given byte order ("little" or "big")."""
    size = NUMBER_SIZE.get(entry_type, 1)
    if order == "little" or size == 1:
        return data
    return b"".join(data[at:at + size][::-1] for at in range(0, len(data), size))
