"""What the bytes of a written file have to be, apart from the new EXIF block's own content.

Every function returns the descriptions of what is wrong.
"""

import struct
import zlib

import marker_segments
from marker_segments import APP1, XMP_NAMESPACE

SOI = b"\xff\xd8"
EXIF_HEAD = b"Exif\0\0"
TIFF_POSITION = len(SOI) + 4 + len(EXIF_HEAD)  # of the new block in a written file
LITTLE_ENDIAN_HEADER = b"II*\0\x08\0\0\0"

PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"
PNG_XMP_HEAD = b"XML:com.adobe.xmp\0\0\0\0\0"


def carried_over(source):
    """Where the part of the source that a write copies begins: its EXIF segment, or behind SOI."""
    segment = marker_segments.first_exif(source)
    return segment.position if segment else len(SOI)


def new_segment_end(written):
    """The end of the new EXIF segment, None when a written file does not begin with one."""
    segment = next(marker_segments.marker_segments(written), None)
    if segment is None or segment.marker != APP1 or not segment.body.startswith(EXIF_HEAD):
        return None
    return segment.end


def check_write(source, written):
    """SOI, the new EXIF segment, then the source from its old EXIF segment on, byte for byte."""
    end = new_segment_end(written)
    if written[:2] != SOI or end is None:
        return [f"begins with {written[:12].hex()}, not with SOI and an EXIF segment"]
    findings = []
    header = written[TIFF_POSITION:TIFF_POSITION + 8]
    if header != LITTLE_ENDIAN_HEADER:
        findings.append(f"the new block begins with {header.hex()}")
    if written[end:] != source[carried_over(source):]:
        findings.append(f"the {len(written) - end} bytes behind the new segment are not those of "
                        f"the source from {carried_over(source)} on")
    return findings


def check_embedded_jpeg(source, packet, embedded):
    body = XMP_NAMESPACE + b"\0" + packet
    segment = b"\xff\xe1" + struct.pack(">H", len(body) + 2) + body
    return _check_inserted(source, segment, marker_segments.xmp_insertion_position(source), embedded)


def check_embedded_png(source, packet, embedded):
    return _check_inserted(source, xmp_chunk(packet), end_chunk_position(source), embedded)


def xmp_chunk(packet):
    return png_chunk(b"iTXt", PNG_XMP_HEAD + packet)


def png_chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png_chunks(data):
    """Position, type and data of every chunk."""
    position = len(PNG_SIGNATURE)
    while position + 8 <= len(data):
        length, kind = struct.unpack_from(">I4s", data, position)
        yield position, kind, data[position + 8:position + 8 + length]
        position += 12 + length


def end_chunk_position(data):
    """Where IEND stands; without one, where the last chunk says that it ends."""
    position = len(PNG_SIGNATURE)
    for start, kind, content in png_chunks(data):
        if kind == b"IEND":
            return start
        position = start + 12 + len(content)
    return position


def without_panorama_chunks(data):
    """The file without the chunks that the module takes for an XMP packet."""
    for position, kind, content in reversed(list(png_chunks(data))):
        if (kind == b"iTXt" and content.startswith(PNG_XMP_HEAD)
                and b"equirectangular" in content):
            data = data[:position] + data[position + 12 + len(content):]
    return data


def _check_inserted(source, piece, position, result):
    expected = source[:position] + piece + source[position:]
    if result == expected:
        return []
    where = next((i for i, pair in enumerate(zip(expected, result)) if pair[0] != pair[1]),
                 min(len(expected), len(result)))
    return [f"has {len(result)} bytes and differs at {where} from the {len(expected)} bytes of the "
            f"source with the packet at {position}"]
