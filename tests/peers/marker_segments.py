"""The marker segments of a JPEG file, as the module has to walk them and as a decoder does."""

from dataclasses import dataclass

APP0, APP1, APP14 = 0xE0, 0xE1, 0xEE
START_OF_SCAN, END_OF_IMAGE = 0xDA, 0xD9
WITHOUT_LENGTH = {0x01, *range(0xD0, 0xD9)}

XMP_NAMESPACE = b"http://ns.adobe.com/xap/1.0/"


@dataclass(frozen=True)
class Segment:
    marker: int
    position: int  # of the marker
    start: int  # of the body
    end: int
    body: bytes  # as far as the file has it


def marker_segments(data):
    """One segment after the other, up to the first byte that is not 0xFF.

    A fill byte counts as a marker, and the walk does not know where the scan begins.
    """
    position = 2
    while data[position:position + 1] == b"\xff" and position + 1 < len(data):
        segment = _segment_at(data, position)
        yield segment
        position = segment.end


def header_segments(data):
    """The segments in front of the image data as a decoder finds them, whatever lies between."""
    position = _next_marker(data, 2)
    while position is not None:
        if data[position + 1] in WITHOUT_LENGTH:
            position = _next_marker(data, position + 2)
            continue
        segment = _segment_at(data, position)
        if segment.marker in (START_OF_SCAN, END_OF_IMAGE):
            return
        yield segment
        position = _next_marker(data, segment.end)


def first_exif(data):
    """The segment at which a rewrite goes on with its source, None without one."""
    for segment in marker_segments(data):
        if segment.marker == APP1 and segment.body.startswith(b"Exif"):
            return segment
    return None


def has_xmp(data):
    return any(segment.marker == APP1 and segment.body.startswith(XMP_NAMESPACE)
               for segment in marker_segments(data))


def xmp_insertion_position(data):
    """Behind the last EXIF segment, or behind SOI. The file must hold no XMP segment."""
    position = 2
    for segment in marker_segments(data):
        if segment.marker == APP1 and segment.body.startswith(b"Exif"):
            position = segment.end
    return position


def _segment_at(data, position):
    field = data[position + 2:position + 4]
    length = int.from_bytes(field, "big") if len(field) == 2 else 0
    start, end = position + 4, position + 2 + length
    return Segment(data[position + 1], position, start, end, data[start:end])


def _next_marker(data, position):
    while True:
        position = data.find(b"\xff", position)
        if position < 0 or position + 1 >= len(data):
            return None
        if data[position + 1] not in (0x00, 0xFF):
            return position
        position += 1
