#!/usr/bin/env python3
"""What the benchmark makes of the numbers that it gets."""

import unittest

import counts
import goals
import reading
import rounds
import table
from goals import Goal

STRACE = """\
7 openat(AT_FDCWD, "a.jpg", O_RDONLY) = 3
7 openat(AT_FDCWD, "/lumidex-bench/before", O_RDONLY) = -1 ENOENT (No such file or directory)
7 openat(AT_FDCWD, "a.jpg", O_RDONLY) = 3
7 read(3, "\\377\\330\\377"..., 65536) = 900
7 pread64(3, "x", 8, 100) = 8
7 read(3, "", 8) = 0
7 close(3) = 0
7 openat(AT_FDCWD, "/lumidex-bench/behind", O_RDONLY) = -1 ENOENT (No such file or directory)
7 read(3, "x", 100) = 100
7 openat(AT_FDCWD, "/lumidex-bench/before", O_RDONLY) = -1 ENOENT (No such file or directory)
7 close(3) = 0
7 openat(AT_FDCWD, "/lumidex-bench/behind", O_RDONLY) = -1 ENOENT (No such file or directory)
""".splitlines()


def jpeg(*sizes, scan=b"\xff\xda\0\2data"):
    """A JPEG of segments whose payloads have the given sizes."""
    segments = [b"\xff\xe1" + (size + 2).to_bytes(2, "big") + bytes(size) for size in sizes]
    return b"\xff\xd8" + b"".join(segments) + scan


class Numbers(unittest.TestCase):
    def test_three_digits_count(self):
        self.assertEqual([table.number(value) for value in (1.234, 12.34, 123.4, 12345, 7)],
                         ["1.23", "12.3", "123", "12,345", "7"])

    def test_percentile_is_a_value_that_the_share_does_not_exceed(self):
        self.assertEqual(table.percentile(range(1, 101), 0.95), 95)
        self.assertEqual(table.percentile([3, 1, 2], 0.95), 3)
        self.assertEqual(table.percentile([5], 0.95), 5)

    def test_columns_are_aligned(self):
        self.assertEqual(table.render(["a", "b"], [["long", 1], ["x", 200]]),
                         "  a       b\n  long    1\n  x     200")


class Rounds(unittest.TestCase):
    def test_ratio_compares_round_by_round(self):
        self.assertEqual(rounds.ratio([20, 90, 40], [10, 30, 20]), 2)

    def test_ratio_needs_the_same_rounds_of_both(self):
        with self.assertRaises(ValueError):
            rounds.ratio([20, 90], [10])


class Reading(unittest.TestCase):
    def test_ratio_is_the_mean_of_the_files_own(self):
        files = [{"floor": [10], "Open": [20]}, {"floor": [1000], "Open": [4000]}]
        self.assertEqual(reading.mean_ratio(files, "Open", "floor"), 3)


class Counts(unittest.TestCase):
    def test_only_calls_between_the_marks_count(self):
        self.assertEqual(counts.parse_calls(STRACE), [[5, 908], [1, 0]])

    def test_header_ends_behind_the_start_of_scan(self):
        self.assertEqual(counts.header_size(jpeg(10, 20)), 2 + 14 + 24 + 4)

    def test_all_metadata_is_in_the_start_of_a_file(self):
        self.assertTrue(counts.has_all_in_start(jpeg(10)))
        self.assertTrue(counts.has_all_in_start(jpeg(65526)))
        self.assertFalse(counts.has_all_in_start(jpeg(65527)))

    def test_a_file_that_is_cut_off_has_not_all(self):
        self.assertFalse(counts.has_all_in_start(jpeg(10, scan=b"")[:-1]))


class Goals(unittest.TestCase):
    def test_verdict_of_a_measure_that_should_be_small(self):
        goal = Goal("time", 3, 2)
        self.assertEqual([goal.verdict(value) for value in (2, 2.1, 3, 3.1)],
                         ["ok, goal reached", "ok", "ok", "MISSED"])

    def test_verdict_of_a_measure_that_should_be_large(self):
        goal = Goal("speed", 10, 20, more_is_better=True)
        self.assertEqual([goal.verdict(value) for value in (20, 19, 10, 9)],
                         ["ok, goal reached", "ok", "ok", "MISSED"])

    def test_missed_are_the_measures_beyond_their_limits(self):
        self.assertEqual(goals.missed({"Open / floor": 3.1, "libexif / Open": 4}), ["Open / floor"])

    def test_limits_are_not_above_the_goals(self):
        for goal in goals.GOALS:
            self.assertTrue(goal.holds(goal.goal, goal.limit), goal.measure)


if __name__ == "__main__":
    unittest.main()
