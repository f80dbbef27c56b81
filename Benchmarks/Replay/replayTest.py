"""Tests that a replay shows what was recorded, and that nothing of a frame goes unrecorded."""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

BUILD = pathlib.Path(os.environ["SG_BUILD"])
MODULE = pathlib.Path(os.environ["SG_MODULE"])
RECORDER = BUILD / "lib/Recorder.so"

# They change nothing of what is drawn.
LEFT_OUT = {"epoxy_glReadPixels", "epoxy_glGetInfoLogARB"}

SCENES = (("many", 200), ("textured", 60), ("skinned", 4), ("skinned-varied", 4), ("deep", 100))
TECHNIQUES = ("plain", "vbo", "program", "shader+vbo")


def symbols(library, option):
    listed = subprocess.run(["nm", "--dynamic", option, library], stdout=subprocess.PIPE, text=True, check=True)
    names = (line.split()[-1].split("@")[0] for line in listed.stdout.splitlines())
    return {name for name in names if name.startswith(("epoxy_gl", "gluB"))}


class ReplayTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def record(self, scene, count, technique, *more):
        file = self.folder / "recording"
        environment = os.environ | {
            "HOME": str(self.folder), "XDG_CONFIG_HOME": str(self.folder), "LD_PRELOAD": str(RECORDER),
            "SG_RECORD_FILE": str(file), "SG_RECORD_FRAMES": "2"}
        command = [BUILD / "bin/sgview", "bench", "--scene", scene, "--count", str(count), "--technique", technique,
                   "--size", "128x96", "--frames", "1", *more]
        recorded = subprocess.run(command, env=environment, stderr=subprocess.PIPE, text=True, check=False)
        self.assertEqual(recorded.returncode, 0, recorded.stderr)
        return file

    @staticmethod
    def replay(file, *arguments):
        return subprocess.run([BUILD / "bin/replay", file, *arguments], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True, check=False)

    def test_shows_the_same_picture(self):
        for scene, count in SCENES:
            for technique in TECHNIQUES:
                with self.subTest(scene=scene, technique=technique):
                    replayed = self.replay(self.record(scene, count, technique, "--moving"), "--check")
                    self.assertEqual(replayed.returncode, 0, replayed.stderr)

    def test_notices_another_picture(self):
        file = self.record("many", 10, "vbo")
        bytes_ = bytearray(file.read_bytes())
        bytes_[-128 * 4 * 48] ^= 1  # in the middle of the picture, which comes last
        file.write_bytes(bytes_)
        replayed = self.replay(file, "--check")
        self.assertEqual(replayed.returncode, 1)
        self.assertIn("another picture", replayed.stderr)

    def test_refuses_what_is_no_recording(self):
        file = self.record("many", 10, "vbo")
        whole = file.read_bytes()
        for content in (b"", b"nonsense" * 100, whole[:-1], whole[:len(whole) // 2]):
            file.write_bytes(content)
            self.assertEqual(self.replay(file, "--check").returncode, 1)

    def test_records_every_entry_point_of_the_renderer(self):
        used = symbols(MODULE, "--undefined-only")
        self.assertIn("epoxy_glDrawElements", used)
        self.assertEqual(used - symbols(RECORDER, "--defined-only") - LEFT_OUT, set())


if __name__ == "__main__":
    sys.dont_write_bytecode = True
    unittest.main()
