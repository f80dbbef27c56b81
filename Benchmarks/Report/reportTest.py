"""Tests of what Scripts/benchmark makes of its figures."""

import os
import pathlib
import sys
import tempfile
import unittest
import xml.etree.ElementTree

sys.dont_write_bytecode = True

import chart  # noqa: E402
import plan  # noqa: E402
import running  # noqa: E402
import table  # noqa: E402
from figures import Figures, in_words  # noqa: E402


def runs(program, *milliseconds, scene="many", mode=plan.FRAME):
    return [{"program": program, "scene": scene, "mode": mode, "round": number, "milliseconds": time}
            for number, time in enumerate(milliseconds)]


class FiguresTest(unittest.TestCase):
    figures = Figures(runs(plan.OURS, 2.0, 4.0, 30.0) + runs("other", 4.0, 4.0, 10.0) + runs("late", 1.0))

    def test_takes_the_median_of_the_rounds(self):
        self.assertEqual(self.figures.milliseconds(plan.OURS, "many", plan.FRAME), 4.0)
        self.assertEqual(self.figures.range(plan.OURS, "many", plan.FRAME), (2.0, 30.0))

    def test_divides_within_a_round_before_it_takes_the_median(self):
        # Of the medians it would be 4 / 4; of the rounds it is 0.5, 1 and 3.
        self.assertEqual(self.figures.ratio(plan.OURS, "other", "many", plan.FRAME), 1.0)
        skewed = Figures(runs("a", 1.0, 10.0, 100.0) + runs("b", 10.0, 1.0, 1000.0))
        self.assertEqual(skewed.ratio("a", "b", "many", plan.FRAME), 0.1)

    def test_compares_only_rounds_that_both_have(self):
        self.assertEqual(self.figures.ratio(plan.OURS, "late", "many", plan.FRAME), 2.0)

    def test_knows_nothing_of_what_did_not_run(self):
        self.assertIsNone(self.figures.milliseconds("absent", "many", plan.FRAME))
        self.assertIsNone(self.figures.ratio(plan.OURS, "absent", "many", plan.FRAME))
        self.assertIsNone(self.figures.milliseconds(plan.OURS, "many", plan.APPLICATION))

    def test_writes_three_digits(self):
        self.assertEqual([in_words(value) for value in (123.4, 12.34, 1.234, 0.1234, None)],
                         ["123", "12.3", "1.23", "0.123", "–"])


class TableTest(unittest.TestCase):
    def test_shows_ours_against_every_other(self):
        figures = Figures(runs(plan.OURS, 3.0) + runs("other", 4.0))
        lines = table.ratio_table(figures, ["many"], [plan.OURS, "other", "absent"], plan.FRAME).splitlines()
        self.assertEqual(lines[0], "| scene | sgview, ms | / other | / absent |")
        self.assertEqual(lines[2], "| many | 3.00 | 0.75 | – |")

    def test_shows_the_range_of_the_rounds(self):
        figures = Figures(runs("one", 3.0, 1.0, 2.0))
        self.assertIn("| many | 2.00 (1.00–3.00) |", table.time_table(figures, ["many"], ["one"], plan.FRAME))

    def test_divides_memory_by_the_surfaces_between(self):
        text = table.memory_table({"one": [(1 << 20, (1 << 20) + 99 * 500)]}, 100)
        self.assertIn("| one | 1 | 1 | 500 |", text)

    def test_shows_how_the_cost_of_a_surface_grows(self):
        figures = Figures(runs("one", 1.0, scene="few", mode=plan.APPLICATION) +
                          runs("one", 12.0, scene="lots", mode=plan.APPLICATION))
        self.assertIn("| one | 1.00 | 1.20 | 1.20 |",
                      table.growth_table(figures, {1000: "few", 10_000: "lots"}, ["one"]))

    def test_shows_what_skinning_a_vertex_takes(self):
        text = table.skinning_table({"one": {"skinned": [3.0, 1.0, 2.0], "varied": [20.0]}, "two": {"varied": [30.0]}})
        self.assertEqual(text.splitlines()[0], "| skinning, ns a vertex | skinned | varied |")
        self.assertEqual(text.splitlines()[2:], ["| one | 2.00 | 20.0 |", "| two | – | 30.0 |"])

    def test_replaces_the_results_of_a_document_and_nothing_else(self):
        old = f"before\n{table.START}\nold\n{table.END}\nafter\n"
        new = table.put_in(old, f"{table.START}\nnew\n{table.END}\n")
        self.assertEqual(new, f"before\n{table.START}\nnew\n{table.END}\nafter\n")
        self.assertEqual(table.put_in(new, f"{table.START}\nnew\n{table.END}\n"), new)


class PlanTest(unittest.TestCase):
    def test_lets_every_program_come_first_once(self):
        programs = list(plan.PROGRAMS)
        orders = [plan.turned(programs, number) for number in range(len(programs))]
        self.assertEqual({order[0] for order in orders}, set(programs))
        for order in orders:
            self.assertEqual(sorted(order), sorted(programs))

    def test_names_every_scene_differently(self):
        self.assertEqual(len({scene.title for scene in plan.SCENES}), len(plan.SCENES))


    def test_adds_up_what_skinning_takes(self):
        passes = ("ManualAnimator", "other", "ConverterToFloats")
        run = {"application": {"median": 1.0}, "passes": [{"name": name, "milliseconds": 2.0} for name in passes]}
        self.assertEqual(plan.skinning_milliseconds(plan.OURS, run), 5.0)
        self.assertEqual(plan.skinning_milliseconds(plan.BARE, run), 1.0)
        self.assertIsNone(plan.skinning_milliseconds(plan.REPLAY, run))


class RunningTest(unittest.TestCase):
    """Of a program that counts in a file how often it was started."""

    def setUp(self):
        self.count = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory())) / "count"

    def run_script(self, script):
        return running.run_program(["sh", "-c", f"echo x >> {self.count}; {script}"], dict(os.environ))

    def starts(self):
        return len(self.count.read_text().split())

    def test_starts_a_program_that_crashed_again(self):
        text = self.run_script(f"[ $(wc -l < {self.count}) -eq 3 ] || kill -SEGV $$; echo done")
        self.assertEqual((text, self.starts()), ("done\n", 3))

    def test_gives_up_on_one_that_always_crashes(self):
        with self.assertRaises(running.Failed):
            self.run_script("kill -SEGV $$")
        self.assertEqual(self.starts(), running.ATTEMPTS)

    def test_takes_a_failure_for_an_answer(self):
        with self.assertRaisesRegex(running.Failed, "status 3\nthe reason"):
            self.run_script("echo the reason >&2; exit 3")
        self.assertEqual(self.starts(), 1)


class ChartTest(unittest.TestCase):
    def test_draws_a_bar_and_a_text_for_every_value(self):
        figures = Figures(runs(plan.OURS, 3.0) + runs("<other>", 4.0))
        svg = chart.frames_chart(figures, ["many"], [plan.OURS, "<other>", "absent"], plan.FRAME, "Title", "Note.",
                                 "<other>")
        root = xml.etree.ElementTree.fromstring(svg)
        name = "{http://www.w3.org/2000/svg}"
        texts = [text.text for text in root.iter(name + "text")]
        self.assertEqual(len(list(root.iter(name + "rect"))), 2)
        self.assertIn("3.00 ms, 0.75 times", texts)
        self.assertIn("4.00 ms, 1.00 times", texts)

    def test_keeps_everything_on_the_picture(self):
        svg = chart.bar_chart("Title", "Note.", "base", [("group", [("one", 1.0, "1"), ("far", 12.0, "12 times")])])
        root = xml.etree.ElementTree.fromstring(svg)
        width, height = float(root.get("width")), float(root.get("height"))
        for element in root.iter():
            right = float(element.get("x", 0)) + float(element.get("width", 0)) if element is not root else 0
            self.assertLess(right, width)
            self.assertLess(float(element.get("y", 0)), height)


if __name__ == "__main__":
    unittest.main()
