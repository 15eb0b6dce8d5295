"""Reads the EXIF directories of a JPEG file as the store has to read them.

It is the witness of the comparison: where the store and the peer disagree, it says where in the
file the value stands, what has to be stored, and why an entry has to be left out. It is written
from the file formats and from the required reading alone and shares nothing with the module.
"""

from dataclasses import dataclass
from typing import Optional

from entries import (ASCII, BYTE, DOUBLE, EXIF, FLOAT, GPS, IFD0, IFD1, SBYTE, UNDEFINED,
                     VALUE_SIZE, Entry, to_little_endian, value_size)

PADDING_TAG = 0xEA1C
LARGEST_DIRECTORY = 512
LARGEST_COUNT = 1024
LARGEST_UNDEFINED = 65535
EXIF_POINTER, GPS_POINTER, INTEROP_POINTER = 0x8769, 0x8825, 0xA005
NOT_STORED_IN_IFD0 = {0x002E, 0x014A, 0x02BC, 0x83BB, 0x85FF, 0x8606, 0x8649, EXIF_POINTER, 0x8773,
                      GPS_POINTER, 0xC634}
INTEROP_TAGS = {1, 2}


@dataclass(frozen=True)
class Segment:
    number: int
    start: int  # of the payload
    end: int
    base: int  # of the TIFF block
    order: str


@dataclass(frozen=True)
class Directory:
    block: int
    segment: Segment
    position: int
    length: int  # entries
    interop: bool = False
    pointer_type: Optional[int] = None  # of the entry that led here; none for IFD0 and IFD1


@dataclass(frozen=True)
class Occurrence:
    """One directory entry of the file."""

    directory: Directory
    number: int  # in the directory
    tag: int
    type: int
    count: int
    position: int  # of the value
    inline: bool
    left_out: Optional[str]  # why it is not stored
    stored: Optional[Entry]

    def size(self):
        return value_size(self.type) * self.count


class Photograph:
    """The Exif segments of a file and every entry of their directories, in reading order."""

    def __init__(self, data):
        self.data = data
        self.segments = []
        self.occurrences = []
        self.lost_at = None  # where the walk loses the row of segments, perhaps before its end
        for start, end in self._exif_payloads():
            self._read_segment(start, end)

    def loses_exif(self):
        """The walk finds no Exif segment because a fill byte stands in front of it."""
        return (not self.segments and self.lost_at is not None
                and b"Exif\0\0" in self.data[self.lost_at:])

    def of_key(self, block, tag):
        return [o for o in self.occurrences if o.directory.block == block and o.tag == tag]

    def exif_segment_bytes(self):
        """The first Exif segment with its marker, as far as the file has it."""
        start, end = next(self._exif_payloads())
        return self.data[start - 4:end]

    def _number(self, position, size, order):
        piece = self.data[position:position + size]
        return int.from_bytes(piece, order) if len(piece) == size else 0

    def _exif_payloads(self):
        if self.data[:2] != b"\xff\xd8":
            return
        position = 2
        while position < len(self.data) and self.data[position] == 0xFF:
            if position + 4 > len(self.data):
                return
            marker = self.data[position + 1]
            if marker == 0xFF and self.lost_at is None:
                self.lost_at = position  # a fill byte counts as a marker
            start = position + 4
            end = start - 2 + self._number(position + 2, 2, "big")
            if marker == 0xE1 and self.data[start:start + 4] == b"Exif":
                yield start, end
            position = end
        if self.lost_at is None:
            self.lost_at = position

    def _read_segment(self, start, end):
        base = start + 6
        order = {b"II": "little", b"MM": "big"}.get(self.data[base:base + 2])
        if order is None:
            return
        segment = Segment(len(self.segments), start, end, base, order)
        self.segments.append(segment)
        offset = self._number(base + 4, 4, order)
        if offset != 0 and self._number(base + 2, 2, order) != 26:
            self._read_ifd0(segment, base + offset)

    def _read_ifd0(self, segment, position):
        directory = Directory(IFD0, segment, position, self._length(segment, position))
        if directory.length > LARGEST_DIRECTORY:
            return
        self._read_entries(directory, self._follow_from_ifd0)
        after = position + 2 + 12 * directory.length
        following = segment.base + self._number(after, 4, segment.order)
        if following != segment.base and inside(segment, following):
            length = self._length(segment, following)
            self._read_directory(Directory(IFD1, segment, following, length))

    def _follow_from_ifd0(self, occurrence):
        block = {EXIF_POINTER: EXIF, GPS_POINTER: GPS}.get(occurrence.tag)
        if block is not None:
            self._read_child(block, occurrence)

    def _follow_from_exif(self, occurrence):
        if occurrence.tag == INTEROP_POINTER:
            self._read_child(EXIF, occurrence, interop=True)

    def _read_child(self, block, pointer, interop=False):
        segment = pointer.directory.segment
        offset = self._number(pointer.position, 4, segment.order)
        position = segment.base + offset
        if offset != 0 and inside(segment, position):
            length = self._length(segment, position)
            self._read_directory(Directory(block, segment, position, length, interop, pointer.type))

    def _length(self, segment, position):
        return self._number(position, 2, segment.order)

    def _read_directory(self, directory):
        if directory.length > LARGEST_DIRECTORY:
            return
        holds_pointers = directory.block == EXIF and not directory.interop
        self._read_entries(directory, self._follow_from_exif if holds_pointers else None)

    def _read_entries(self, directory, follow):
        for number in range(directory.length):
            occurrence = self._read_entry(directory, number)
            # The values below a pointer are read before the pointer itself is stored.
            if follow is not None and occurrence.left_out != "outside-segment":
                follow(occurrence)
            self.occurrences.append(occurrence)

    def _read_entry(self, directory, number):
        segment = directory.segment
        position = directory.position + 2 + 12 * number
        tag = self._number(position, 2, segment.order)
        entry_type = self._number(position + 2, 2, segment.order)
        count = self._number(position + 4, 4, segment.order)
        inline = value_size(entry_type) * count <= 4
        value = position + 8
        if not inline:
            value = (segment.base + self._number(position + 8, 4, segment.order)) & 0xFFFFFFFF
        left_out = why_left_out(directory, tag, count, inline or inside(segment, value))
        stored = None
        if left_out is None:
            stored = self._stored_form(directory, tag, entry_type, count, value)
        return Occurrence(directory, number, tag, entry_type, count, value, inline, left_out,
                          stored)

    def _stored_form(self, directory, tag, entry_type, count, position):
        if directory.block != IFD1:
            count = min(count, LARGEST_COUNT)
        if entry_type in (FLOAT, DOUBLE) or entry_type not in VALUE_SIZE:
            entry_type = UNDEFINED
        if entry_type == UNDEFINED and count > LARGEST_UNDEFINED:
            return Entry(tag, UNDEFINED, 0, b"")
        size = value_size(entry_type) * count
        data = self.data[position:position + size].ljust(size, b"\0")
        data = self._without_cut_number(data, entry_type, position)
        data = to_little_endian(data, entry_type, directory.segment.order)
        if entry_type == ASCII and not data.endswith(b"\0"):
            data += b"\0"
        return Entry(tag, BYTE if entry_type == SBYTE else entry_type, count, data)

    def _without_cut_number(self, data, entry_type, position):
        """A number that the end of the file cuts is 0 as a whole."""
        size = 4 if value_size(entry_type) == 8 else value_size(entry_type)
        present = max(0, len(self.data) - position)
        if present >= len(data):
            return data
        whole = present - present % size
        return data[:whole].ljust(len(data), b"\0")


def inside(segment, position):
    """A value must begin behind the segment's first byte and before its end."""
    return segment.start < position < segment.end


def why_left_out(directory, tag, count, value_inside):
    if not value_inside:
        return "outside-segment"
    if directory.interop:
        return None if tag in INTEROP_TAGS else "interop-tag-not-stored"
    if tag == PADDING_TAG:
        return "padding-tag"
    if directory.block == IFD0 and tag in NOT_STORED_IN_IFD0:
        return "special-tag-not-stored"
    if directory.block == IFD1 and count > 65535:
        return "count-above-65535"
    return None
