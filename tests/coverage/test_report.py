#!/usr/bin/env python3
"""The coverage report reads a trace, tells what is missing, and fails below its limits."""

import unittest

import report

TRACE = """SF:/root/src/base/A.cpp
DA:1,5
DA:2,0
DA:3,0
DA:5,0
DA:6,1
BRDA:1,0,0,4
BRDA:1,0,1,0
BRDA:2,0,0,-
BRDA:2,0,1,-
end_of_record
SF:/root/src/com/B.h
DA:9,2
BRDA:9,0,0,1
BRDA:9,0,1,1
end_of_record
SF:/root/tests/C.cpp
DA:1,0
end_of_record
"""


def sources():
    return report.read_trace(TRACE.splitlines(), "/root", "src")


class Report(unittest.TestCase):
    def test_counts_lines_and_branches(self):
        found = sources()
        self.assertEqual(sorted(found), ["src/base/A.cpp", "src/com/B.h"])
        self.assertEqual(found["src/base/A.cpp"].line_count(), (2, 5))
        self.assertEqual(found["src/base/A.cpp"].branch_count(), (1, 4))
        self.assertEqual(found["src/com/B.h"].line_count(), (1, 1))

    def test_names_what_is_missing(self):
        text = "\n".join(report.report(sources()))
        self.assertIn("src/base/A.cpp: lines not reached: 2-3, 5", text)
        self.assertIn("src/base/A.cpp:1: 1 of 2 branches not taken", text)
        self.assertNotIn("A.cpp:2:", text)
        self.assertNotIn("B.h", text)

    def test_table_has_a_row_for_each_folder_and_all(self):
        rows = [row.split() for row in report.report(sources())][1:4]
        self.assertEqual(rows[0], "src/base 2 of 5 40.00 % 1 of 4 25.00 %".split())
        self.assertEqual(rows[1], "src/com 1 of 1 100.00 % 2 of 2 100.00 %".split())
        self.assertEqual(rows[2], "all 3 of 6 50.00 % 3 of 6 50.00 %".split())

    def test_fails_below_a_limit_alone(self):
        self.assertEqual(report.failures(sources(), 50, 50), [])
        self.assertEqual(
            report.failures(sources(), 50.1, 50),
            ["50.00 % of lines are reached, less than 50.1 %"],
        )
        self.assertEqual(
            report.failures(sources(), 50, 51),
            ["50.00 % of branches are reached, less than 51 %"],
        )

    def test_an_empty_trace_fails(self):
        self.assertEqual(len(report.failures({}, 0, 0)), 1)


if __name__ == "__main__":
    unittest.main()
