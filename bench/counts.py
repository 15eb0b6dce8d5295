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
READ_CALL = re.compile(r"\bp?readv?(?:64)?\(.* = (\d+)$")
HEADERS = ["median", "95 %", "most"]
DUMP_TOTAL = re.compile(r"^(?:totals|summary): (\d+)", re.MULTILINE)


def allocations(program, folder):
    """Of each file, in their order, the calls of operator new."""
    return {file: values["allocations"][0]
            for file, values in program.numbers("opens", program.module, folder).items()}


def parse_calls(lines):
    """Of each Open in an output of strace the number of calls and of bytes read."""
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
            opens[-1][1] += int(read.group(1)) if read else 0
    return opens


def system_calls(program, folder):
    with tempfile.NamedTemporaryFile() as log:
        program.rows("opens", program.module, folder, prefix=["strace", "-f", "-o", log.name])
        return parse_calls(pathlib.Path(log.name).read_text(encoding="utf-8").splitlines())


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


def header_size(data):
    """The size of a file up to its first scan, before which all metadata stands."""
    position = 2
    while data[position:position + 1] == b"\xff" and position + 4 <= len(data):
        position += 2 + int.from_bytes(data[position + 2:position + 4], "big")
    return position


def has_all_in_start(data):
    """Whether all metadata of a file stands in its first 64 KiB; not when the file is cut off."""
    return header_size(data) <= min(START, len(data))


def entries(tool, folder):
    """Of each file by name the number of entries in the store, and whether some are of XMP."""
    command = [tool, "show", "--json", "--store", str(folder)]
    done = subprocess.run(command, capture_output=True, check=False)
    counted = {}
    for line in done.stdout.decode("utf-8").splitlines():
        photo = json.loads(line)
        blocks = photo["store"]["blocks"]
        counted[photo["file"]] = (sum(len(block) for block in blocks.values()),
                                  bool(blocks["9"] or blocks["10"]))
    return counted


def is_typical(count, has_xmp):
    """Whether a file has about as much as a camera writes and editors have not added to it."""
    return 45 <= count <= 75 and not has_xmp


def row(name, values):
    return [name, len(values), statistics.median(values), table.percentile(values, 0.95),
            max(values)]


def measure(program, tool, folder):
    """Returns a table and the measures in it."""
    by_file = allocations(program, folder)
    calls, read = zip(*system_calls(program, folder))
    executed = instructions(program, folder)
    in_start = [has_all_in_start(pathlib.Path(file).read_bytes()) for file in by_file]
    counted = entries(tool, folder)
    typical = [is_typical(*counted[file]) for file in by_file]

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
    for name, _, *values in rows:
        for header, value in zip(HEADERS, values):
            measures[f"{name}, {header}"] = value
    text = table.render(["of one Open", "files", *HEADERS], rows)
    title = ("Counts; calls and bytes of files with all metadata in their first 64 KiB; typical: "
             "45 to 75 entries, no XMP")
    return f"{title}\n{text}", measures
