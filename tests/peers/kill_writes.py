#!/usr/bin/env python3
"""Kills the host tool at random moments while it writes to another file.

A large JPEG and a large PNG are made; `write` and `embed` are started on them in turn and killed at
moments drawn from a seed. Only a process that the signal ended counts. After each, the source, the
packet and the thumbnail must hold every byte that they held before. Anything else is printed and
makes the result 1.
"""

import argparse
import collections
import pathlib
import random
import signal
import struct
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass

import write_layout
from write_bench import PACKET

MIB = 1 << 20
TRIES_FOR_A_KILL = 20
OVERSHOOT = 1.2  # moments go a little beyond the time that an undisturbed run takes

OLD_TIFF = b"II*\0\x08\0\0\0" + struct.pack("<HHHIHHI", 1, 0x0112, 3, 1, 6, 0, 0)
START_OF_SCAN = b"\xff\xda\0\x0c\x03\x01\0\x02\x11\x03\x11\0\x3f\0"


@dataclass(frozen=True)
class Job:
    """A command that reads some files and writes another one."""

    name: str
    command: tuple
    sources: tuple
    output: pathlib.Path


@dataclass(frozen=True)
class Attempt:
    killed: bool
    written: int  # bytes of the output, 0 without one


def make_jpeg(noise):
    """The segments of a JPEG with an EXIF segment, and noise for its scan."""
    body = write_layout.EXIF_HEAD + OLD_TIFF
    segment = b"\xff\xe1" + struct.pack(">H", len(body) + 2) + body
    scan = START_OF_SCAN + noise.replace(b"\xff", b"\xfe")
    return write_layout.SOI + segment + scan + b"\xff\xd9"


def make_png(noise):
    """The chunks of a PNG, with noise for its image data."""
    header = struct.pack(">IIBBBBB", 4096, 4096, 8, 0, 0, 0, 0)
    return (write_layout.PNG_SIGNATURE + write_layout.png_chunk(b"IHDR", header)
            + write_layout.png_chunk(b"IDAT", noise) + write_layout.png_chunk(b"IEND", b""))


def make_jobs(tool, folder, noise):
    def put(name, data):
        (folder / name).write_bytes(data)
        return folder / name

    jpeg, png = put("source.jpg", make_jpeg(noise)), put("source.png", make_png(noise))
    packet, thumbnail = put("packet.xmp", PACKET), put("thumbnail.jpg", make_jpeg(b""))
    settings = ("--set", "ImageDescription=Harbour", "--set", "ExposureTime=1/250",
                "--set", "GPSPosition=-33.8568,151.2153")
    write = (tool, "write", jpeg, folder / "written.jpg", "--overwrite", *settings,
             "--thumbnail", thumbnail)
    return [
        Job("write", write, (jpeg, thumbnail), folder / "written.jpg"),
        Job("embed in a JPEG", (tool, "embed", jpeg, packet, folder / "embedded.jpg"),
            (jpeg, packet), folder / "embedded.jpg"),
        Job("embed in a PNG", (tool, "embed", png, packet, folder / "embedded.png"),
            (png, packet), folder / "embedded.png"),
    ]


def undisturbed(job):
    """The seconds that a run takes, the middle of three, and the bytes that it writes."""
    seconds = []
    for _ in range(3):
        job.output.unlink(missing_ok=True)
        begin = time.monotonic()
        done = subprocess.run(job.command, capture_output=True, timeout=120, check=False)
        seconds.append(time.monotonic() - begin)
        if done.returncode != 0:
            raise ValueError(f"{job.name} ends with {done.returncode}: {done.stderr.decode()}")
    return sorted(seconds)[1], job.output.stat().st_size


def attempt(job, moment):
    """Starts the command and kills it after so many seconds, if it still runs."""
    job.output.unlink(missing_ok=True)
    with subprocess.Popen(job.command, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL) as process:
        time.sleep(moment)
        process.kill()
        code = process.wait(timeout=120)
    written = job.output.stat().st_size if job.output.exists() else 0
    return Attempt(code == -signal.SIGKILL, written)


def kill_once(job, longest, numbers):
    """Tries until the signal ends a run, each time before the moment that was too late."""
    for _ in range(TRIES_FOR_A_KILL):
        moment = numbers.uniform(0, longest)
        result = attempt(job, moment)
        if result.killed:
            return result
        longest = moment
    raise ValueError(f"{job.name} ends before it can be killed")


def changed(job, contents):
    """The files among the job's sources that are no longer what they were; they are put back."""
    paths = [path for path in job.sources
             if not path.exists() or path.read_bytes() != contents[path]]
    for path in paths:
        path.write_bytes(contents[path])
    return [path.name for path in paths]


def run(jobs, kills, numbers):
    """Prints every finding; returns their number and what was counted."""
    contents = {path: path.read_bytes() for job in jobs for path in job.sources}
    runs = [undisturbed(job) for job in jobs]
    counts = collections.Counter()
    findings = 0
    for number in range(kills):
        job = jobs[number % len(jobs)]
        seconds, size = runs[number % len(jobs)]
        result = kill_once(job, seconds * OVERSHOOT, numbers)
        counts[f"{job.name}: killed"] += 1
        counts[f"{job.name}: with a part of the output written"] += 0 < result.written < size
        for name in changed(job, contents):
            findings += 1
            print(f"kill {number}: {job.name} left {name} changed", flush=True)
    return findings, counts


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--tool", default="build/native/lumidex", help="the host tool")
    parser.add_argument("--kills", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--mib", type=int, default=32, help="size of the sources")
    arguments = parser.parse_args()

    numbers = random.Random(arguments.seed)
    with tempfile.TemporaryDirectory() as folder:
        noise = numbers.randbytes(arguments.mib * MIB)
        jobs = make_jobs(arguments.tool, pathlib.Path(folder), noise)
        findings, counts = run(jobs, arguments.kills, numbers)
    print(f"{arguments.kills} kills with seed {arguments.seed}")
    for name, count in sorted(counts.items()):
        print(f"{count:7} {name}")
    print(f"{findings:7} sources changed")
    return 1 if findings or not arguments.kills else 0


if __name__ == "__main__":
    sys.exit(main())
