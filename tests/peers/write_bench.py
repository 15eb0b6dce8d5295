"""Runs the host tool on a copy of a photograph and holds its answers against what they must be."""

import collections
import pathlib
import subprocess
from dataclasses import dataclass

LABEL = "Read by others"
PACKET = (
    '<?xpacket begin="\ufeff" id="W5M0MpCehiHzreSzNTczkc9d"?>\n'
    '<x:xmpmeta xmlns:x="adobe:ns:meta/">\n'
    ' <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">\n'
    '  <rdf:Description rdf:about="" xmlns:xmp="http://ns.adobe.com/xap/1.0/"\n'
    f'   xmp:Label="{LABEL}"/>\n'
    ' </rdf:RDF>\n'
    '</x:xmpmeta>\n'
    '<?xpacket end="r"?>').encode("utf-8")


@dataclass
class Bench:
    """The tool, a folder for one photograph's files, and what is counted."""

    tool: str
    folder: pathlib.Path
    thumbnail: bytes
    counts: collections.Counter

    def path(self, name):
        return self.folder / name

    def put(self, name, data):
        self.path(name).write_bytes(data)
        return self.path(name)

    def run(self, *arguments):
        """The tool's exit code, its message and its output."""
        command = [self.tool, *(str(argument) for argument in arguments)]
        done = subprocess.run(command, capture_output=True, timeout=120, check=False)
        return done.returncode, done.stderr.decode("utf-8", "replace").strip(), done.stdout


@dataclass
class Source:
    """A file that the tool reads and must not change."""

    bench: Bench
    path: pathlib.Path
    data: bytes

    def expect(self, name, arguments):
        """Runs the tool to write the file `name`: its bytes, None without it, and what is wrong."""
        code, message, _ = self.bench.run(*arguments)
        findings = self.unchanged(arguments[0])
        if code != 0 or message:
            return None, findings + [f"{arguments[0]} ends with {code}: {message}"]
        return self.bench.path(name).read_bytes(), findings

    def expect_refusal(self, name, arguments, result):
        """The tool must refuse with the result named and leave no output."""
        code, message, _ = self.bench.run(*arguments)
        findings = self.unchanged(arguments[0])
        if code != 1 or result not in message:
            findings.append(f"{arguments[0]} ends with {code} instead of {result}: {message}")
        if self.bench.path(name).exists():
            findings.append(f"{arguments[0]} refused and left an output")
        return findings

    def unchanged(self, command):
        return [] if self.path.read_bytes() == self.data else [f"{command} changed its source"]


def make_thumbnail():
    """A JPEG of 160 by 120 pixels."""
    rows = bytes(value for y in range(120) for x in range(160) for value in (x, 2 * y, 255 - x))
    done = subprocess.run(["cjpeg", "-quality", "60"], input=b"P6 160 120 255\n" + rows,
                          capture_output=True, timeout=60, check=True)
    return done.stdout
