"""Reading inputs of three sizes: the time of a byte must not grow with the size."""

import rounds
import table


def measure(program):
    """Returns a table and the measures in it."""
    rows = []
    measures = {}
    for reader, times in program.numbers("growth").items():
        sizes = sorted(times, key=int)
        per_byte = [rounds.median(times[size]) / int(size) for size in sizes]
        small, large = sizes[0], sizes[-1]
        growth = rounds.ratio(times[large], times[small]) * int(small) / int(large)
        rows.append([reader, *(1000 / time for time in per_byte), growth])
        measures[f"growth, {reader}"] = growth
        measures[f"{reader}, MB/s of 64 KiB"] = 1000 / per_byte[0]
    text = table.render(["MB a processor second", "64 KiB", "1 MiB", "16 MiB", "growth"], rows)
    return f"Growth of the time of a byte from 64 KiB to 16 MiB\n{text}", measures
