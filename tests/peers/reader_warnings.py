"""Warnings of the readers that a result earns although it is what it has to be.

Every other warning that the source did not have is a finding.
"""

import marker_segments
import write_layout

MULTI_SEGMENT = "[minor] File contains multi-segment EXIF"
BEHIND_IMAGE_DATA = ("[minor] Text/EXIF chunk(s) found after PNG IDAT (may be ignored by some "
                     "readers)")

TIFF_HEADERS = (b"II*\0", b"MM\0*")


def old_segment_without_header(source):
    """exiftool takes an EXIF segment without a TIFF header for the next part of the one before.

    The old segment stands behind the new one unchanged, without a header too.
    """
    segment = marker_segments.first_exif(source)
    return (segment is not None and segment.body.startswith(write_layout.EXIF_HEAD)
            and segment.body[6:10] not in TIFF_HEADERS)


def packet_behind_image_data(source):
    """The packet goes in front of IEND, which is behind the image data."""
    kinds = [kind for _, kind, _ in write_layout.png_chunks(source)]
    return source.startswith(write_layout.PNG_SIGNATURE) and b"IDAT" in kinds


RULES = {MULTI_SEGMENT: old_segment_without_header, BEHIND_IMAGE_DATA: packet_behind_image_data}


def explain(warning, source):
    """The name of the rule that explains a warning, None when none does."""
    rule = RULES.get(warning)
    return rule.__name__.replace("_", "-") if rule and rule(source) else None


def new_warnings(before, after, source, counts):
    """What is said of the result and was not said of the source; the explained is counted."""
    findings = []
    for warning in after:
        if warning in before:
            continue
        name = explain(warning, source)
        if name is None:
            findings.append(warning)
        else:
            counts[f"warnings explained: {name}"] += 1
    return findings
