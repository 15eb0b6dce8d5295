"""Writing into copies of photographs, held against plain copies."""

import collections
import statistics
import tempfile

import rounds
import table

COPY = "copy"


def measure(program, folder):
    """Returns a table and the measures in it."""
    with tempfile.TemporaryDirectory() as outputs:
        files = program.numbers("write", program.module, folder, outputs)
    by_operation = collections.defaultdict(list)
    for times in files.values():
        for operation in times.keys() - {COPY}:
            by_operation[operation].append((times[operation], times[COPY]))
    rows = []
    measures = {}
    for operation, pairs in sorted(by_operation.items()):
        ratio = statistics.mean(rounds.ratio(times, copies) for times, copies in pairs)
        medians = [statistics.median(map(rounds.median, column)) / 1000 for column in zip(*pairs)]
        rows.append([operation, len(pairs), *medians, ratio])
        measures[f"{operation} / copy"] = ratio
    text = table.render(["median µs a file", "files", "write", "copy", "write / copy"], rows)
    title = "Writing, against a copy in blocks of 64 KiB; ratios are means of files"
    return f"{title}\n{text}", measures
