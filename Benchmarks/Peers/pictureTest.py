"""Tests that every program draws the scenes that `sgview bench` draws."""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
SOURCE = pathlib.Path(os.environ["SG_SOURCE"])
BUILD = pathlib.Path(os.environ["SG_BUILD"])
sys.path += [str(SOURCE / "Benchmarks/Report"), str(SOURCE / "Tests/Corpus")]

import plan  # noqa: E402
import running  # noqa: E402
from checkCorpus import rgb_rows  # noqa: E402

# The same frame is the last: `sgview bench` draws some more, which show what each pass takes.
OUR_FRAMES, THEIR_FRAMES = "3", "6"

SCENES = (("many", 200), ("textured", 200), ("skinned", 9), ("skinned-varied", 9), ("deep", 200))
TOLERATED = 0.001  # of the pixels, where edges fall


def pixels(png):
    return [tuple(row[x:x + 3]) for row, components in rgb_rows(png.read_bytes())
            for x in range(0, len(row), components)]


def share(a, b, differs):
    return sum(differs(x, y) for x, y in zip(a, b, strict=True)) / len(a)


def differs_in_colour(x, y):
    return sum((one - other) ** 2 for one, other in zip(x, y)) > 100


def differs_in_coverage(x, y):
    return any(x) != any(y)


class PictureTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.display = self.enterContext(running.display())

    def draw(self, program, *arguments):
        picture = self.folder / "picture.png"
        environment = os.environ | {"HOME": str(self.folder), "XDG_CONFIG_HOME": str(self.folder),
                                    "DISPLAY": self.display}
        command = [BUILD / "bin" / plan.PROGRAMS[program]]
        if program == plan.OURS:
            command += ["bench", "--size", "512x512", "--technique", "vbo", "--frames", OUR_FRAMES, "--output", picture]
        else:
            command += ["--frames", THEIR_FRAMES, "--picture", picture]
        subprocess.run([*command, *arguments], env=environment, stdout=subprocess.DEVNULL, check=True)
        return pixels(picture)

    def test_draws_the_same_as_ours(self):
        others = [program for program in (plan.BARE, *plan.PEERS) if (BUILD / "bin" / plan.PROGRAMS[program]).exists()]
        self.assertIn(plan.BARE, others)
        for scene, count in SCENES:
            for more in ((), ("--moving",)):
                arguments = ("--scene", scene, "--count", str(count), *more)
                ours = self.draw(plan.OURS, *arguments)
                self.assertGreater(share(ours, [(0, 0, 0)] * len(ours), differs_in_coverage), 0.03)
                # Others shade skinned normals as they come, at any length.
                differs = differs_in_coverage if scene.startswith("skinned") else differs_in_colour
                for program in others:
                    with self.subTest(program=program, scene=arguments):
                        self.assertLess(share(ours, self.draw(program, *arguments), differs), TOLERATED)


if __name__ == "__main__":
    unittest.main()
