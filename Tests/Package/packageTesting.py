"""What the tests of the installed tree share: where things are, fresh environments, and how a skip is told."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(os.environ["SG_SOURCE"])
BUILD = pathlib.Path(os.environ["SG_BUILD"])
TREE = pathlib.Path(os.environ["SG_TREE"])  # the installed tree, moved after it was laid down
LIBRARIES = TREE / os.environ["SG_LIBRARIES"]
VERSION = os.environ["SG_VERSION"]
COMPILER = os.environ["SG_COMPILER"]
CMAKE = os.environ["SG_CMAKE"]
GENERATOR = os.environ["SG_GENERATOR"]

SKIPPED = 77

sys.path.insert(0, str(SOURCE / "Tests/Corpus"))
from checkCorpus import rgb_rows  # noqa: E402

PASSED_ON = ("PATH", "LANG", "TMPDIR", "CCACHE_DIR", "GALLIUM_DRIVER", "LIBGL_ALWAYS_SOFTWARE")


def fresh_environment(home, **extra):
    """A stranger's: nothing of the build's, and a home without preferences."""
    kept = {name: os.environ[name] for name in PASSED_ON if name in os.environ}
    return kept | {"HOME": str(home), "XDG_CONFIG_HOME": str(home), "CMAKE_GENERATOR": GENERATOR} | extra


class PackageTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def run_program(self, *arguments, status=0, environment=None):
        """Runs a program in the test's folder, and returns how it went."""
        result = subprocess.run([str(argument) for argument in arguments], cwd=self.folder, text=True,
                                env=environment or fresh_environment(self.folder), stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        if status is not None:
            self.assertEqual(result.returncode, status, f"{arguments}\n{result.stdout}\n{result.stderr}")
        return result

    def need(self, program):
        if not shutil.which(program):
            self.skipTest(f"{program} is not installed")

    def colours(self, png):
        """How many pixels of a PNG file have which colour."""
        counts = {}
        for row, components in rgb_rows((self.folder / png).read_bytes()):
            for x in range(0, len(row), components):
                colour = bytes(row[x:x + 3])
                counts[colour] = counts.get(colour, 0) + 1
        return counts


def main():
    result = unittest.main(exit=False, verbosity=2).result
    if not result.wasSuccessful():
        sys.exit(1)
    sys.exit(SKIPPED if result.skipped and len(result.skipped) == result.testsRun else 0)
