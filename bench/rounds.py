"""What the rounds of a run say: the times of an operation, one of each round."""

import statistics


def median(times):
    return statistics.median(times)


def ratio(times, base):
    """How much more one operation takes than another. Both are compared round by round: the machine
    may be half as fast in one round as in the next, for all operations alike."""
    return statistics.median(time / other for time, other in zip(times, base, strict=True))
