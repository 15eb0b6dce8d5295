"""What one Open asks of the system and of the processor, counted by programs that watch it."""

import json
import pathlib
import re
import statistics
import subprocess
import tempfile

import table

START = 64 * 1024
OPEN_METHOD = "CLumidex::Open(char16_t const*)"
MARKS = re.compile(r'openat\(\w+, "/lumidex-bench/(before|behind)"')
READ_CALL = re.compile(r"p?readv?(64)?\(.* = (\d+)$")
DUMP_TOTAL = re.compile(r"^(?:totals|summary): (\d+)", re.MULTILINE)


def allocations(program, folder):
    """Of each file, in their order, the calls of operator new."""
    return {file: values["allocations"]
            for file, values in program.numbers("opens", program.module, folder).items()}


def system_calls(program, folder):
    """Of each Open the number of calls and of bytes read."""
    with tempfile.NamedTemporaryFile() as log:
        program.rows("opens", program.module, folder, prefix=["strace", "-f", "-o", log.name])
        lines = pathlib.Path(log.name).read_text(encoding="utf-8").splitlines()
    opens = []
    inside = False
    for line in lines:
        mark = MARKS.search(line)
        if mark:
            inside = mark.group(1) == "before"
            if inside:
                opens.append([0, 0])
        elif inside:
            read = READ_CALL.search(line)
            opens[-1][0] += 1
            opens[-1][1] += int(read.group(2)) if read else 0
    return opens


def instructions(program, folder):
    """Of each Open the number of instructions outside the system."""
    with tempfile.TemporaryDirectory() as dumps:
        prefix = ["valgrind", "--quiet", "--tool=callgrind", "--collect-atstart=no",
                  f"--toggle-collect={OPEN_METHOD}", f"--dump-after={OPEN_METHOD}",
                  f"--callgrind-out-file={dumps}/dump"]
        count = len(program.rows("opens", program.module, folder, prefix=prefix))
        paths = sorted(pathlib.Path(dumps).glob("dump.*"), key=lambda path: int(path.suffix[1:]))
        totals = [int(DUMP_TOTAL.search(path.read_text(encoding="utf-8")).group(1))
                  for path in paths]
    if len(totals) < count or not all(totals[-count:]):
        raise RuntimeError(f"callgrind does not find {OPEN_METHOD}")
    return totals[-count:]


def header_size(path):
    """The size of the file up to its first scan, before which all metadata stands."""
    data = path.read_bytes()
    position = 2
    while data[position:position + 1] == b"\xff" and position + 4 <= len(data):
        position += 2 + int.from_bytes(data[position + 2:position + 4], "big")
    return position


def entries(tool, files):
    """Of each file the number of entries in the store, and whether some of them are of XMP."""
    command = [tool, "show", "--json", "--store", *files]
    done = subprocess.run(command, stdout=subprocess.PIPE, check=False)
    stores = [json.loads(line)["store"] for line in done.stdout.decode("utf-8").splitlines()]
    return [(sum(len(block) for block in store["blocks"].values()),
             bool(store["blocks"]["9"] or store["blocks"]["10"])) for store in stores]


def is_typical(count, has_xmp):
    """Whether a file has about as much as a camera writes and editors have not added to it."""
    return 45 <= count <= 75 and not has_xmp


def row(name, values):
    return [name, len(values), statistics.median(values), statistics.mean(values), max(values)]


def measure(program, tool, folder):
    """Returns a table and the measures in it."""
    by_file = allocations(program, folder)
    calls, read = zip(*system_calls(program, folder))
    executed = instructions(program, folder)
    in_start = [header_size(pathlib.Path(file)) <= START for file in by_file]
    typical = [is_typical(*counted) for counted in entries(tool, by_file)]

    columns = [("system calls", calls, in_start), ("bytes read", read, in_start),
               ("allocations", list(by_file.values()), None),
               ("allocations, typical", list(by_file.values()), typical),
               ("instructions", executed, None)]
    rows = []
    for name, values, chosen in columns:
        values = [value for i, value in enumerate(values) if chosen is None or chosen[i]]
        if values:
            rows.append(row(name, values))
    measures = {}
    for name, _, median, mean, most in rows:
        measures[f"{name}, median"] = median
        measures[f"{name}, mean"] = mean
        measures[f"{name}, most"] = most
    text = table.render(["of one Open", "files", "median", "mean", "most"], rows)
    return ("Counts; calls and bytes of files with all metadata in their first 64 KiB; typical: 45 to 75 "
            f"entries, no XMP\n{text}"), measures
