"""What the measures must be, and what they should be."""

from dataclasses import dataclass

import table

KIB = 1024


@dataclass(frozen=True)
class Goal:
    measure: str
    limit: float  # must be kept
    goal: float  # should be reached
    more_is_better: bool = False

    def holds(self, value, bound):
        return value >= bound if self.more_is_better else value <= bound

    def verdict(self, value):
        if self.holds(value, self.goal):
            return "ok, goal reached"
        return "ok" if self.holds(value, self.limit) else "MISSED"


GOALS = [
    Goal("Open / floor", 3.0, 2.0),
    Goal("libexiv2 / Open", 12, 20, more_is_better=True),
    Goal("libexif / Open", 4, 6, more_is_better=True),
    Goal("Open / floor, Wine", 3.0, 2.3),
    Goal("bytes read, 95 %", 128 * KIB, 64 * KIB + 8),
    Goal("system calls, 95 %", 16, 10),
    Goal("allocations, typical, median", 250, 120),
    Goal("XMP, MB/s of 64 KiB", 200, 600, more_is_better=True),
    Goal("growth, XMP", 1.5, 1.1),
    Goal("growth, XMP, nested", 1.5, 1.1),
    Goal("growth, IPTC", 1.5, 1.1),
    Goal("growth, directories", 1.5, 1.1),
    Goal("growth, segments", 1.5, 1.1),
    Goal("WriteMetadata, JPEG / copy", 1.5, 1.15),
    Goal("EmbedXmpFile, JPEG / copy", 1.5, 1.15),
    Goal("EmbedXmpFile, PNG / copy", 1.5, 1.15),
    Goal("WriteMetadata, JPEG of 8 MiB / copy", 1.5, 1.15),
    Goal("EmbedXmpFile, JPEG of 8 MiB / copy", 1.5, 1.15),
    Goal("EmbedXmpFile, PNG of 8 MiB / copy", 1.5, 1.15),
    Goal("show --json, files a second", 5_000, 15_000, more_is_better=True),
    Goal("bytes of the stripped DLL", 450 * KIB, 320 * KIB),
]


def render(measures):
    """The table of what was measured, of the goals for it."""
    rows = [[goal.measure, measures[goal.measure], goal.limit, goal.goal,
             goal.verdict(measures[goal.measure])]
            for goal in GOALS if goal.measure in measures]
    return "Goals\n" + table.render(["", "measured", "limit", "goal", ""], rows)


def missed(measures):
    """The names of the measures beyond their limits."""
    return [goal.measure for goal in GOALS
            if goal.measure in measures and not goal.holds(measures[goal.measure], goal.limit)]
