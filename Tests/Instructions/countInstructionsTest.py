#!/usr/bin/env python3
"""Tests what countInstructions.py makes of callgrind's files."""

import unittest

import countInstructions

PROFILE = """# callgrind format
version: 1
desc: Trigger: Client Request: two words
positions: line
events: Ir

ob=(1) /bin/program
fl=(1) a.cpp
fn=(1) own()
10 100
+2 20
cob=(2) /lib/libc.so.6
cfn=(2) memcpy
calls=3 0
* 5000
* 7
calls=1 12
-1 900

ob=(2)
fl=(2) memcpy.S
fn=(2)
0 5000

ob=(1)
fn=(3) other()
4 1000

totals: 6127
"""


class CountsInTest(unittest.TestCase):
    def test_own_code_without_what_it_calls(self):
        self.assertEqual(countInstructions.counts_in(PROFILE, "/bin/program"), ("two words", 1127))
        self.assertEqual(countInstructions.counts_in(PROFILE, "/lib/libc.so.6"), ("two words", 5000))
        self.assertEqual(countInstructions.counts_in(PROFILE, "/bin/other"), ("two words", 0))

    def test_the_file_at_the_end_has_no_name(self):
        end = PROFILE.replace("Client Request: two words", "Program termination")
        self.assertIsNone(countInstructions.counts_in(end, "/bin/program")[0])


class CompareTest(unittest.TestCase):
    def good(self, known, counted):
        return countInstructions.compare(known, counted)[1]

    def test_margin(self):
        for count in (970, 1000, 1030):
            self.assertTrue(self.good({"a": 1000}, {"a": count}), count)
        for count in (969, 1031, 0, 5000):
            self.assertFalse(self.good({"a": 1000}, {"a": count}), count)

    def test_every_workload_is_on_file_and_run(self):
        self.assertFalse(self.good({}, {"a": 1}))
        self.assertFalse(self.good({"a": 1}, {}))
        self.assertFalse(self.good({"a": 1, "b": 1}, {"a": 1}))

    def test_table_names_what_is_off(self):
        table = countInstructions.compare({"a": 1000, "b": 1000}, {"a": 1001, "b": 1100})[0]
        self.assertIn("+0.10%\n", table)
        self.assertIn("+10.00%  more than before", table)


class UsableTest(unittest.TestCase):
    def test_other_compiler(self):
        with self.assertRaisesRegex(countInstructions.Unusable, "of GNU 12, and this is GNU 13"):
            countInstructions.check_usable({"compiler": "GNU 12"}, {"compiler": "GNU 13"})
        countInstructions.check_usable({"compiler": "GNU 12", "instructions": {}}, {"compiler": "GNU 12"})


if __name__ == "__main__":
    unittest.main()
