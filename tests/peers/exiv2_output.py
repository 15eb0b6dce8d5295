"""Runs the exiv2 program over a file and reads what it prints."""

import re
import subprocess
import tempfile
from dataclasses import dataclass, field

from entries import (ASCII, BYTE, DOUBLE, EXIF, FLOAT, GPS, IFD, IFD0, IFD1, LONG, RATIONAL, SBYTE,
                     SHORT, SLONG, SRATIONAL, SSHORT, UNDEFINED, Entry, to_little_endian)

# Tag number, group, key, type, count and size of every entry, unknown ones included, with its
# bytes, however many.
COMMAND = ["exiv2", "-u", "-b", "-PExgkycsh"]

BLOCK_OF_GROUP = {"Image": IFD0, "Photo": EXIF, "GPSInfo": GPS, "Thumbnail": IFD1, "Iop": EXIF}
TYPES = {"Byte": BYTE, "Ascii": ASCII, "Short": SHORT, "Long": LONG, "Rational": RATIONAL,
         "SByte": SBYTE, "Undefined": UNDEFINED, "SShort": SSHORT, "SLong": SLONG,
         "SRational": SRATIONAL, "Float": FLOAT, "Double": DOUBLE, "Ifd": IFD}

ENTRY_LINE = re.compile(r"0x([0-9a-f]{4}) (\S+) +(\S+) +(\S+) +(\d+) +(\d+)$")
BYTES_LINE = re.compile(r"  [0-9a-f]{4,}  ((?:[0-9a-f]{2} ){1,16})")
REFUSED_DIRECTORY = re.compile(r"Directory (\w+) with (\d+) entries considered invalid; not read")
REFUSED_ENTRY = re.compile(r"Directory (\w+), entry 0x([0-9a-f]{4}) has invalid size")
CUT_ENTRY = re.compile(r"(?:Offset of|Upper boundary of data for) directory (\w+), entry "
                       r"0x([0-9a-f]{4}) is out of bounds")
REFUSED_POINTER = re.compile(r"Directory (\w+), entry 0x([0-9a-f]{4}) doesn't look like a sub-IFD")
REFUSED_SECOND_READING = re.compile(r"(\w+) pointer references previously read (\w+) directory; "
                                    r"ignored")
CUT_DIRECTORY = re.compile(r"Directory (\w+): IFD entry (\d+) lies outside of the data buffer")


@dataclass(frozen=True)
class PeerEntry:
    group: str
    entry: Entry  # of a type without a name, 0


@dataclass
class PeerReading:
    """What exiv2 made of a file: its entries in order, and what it says to have refused."""

    entries: dict = field(default_factory=dict)  # (block, tag) to a list of PeerEntry
    refused_directories: set = field(default_factory=set)  # (group, entries)
    refused_entries: set = field(default_factory=set)  # (group, tag)
    cut_entries: set = field(default_factory=set)  # (group, tag): kept without a value
    cut_directories: dict = field(default_factory=dict)  # group to the first lost entry's number
    refused_pointers: set = field(default_factory=set)  # (group, tag)
    refused_second_readings: set = field(default_factory=set)  # (group, group read before)


def run(path):
    """The program's output, its messages, and whether it could read the file."""
    done = subprocess.run(COMMAND + [str(path)], capture_output=True, timeout=120, check=False)
    text = done.stdout.decode("latin-1")
    return text, done.stderr.decode("latin-1"), done.returncode == 0


def run_cut_down(photograph):
    """The same for a file that has nothing but the photograph's first EXIF segment."""
    with tempfile.NamedTemporaryFile(suffix=".jpg") as file:
        file.write(b"\xff\xd8" + photograph.exif_segment_bytes() + b"\xff\xd9")
        file.flush()
        return run(file.name)


def parse(text, messages, order):
    """Reads the output of `run` for a file whose EXIF block has the given byte order."""
    reading = PeerReading()
    for group, tag, entry_type, count, data in _entries(text):
        block = BLOCK_OF_GROUP.get(group)
        if block is None:
            continue
        entry = Entry(tag, entry_type, count, to_little_endian(data, entry_type, order))
        reading.entries.setdefault((block, tag), []).append(PeerEntry(group, entry))
    reading.refused_directories = {(g, int(n)) for g, n in REFUSED_DIRECTORY.findall(messages)}
    reading.refused_entries = {(g, int(t, 16)) for g, t in REFUSED_ENTRY.findall(messages)}
    reading.cut_entries = {(g, int(t, 16)) for g, t in CUT_ENTRY.findall(messages)}
    reading.refused_pointers = {(g, int(t, 16)) for g, t in REFUSED_POINTER.findall(messages)}
    reading.refused_second_readings = set(REFUSED_SECOND_READING.findall(messages))
    reading.cut_directories = {g: int(n) for g, n in CUT_DIRECTORY.findall(messages)}
    return reading


def _entries(text):
    """Group, tag, type, count and bytes of every entry; a broken output is an error."""
    current = None
    for line in text.split("\n"):
        head = ENTRY_LINE.match(line)
        if head:
            if current:
                yield _finished(current)
            tag, group, _, type_name, count, size = head.groups()
            current = (group, int(tag, 16), TYPES.get(type_name, 0), int(count), int(size), [])
            continue
        row = BYTES_LINE.match(line)
        if row and current:
            current[5].append(bytes.fromhex(row.group(1)))
        elif line.strip():
            raise ValueError(f"exiv2 printed a line that cannot be read: {line!r}")
    if current:
        yield _finished(current)


def _finished(current):
    group, tag, entry_type, count, size, rows = current
    data = b"".join(rows)
    if len(data) != size:
        raise ValueError(f"exiv2 printed {len(data)} of {size} bytes of tag {tag:#06x}")
    return group, tag, entry_type, count, data
