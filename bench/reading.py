"""Reading photographs: how often the floor, and how often Open, fits into what others take."""

import statistics

import table

FLOOR = "floor"
OPEN = "Open"


def percentile(values, share):
    ordered = sorted(values)
    return ordered[min(int(share * len(ordered)), len(ordered) - 1)]


def mean_ratio(files, operation, base):
    """The mean of the files' own ratios, so that no file counts more than another."""
    return statistics.mean(times[operation] / times[base] for times in files)


def row(files, operation):
    times = [file[operation] / 1000 for file in files]
    return [operation, statistics.median(times), percentile(times, 0.95), statistics.mean(times),
            mean_ratio(files, operation, FLOOR), mean_ratio(files, operation, OPEN)]


def measure(program, folder, where=""):
    """Returns a table and the measures in it. `where` ends the names of a build's measures."""
    files = list(program.numbers("read", program.module, folder).values())
    operations = list(files[0])
    text = table.render(["µs a file", "median", "95 %", "mean", "/ floor", "/ Open"],
                        [row(files, operation) for operation in operations])
    measures = {}
    for operation in operations:
        if operation not in (FLOOR, OPEN):
            measures[f"{operation} / Open{where}"] = mean_ratio(files, operation, OPEN)
        if operation != FLOOR:
            measures[f"{operation} / floor{where}"] = mean_ratio(files, operation, FLOOR)
    return f"Reading{where}: {len(files)} photographs; ratios are means of files\n{text}", measures
