"""Embeds a packet in a PNG file, to another file and in place, and has the result read."""

import subprocess

import exiftool_output
import reader_warnings
import write_layout
from write_bench import LABEL, PACKET, Source

EMBEDDED = "embedded.png"


def check(bench, data):
    if _complaints(bench.put("source.png", data)):
        bench.counts["PNG files that pngcheck complains about, left out"] += 1
        return []
    plain = write_layout.without_panorama_chunks(data)
    if plain == data:
        return _check_embedding(bench, data)
    return _check_refusal(bench, data) + _check_embedding(bench, plain)


def _arguments(bench, source):
    return ["embed", source.path, bench.put("packet.xmp", PACKET), bench.path(EMBEDDED)]


def _check_refusal(bench, data):
    bench.counts["packets refused beside another one"] += 1
    source = Source(bench, bench.put("source.png", data), data)
    return source.expect_refusal(EMBEDDED, _arguments(bench, source), "LMD_E_XMP_FOUND")


def _check_embedding(bench, data):
    bench.counts["packets embedded in PNG files"] += 1
    source = Source(bench, bench.put("source.png", data), data)
    embedded, findings = source.expect(EMBEDDED, _arguments(bench, source))
    if embedded is None:
        return findings
    findings += write_layout.check_embedded_png(data, PACKET, embedded)
    findings += [f"pngcheck: {line}" for line in _complaints(bench.path(EMBEDDED))]
    return findings + _check_in_place(bench, data, embedded) + _check_readers(source)


def _complaints(path):
    done = subprocess.run(["pngcheck", "-q", str(path)], capture_output=True, timeout=120,
                          check=False)
    lines = (done.stdout + done.stderr).decode("utf-8", "replace").splitlines()
    return lines or ([f"ends with {done.returncode}"] if done.returncode else [])


def _check_in_place(bench, data, embedded):
    """Onto itself, a file becomes what another one becomes."""
    path = bench.put("in-place.png", data)
    code, message, _ = bench.run("embed", path, bench.path("packet.xmp"), path)
    if code != 0:
        return [f"embed in place ends with {code}: {message}"]
    return [] if path.read_bytes() == embedded else ["embed in place writes other bytes"]


def _check_readers(source):
    before, after = exiftool_output.read([source.path, source.bench.path(EMBEDDED)])
    labels = after.values.get(("XMP-xmp", "Label"), [])
    findings = [] if LABEL in labels else ["exiftool does not read the packet"]
    return findings + reader_warnings.new_warnings(before.warnings, after.warnings, source.data,
                                                   source.bench.counts)
