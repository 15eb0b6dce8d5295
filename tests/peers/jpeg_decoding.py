"""Decodes JPEG files with djpeg and says which header segments decide on the pixels.

A rewrite does not carry over what stands between SOI and the first EXIF segment. Nearly always that
is an APP0 without influence on the pixels. Two rules name what may change them; both hold only when
the pixels are the source's again as soon as the segments left out are put back.
"""

import subprocess
from dataclasses import dataclass

from marker_segments import APP0, APP14, header_segments

DECODED_WITH_WARNINGS = 2

FRAMES = set(range(0xC0, 0xD0)) - {0xC4, 0xC8, 0xCC}
TABLES = {0xC4, 0xCC, 0xDB, 0xDD}  # Huffman, arithmetic coding, quantisation, restart interval

RGB_LETTERS = (0x52, 0x47, 0x42)


@dataclass(frozen=True)
class Picture:
    pixels: bytes
    messages: str


def decode(data):
    """What djpeg makes of a file's bytes, None when it makes no picture of them."""
    done = subprocess.run(["djpeg", "-pnm"], input=data, capture_output=True, timeout=300,
                          check=False)
    if done.returncode not in (0, DECODED_WITH_WARNINGS) or not done.stdout:
        return None
    return Picture(done.stdout, done.stderr.decode("utf-8", "replace"))


def decoded_colours(data):
    """The colour space that a decoder takes the components for, by libjpeg's defaults."""
    segments = list(header_segments(data))
    components = _component_ids(segments)
    adobe = _adobe_transform(segments)
    if len(components) == 3:
        return _three_colours(components, _is_jfif(segments), adobe)
    if len(components) == 4:
        return "CMYK" if adobe in (None, 0) else "YCCK"
    return f"{len(components)} components"


def explain_pixels(source, left_out, rest):
    """Why a rewrite of `source` may look different, None when nothing explains it.

    `left_out` are the bytes between SOI and the part of the source that is carried over, `rest` is
    all of the rewrite behind its SOI.
    """
    soi = source[:2]
    if decode(soi + left_out + rest) != decode(source):
        return None
    if any(s.marker in FRAMES | TABLES for s in header_segments(soi + left_out)):
        return "coding tables not carried over"
    if decoded_colours(soi + rest) != decoded_colours(source):
        return "colour marker not carried over"
    return None


def _component_ids(segments):
    for segment in segments:
        if segment.marker in FRAMES and len(segment.body) >= 6:
            return tuple(segment.body[6 + 3 * i] for i in range(segment.body[5])
                         if 6 + 3 * i < len(segment.body))
    return ()


def _is_jfif(segments):
    return any(s.marker == APP0 and s.body.startswith(b"JFIF\0") and len(s.body) >= 14
               for s in segments)


def _adobe_transform(segments):
    found = [s.body[11] for s in segments
             if s.marker == APP14 and s.body.startswith(b"Adobe") and len(s.body) >= 12]
    return found[-1] if found else None


def _three_colours(components, jfif, adobe):
    if jfif:
        return "YCbCr"
    if adobe is not None:
        return "RGB" if adobe == 0 else "YCbCr"
    return "RGB" if components == RGB_LETTERS else "YCbCr"
