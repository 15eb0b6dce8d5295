"""How many files a second the host tool prints as JSON."""

import itertools
import os
import pathlib
import shutil
import statistics
import subprocess
import tempfile

FILES = 10_000
RUNS = 3


def fill(folder, sources):
    """Fills a folder with copies of the files, linked where there are more than one."""
    originals = []
    for i, source in zip(range(FILES), itertools.cycle(sources)):
        path = folder / f"{i:05}{source.suffix}"
        if i < len(sources):
            shutil.copyfile(source, path)
            originals.append(path)
        else:
            os.link(originals[i % len(originals)], path)


def processor_seconds(command):
    """What a program used of one core; other programs take no part in it."""
    before = os.times()
    subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    after = os.times()
    return (after.children_user - before.children_user +
            after.children_system - before.children_system)


def measure(tool, files):
    """Returns a text and the measure in it."""
    with tempfile.TemporaryDirectory() as folder:
        fill(pathlib.Path(folder), [pathlib.Path(file) for file in files])
        seconds = [processor_seconds([tool, "show", "--json", folder]) for _ in range(RUNS)]
    speed = FILES / statistics.median(seconds)
    text = f"lumidex show --json over {FILES:,} files: {speed:,.0f} files a processor second"
    return text, {"show --json, files a second": speed}
