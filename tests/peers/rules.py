"""Explains every difference between the store and exiv2, or does not.

A rule is named after a behaviour. It holds only when its own condition does. What the store has
must always be what the file requires, byte for byte; besides, it must follow from what exiv2 read,
or exiv2 must have said that it refused to read it. Whatever no rule explains is a finding.
"""

from dataclasses import dataclass
from typing import Optional

from entries import (ASCII, BYTE, DOUBLE, EXIF, FLOAT, GPS, IFD, IFD0, IFD1, LONG, SBYTE, UNDEFINED,
                     Entry, value_size)
from photograph import LARGEST_COUNT

MAKE = 0x010F
LEAF_TAGS = (0x85FF, 0x8606)
POINTER_TO = {EXIF: 0x8769, GPS: 0x8825}
GROUPS_OF_BLOCK = {1: ("Image",), 2: ("Photo", "Iop"), 3: ("GPSInfo",), 4: ("Thumbnail",)}


@dataclass
class Case:
    """One key of one file: what the store has, what exiv2 read, and every entry in the file."""

    block: int
    tag: int
    stored: Optional[Entry]
    peers: list  # of PeerEntry, in exiv2's order
    occurrences: list  # of Occurrence, in reading order
    reading: object  # PeerReading
    photograph: object

    def deciding(self):
        """The last entry of the file under this key that has to be stored, if there is one."""
        to_store = [o for o in self.occurrences if o.stored is not None]
        return to_store[-1] if to_store else None


def explain(case):
    """The rules that explain the case: an empty list when nothing differs, None for a finding."""
    deciding = case.deciding()
    if case.stored is None:
        return _explain_left_out(case) if deciding is None else None
    if deciding is None:
        return ["make-from-leaf"] if make_from_leaf(case) else None
    if deciding.stored != case.stored:
        return None
    names = _explain_value(case) if case.peers else None
    return _explain_refused_by_peer(case, deciding) if names is None else names


# --- The store's form of a value that exiv2 read --------------------------------------------------


def clamped_to_1024(entry, block):
    """Outside IFD1 a value keeps at most 1024 of its numbers or characters."""
    if block == IFD1 or entry.count <= LARGEST_COUNT:
        return entry
    size = value_size(entry.type) * LARGEST_COUNT
    return Entry(entry.tag, entry.type, LARGEST_COUNT, entry.data[:size])


def sbyte_kept_as_byte(entry, _):
    """SBYTE values are stored as BYTE."""
    return Entry(entry.tag, BYTE, entry.count, entry.data) if entry.type == SBYTE else entry


def float_kept_as_bytes(entry, _):
    """FLOAT and DOUBLE values are stored as UNDEFINED, one byte for each of their numbers."""
    if entry.type not in (FLOAT, DOUBLE):
        return entry
    return Entry(entry.tag, UNDEFINED, entry.count, entry.data[:entry.count])


def unknown_type_kept_as_bytes(entry, _):
    """Values of a type that TIFF does not define are stored as UNDEFINED."""
    return Entry(entry.tag, UNDEFINED, entry.count, entry.data) if entry.type == 0 else entry


def ascii_terminated(entry, _):
    """A text without a final zero gets one, which its count does not include."""
    if entry.type != ASCII or entry.data.endswith(b"\0"):
        return entry
    return Entry(entry.tag, ASCII, entry.count, entry.data + b"\0")


FORMS = (clamped_to_1024, sbyte_kept_as_byte, float_kept_as_bytes, unknown_type_kept_as_bytes,
         ascii_terminated)


def stored_form(entry, block):
    """What the store makes of a value, and the names of the rules that changed it."""
    names = []
    for form in FORMS:
        changed = form(entry, block)
        if changed != entry:
            names.append(form.__name__.replace("_", "-"))
        entry = changed
    return entry, names


def _explain_value(case):
    """One of the entries that exiv2 read, in the store's form."""
    peer, names = _deciding_peer(case)
    expected, changes = stored_form(peer.entry, case.block)
    if expected != case.stored:
        return None
    return names + changes


def _deciding_peer(case):
    """The entry of exiv2 that the store has to hold: the last one whose value may be read."""
    names = []
    if case.block == EXIF and any(peer.group == "Iop" for peer in case.peers):
        names.append("interop-in-exif-block")
    if len(case.peers) == 1:
        return case.peers[0], names
    names.append("last-duplicate-wins")
    if len(case.occurrences) == len(case.peers):
        return case.peers[case.occurrences.index(case.deciding())], names
    return case.peers[-1], names


# --- Entries that the store leaves out ------------------------------------------------------------


def _explain_left_out(case):
    """Every entry of the file under this key has its own reason to be left out."""
    if not case.occurrences:
        return ["segment-behind-fill-bytes"] if case.photograph.loses_exif() else None
    return sorted({o.left_out for o in case.occurrences})


# --- Values that the store makes ------------------------------------------------------------------


def make_from_leaf(case):
    """The tags of a Leaf back stand for a make when the file names none."""
    if case.block != IFD0 or case.tag != MAKE or case.stored != Entry(MAKE, ASCII, 0, b"Leaf\0"):
        return False
    return any(o.left_out == "special-tag-not-stored"
               for tag in LEAF_TAGS for o in case.photograph.of_key(IFD0, tag))


# --- Values that the store has and exiv2 refused --------------------------------------------------


def later_segment_wins(case, deciding):
    """exiv2 reads the first EXIF segment of a file, the store reads all of them."""
    return deciding.directory.segment.number > 0


def directory_refused_by_exiv2(case, deciding):
    """exiv2 reads no directory of more than 256 entries."""
    length = deciding.directory.length
    return any((group, length) in case.reading.refused_directories for group in _groups(case))


def entry_refused_by_exiv2(case, deciding):
    """exiv2 skips an entry whose value would be larger than 256 MB."""
    refused = any((group, case.tag) in case.reading.refused_entries for group in _groups(case))
    return refused and deciding.size() > 0x10000000


def value_past_segment(case, deciding):
    """exiv2 drops a value that begins inside the segment and ends behind it."""
    cut = any((group, case.tag) in case.reading.cut_entries for group in _groups(case))
    return cut and deciding.position + deciding.size() > deciding.directory.segment.end


def entry_past_segment(case, deciding):
    """exiv2 reads no entry of a directory that lies behind the segment's end."""
    lost = [case.reading.cut_directories[group] for group in _groups(case)
            if group in case.reading.cut_directories]
    return bool(lost) and deciding.number >= min(lost)


def value_at_offset_0(case, deciding):
    """exiv2 takes no value that begins with the TIFF header."""
    cut = any((group, case.tag) in case.reading.cut_entries for group in _groups(case))
    return cut and not deciding.inline and deciding.position == deciding.directory.segment.base


def pointer_type_not_checked(case, deciding):
    """exiv2 follows only pointers of the types LONG and IFD, the store follows any."""
    directory = deciding.directory
    if directory.interop or directory.pointer_type in (None, LONG, IFD):
        return False
    return ("Image", POINTER_TO[directory.block]) in case.reading.refused_pointers


def directory_read_twice(case, deciding):
    """exiv2 reads a directory once, the store also as IFD1 what it has read as another one."""
    refused = any(again == "Thumbnail" for again, _ in case.reading.refused_second_readings)
    return case.block == IFD1 and refused and any(
        o.directory.position == deciding.directory.position
        for o in case.photograph.occurrences if o.directory.block != IFD1)


REFUSALS = (later_segment_wins, directory_refused_by_exiv2, entry_refused_by_exiv2,
            value_past_segment, value_at_offset_0, entry_past_segment, pointer_type_not_checked,
            directory_read_twice)


def _groups(case):
    return GROUPS_OF_BLOCK[case.block]


def _explain_refused_by_peer(case, deciding):
    """The store's value is the file's, and exiv2 says why it has another one or none."""
    for rule in REFUSALS:
        if rule(case, deciding):
            return [rule.__name__.replace("_", "-")]
    return None
