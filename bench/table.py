"""Numbers and tables as text."""

import math


def number(value):
    """A number with three digits that count, or all before the point."""
    if value >= 100 or value == int(value):
        return f"{value:,.0f}"
    return f"{value:.2f}" if value < 10 else f"{value:.1f}"


def percentile(values, share):
    """The smallest of the values that at least the given share of them does not exceed."""
    return sorted(values)[math.ceil(share * len(values)) - 1]


def render(header, rows):
    """A table whose first column stands left and whose others, numbers or texts, stand right."""
    cells = [[cell if isinstance(cell, str) else number(cell) for cell in row] for row in rows]
    widths = [max(len(row[i]) for row in [header, *cells]) for i in range(len(header))]
    lines = []
    for row in [header, *cells]:
        first, *others = [cell.rjust(width) for cell, width in zip(row, widths)]
        lines.append("  ".join([row[0].ljust(len(first)), *others]).rstrip())
    return "\n".join("  " + line for line in lines)
