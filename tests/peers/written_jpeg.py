"""Writes into a JPEG file and embeds a packet, then has the results read and decoded."""

import subprocess

import exiftool_output
import exiv2_output
import jpeg_decoding
import marker_segments
import reader_warnings
import write_layout
from entries import BLOCK_NAMES
from photograph import Photograph
from write_bench import LABEL, PACKET, Source
from written_values import ENTRIES, SETTINGS, first_entry, thumbnail_bytes

WRITTEN, EMBEDDED = "written.jpg", "embedded.jpg"


def check(bench, data):
    picture = jpeg_decoding.decode(data)
    if picture is None:
        bench.counts["JPEG files that djpeg does not decode, left out"] += 1
        return []
    bench.counts["JPEG files written"] += 1
    source = Source(bench, bench.put("source.jpg", data), data)
    written, findings = _write(source)
    if written is None:
        return findings
    results = {WRITTEN: written}
    embedded, more = _embed(bench, written)
    findings += more
    if embedded is not None:
        results[EMBEDDED] = embedded
    return findings + _check_readers(source, results) + _check_pixels(source, picture, results)


def _write(source):
    bench = source.bench
    arguments = ["write", source.path, bench.path(WRITTEN), "--overwrite",
                 "--thumbnail", bench.put("thumbnail.jpg", bench.thumbnail)]
    for name, value in SETTINGS:
        arguments += ["--set", f"{name}={value}"]
    written, findings = source.expect(WRITTEN, arguments)
    if written is not None:
        findings += write_layout.check_write(source.data, written)
    return written, findings


def _embed(bench, written):
    source = Source(bench, bench.path(WRITTEN), written)
    packet = bench.put("packet.xmp", PACKET)
    arguments = ["embed", source.path, packet, bench.path(EMBEDDED)]
    if marker_segments.has_xmp(written):
        bench.counts["packets refused beside another one"] += 1
        return None, source.expect_refusal(EMBEDDED, arguments, "LMD_E_XMP_FOUND")
    bench.counts["packets embedded in JPEG files"] += 1
    embedded, findings = source.expect(EMBEDDED, arguments)
    if embedded is not None:
        findings += write_layout.check_embedded_jpeg(written, PACKET, embedded)
        findings += _check_packet(bench)
    return embedded, findings


def _check_packet(bench):
    """The tool hands out the packet that was embedded."""
    code, message, packet = bench.run("xmp", bench.path(EMBEDDED))
    if code == 0 and packet == PACKET:
        return []
    return [f"xmp ends with {code} and {len(packet)} bytes instead of {len(PACKET)}: {message}"]


def _check_readers(source, results):
    """What both peers read, and what they say of the results and did not say of the source."""
    bench = source.bench
    paths = [bench.path(name) for name in results]
    exiftool_before, *exiftool_after = exiftool_output.read([source.path] + paths)
    exiv2_before = exiv2_output.run(source.path)
    findings = []
    for path, data, reading in zip(paths, results.values(), exiftool_after):
        exiv2_after = exiv2_output.run(path)
        found = _check_exiftool(bench, data, reading)
        found += _check_exiv2(bench, data, _exiv2_reading(bench, data, exiv2_before, exiv2_after))
        if path.name == EMBEDDED:
            found += _check_packet_readers(bench, reading, path, exiv2_after)
        said_before = exiftool_before.warnings + _messages(exiv2_before, source.path)
        said_after = reading.warnings + _messages(exiv2_after, path)
        found += reader_warnings.new_warnings(said_before, said_after, source.data, bench.counts)
        findings += [f"{path.name}: {finding}" for finding in found]
    return findings


def _messages(outcome, path):
    return outcome[1].replace(str(path), "FILE").splitlines()


def _check_exiftool(bench, data, reading):
    findings = []
    for row in ENTRIES:
        bench.counts["values read by exiftool"] += 1
        text = reading.first(row.exiftool_group(), row.exiftool_name)
        if not row.matches_exiftool(text):
            findings.append(f"exiftool reads {row.exiftool_group()} {row.exiftool_name} as {text!r}"
                            f" instead of {row.exiftool_value}")
    if reading.thumbnail(data) != bench.thumbnail:
        findings.append("the thumbnail is not where exiftool reads that it is")
    return findings


def _exiv2_reading(bench, data, before, after):
    """What exiv2 reads. A file that it refused before is cut down to its first EXIF segment."""
    text, messages, readable = after
    if not readable and not before[2]:
        bench.counts["results that exiv2 reads only cut down to their EXIF segment"] += 1
        text, messages, _ = exiv2_output.run_cut_down(Photograph(data))
    return exiv2_output.parse(text, messages, "little")


def _check_exiv2(bench, data, reading):
    findings = []
    for row in ENTRIES:
        bench.counts["values read by exiv2"] += 1
        entry = first_entry(reading, (row.block, row.tag))
        if entry is None or not row.matches_entry(entry):
            findings.append(f"exiv2 reads {BLOCK_NAMES[row.block]} {row.tag:#06x} as {entry} "
                            f"instead of type {row.type}, {row.value}")
    if thumbnail_bytes(reading, data, write_layout.TIFF_POSITION) != bench.thumbnail:
        findings.append("the thumbnail is not where exiv2 reads that it is")
    return findings


def _check_packet_readers(bench, reading, path, exiv2_outcome):
    findings = []
    if reading.first("XMP-xmp", "Label") != LABEL:
        findings.append("exiftool does not read the packet")
    if not exiv2_outcome[2]:
        return findings
    bench.counts["packets read by exiv2"] += 1
    done = subprocess.run(["exiv2", "-pX", str(path)], capture_output=True, timeout=120,
                          check=False)
    if done.stdout != PACKET:
        findings.append(f"exiv2 reads a packet of {len(done.stdout)} bytes")
    return findings


def _check_pixels(source, picture, results):
    """The same pixels, and the decoder says the same; or one of the two rules explains it."""
    left_out = source.data[2:write_layout.carried_over(source.data)]
    findings = []
    for name, data in results.items():
        if jpeg_decoding.decode(data) == picture:
            source.bench.counts["results with the source's pixels"] += 1
            continue
        rule = jpeg_decoding.explain_pixels(source.data, left_out, data[2:])
        if rule is None:
            findings.append(f"{name}: djpeg decodes it otherwise than the source")
        else:
            source.bench.counts[f"results with other pixels: {rule}"] += 1
    return findings
