"""Reading photographs: how many floors Open costs, and how many Opens other readers cost."""

import pathlib
import statistics

import rounds
import table

FLOOR = "floor"
OPEN = "Open"


def mean_ratio(files, operation, base):
    """The mean of the files' own ratios, so that no file counts more than another."""
    return statistics.mean(rounds.ratio(times[operation], times[base]) for times in files)


def row(files, operation):
    times = [rounds.median(file[operation]) / 1000 for file in files]
    return [operation, statistics.median(times), table.percentile(times, 0.95),
            statistics.mean(times), mean_ratio(files, operation, FLOOR),
            mean_ratio(files, operation, OPEN)]


def render_each(by_file, folder):
    """A table of all files, those first whose Open costs most floors."""
    rows = [[str(pathlib.Path(name).relative_to(folder)), rounds.median(times[FLOOR]) / 1000,
             rounds.median(times[OPEN]) / 1000, rounds.ratio(times[OPEN], times[FLOOR])]
            for name, times in by_file.items()]
    rows.sort(key=lambda row: -row[-1])
    return table.render(["µs", FLOOR, OPEN, "/ floor"], rows)


def measure(program, folder, where="", each=False):
    """Returns a table and the measures in it. `where` ends the names of a build's measures; with
    `each` a table of the single files follows."""
    by_file = program.numbers("read", program.module, folder)
    files = list(by_file.values())
    operations = list(files[0])
    text = table.render(["µs a file", "median", "95 %", "mean", "/ floor", "/ Open"],
                        [row(files, operation) for operation in operations])
    measures = {}
    for operation in operations:
        if operation not in (FLOOR, OPEN):
            measures[f"{operation} / Open{where}"] = mean_ratio(files, operation, OPEN)
        if operation != FLOOR:
            measures[f"{operation} / floor{where}"] = mean_ratio(files, operation, FLOOR)
    title = f"Reading{where}: {len(files)} photographs; ratios are means of files"
    details = f"\n\n{render_each(by_file, folder)}" if each else ""
    return f"{title}\n{text}{details}", measures
