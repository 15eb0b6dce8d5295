"""Runs the exiftool program over files and reads what it prints."""

import subprocess
from dataclasses import dataclass, field

# No settings of the user's; every duplicate, in file order, as group, tag name and plain value.
COMMAND = ["exiftool", "-config", "", "-a", "-G1", "-s", "-n", "-t"]
HEADING = "======== "
SUMMARY = "    "  # begins the lines behind the last file, which say how many were read


@dataclass
class ExiftoolReading:
    values: dict = field(default_factory=dict)  # (group, tag name) to every value, in file order
    warnings: list = field(default_factory=list)

    def first(self, group, name):
        return self.values.get((group, name), [None])[0]

    def thumbnail(self, data):
        """The first thumbnail of the file's bytes, None without one."""
        fields = [self.first("IFD1", name) for name in ("ThumbnailOffset", "ThumbnailLength")]
        if not all(field and field.isdecimal() for field in fields):
            return None
        start, length = map(int, fields)
        return data[start:start + length]


def read(paths):
    """The readings of several files, in the order given."""
    names = [str(path) for path in paths]
    if len(names) < 2:
        raise ValueError("exiftool prints no headings for a single file")
    done = subprocess.run(COMMAND + names, capture_output=True, timeout=300, check=False)
    readings = parse(done.stdout.decode("utf-8", "replace"))
    if list(readings) != names:
        raise ValueError(f"exiftool printed {list(readings)} for {names}")
    return list(readings.values())


def parse(text):
    """File name to reading."""
    readings = {}
    current = None
    for line in text.split("\n"):
        if not line or line.startswith(SUMMARY):
            continue
        if line.startswith(HEADING):
            current = readings.setdefault(line[len(HEADING):], ExiftoolReading())
            continue
        group, name, value = _columns(line, current)
        if group == "ExifTool" and name in ("Warning", "Error"):
            current.warnings.append(value)
        current.values.setdefault((group, name), []).append(value)
    return readings


def _columns(line, current):
    columns = line.split("\t", 2)
    if len(columns) != 3 or current is None:
        raise ValueError(f"exiftool printed a line that cannot be read: {line!r}")
    return columns
