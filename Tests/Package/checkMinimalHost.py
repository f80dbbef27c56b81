#!/usr/bin/env python3
"""The smallest host, built as a stranger does it and run after the installed tree has moved once more."""

import pathlib
import shutil
import subprocess
import tempfile
import time

from packageTesting import CMAKE, COMPILER, LIBRARIES, TREE, PackageTest, fresh_environment, main

SIDES = (640, 512)
BACKGROUND = (33, 41, 51)
GOLD, RED, BLUE = "gold", "red", "blue"


def kind_of(pixel):
    """Which of the example's colours a lit pixel is a shade of; None for grey."""
    red, green, blue = pixel
    if blue > 1.5 * red and blue > green:
        return BLUE
    if red > 1.5 * green and green < 2.0 * blue + 8:
        return RED
    return GOLD if red > green > 2 * blue else None


class MinimalHost(PackageTest):
    @classmethod
    def setUpClass(cls):
        cls.place = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        prefix = cls.place / "as installed"
        shutil.copytree(TREE, prefix, symlinks=True)
        example = prefix / "share/doc/OpenGLRenderer/Examples/MinimalHost"
        for arguments in (["-S", example, "-B", cls.place / "build", f"-DCMAKE_PREFIX_PATH={prefix}",
                           f"-DCMAKE_CXX_COMPILER={COMPILER}"], ["--build", cls.place / "build"]):
            subprocess.run([CMAKE, *map(str, arguments)], check=True, env=fresh_environment(cls.place),
                           stdout=subprocess.DEVNULL)
        prefix.rename(cls.place / "moved")
        cls.libraries = cls.place / "moved" / LIBRARIES.relative_to(TREE)

    def run_host(self, *arguments, status=0, **environment):
        return self.run_program(self.place / "build/MinimalHost", *arguments, status=status,
                                environment=fresh_environment(self.folder, LD_LIBRARY_PATH=str(self.libraries),
                                                              **environment))

    def test_is_one_short_file(self):
        folder = TREE / "share/doc/OpenGLRenderer/Examples/MinimalHost"
        self.assertEqual({file.name for file in folder.iterdir()}, {"CMakeLists.txt", "MinimalHost.cpp"})
        self.assertLess(len((folder / "MinimalHost.cpp").read_text().splitlines()), 120)

    def test_draws_its_scene(self):
        result = self.run_host("picture.ppm")
        self.assertEqual(result.stderr, "")
        picture = (self.folder / "picture.ppm").read_bytes()
        header = b"P6 %d %d 255\n" % SIDES
        self.assertTrue(picture.startswith(header))
        pixels = picture[len(header):]
        self.assertEqual(len(pixels), 3 * SIDES[0] * SIDES[1])

        def at(x, y):
            start = 3 * (y * SIDES[0] + x)
            return tuple(pixels[start:start + 3])

        self.assertEqual(at(3, 3), BACKGROUND)
        self.assertEqual(at(SIDES[0] - 4, SIDES[1] - 4), BACKGROUND)
        seen = {GOLD: [], RED: [], BLUE: [], None: []}
        for y in range(0, SIDES[1], 2):
            for x in range(0, SIDES[0], 2):
                if at(x, y) != BACKGROUND:
                    seen[kind_of(at(x, y))].append((x, y))
        for kind in (GOLD, RED, BLUE):
            self.assertGreater(len(seen[kind]), 500, kind)
        middle = {kind: sum(x for x, _ in seen[kind]) / len(seen[kind]) for kind in (GOLD, RED, BLUE)}
        self.assertAlmostEqual(middle[RED], SIDES[0] / 2, delta=10)
        self.assertGreater(middle[BLUE], 0.65 * SIDES[0], "the small ball is at the right")
        # Smooth: no surface shines through another.
        jumps = sum(abs(sum(at(x, y)) - sum(at(x + 1, y))) > 90 for x, y in seen[RED])
        self.assertLess(jumps, 0.02 * len(seen[RED]))
        # Lit from the upper left.
        ball = sorted(seen[RED])
        brightness = [sum(at(x, y)) for x, y in ball]
        half = len(ball) // 2
        self.assertGreater(sum(brightness[:half]), 1.1 * sum(brightness[half:]))

    def test_same_picture_each_time(self):
        self.run_host("first.ppm")
        self.run_host("second.ppm")
        self.assertEqual((self.folder / "first.ppm").read_bytes(), (self.folder / "second.ppm").read_bytes())

    def test_says_in_one_line_why_it_cannot_draw(self):
        for arguments, environment, line in (
                ([], {}, "MinimalHost: PICTURE.ppm or --window?\n"),
                (["no/a.ppm"], {}, "MinimalHost: no/a.ppm cannot be written\n"),
                (["/dev/full"], {}, "MinimalHost: /dev/full cannot be written\n")):
            self.assertEqual(self.run_host(*arguments, status=1, **environment).stderr, line)

    def test_says_that_its_window_is_too_small(self):
        for width, height, status in ((512, 512, 0), (511, 512, 1), (512, 511, 1)):
            shrink = self.folder / f"{width}x{height}.so"
            subprocess.run([COMPILER, "-shared", "-fPIC", "-x", "c++", "-", "-o", shrink], check=True, text=True,
                           input='extern "C" void SDL_GL_GetDrawableSize(void*, int* width, int* height)'
                                 f"{{ *width = {width}; *height = {height}; }}")
            result = self.run_host("picture.ppm", status=status, LD_PRELOAD=str(shrink))
            self.assertEqual(result.stderr, "MinimalHost: the graphics diagnostic draws 512 x 512 pixels, and the "
                                            "window has fewer\n" if status else "")

    def screen(self, is_wanted):
        """What is on the display as soon as it is wanted: the graphics card may be measured first."""
        end = time.monotonic() + 120
        while time.monotonic() < end:
            time.sleep(0.1)
            file = self.folder / "Xvfb_screen0"
            content = file.read_bytes() if file.exists() else b""
            if is_wanted(content):
                return content
        return self.fail("the window does not show what it should")

    def test_window_turns_until_it_is_closed(self):
        self.need("xvfb-run")
        # SDL takes a polite end of the process for the window's.
        script = '"$1" --window & host=$!; read -r end; kill -TERM $host; wait $host'
        environment = fresh_environment(self.folder, LD_LIBRARY_PATH=str(self.libraries))
        arguments = ["xvfb-run", "-a", "-s", f"-screen 0 640x512x24 -fbdir {self.folder}",
                     "sh", "-c", script, "sh", self.place / "build/MinimalHost"]
        with subprocess.Popen(arguments, cwd=self.folder, env=environment, stdin=subprocess.PIPE) as window:
            first = self.screen(lambda content: content.count(bytes(reversed(BACKGROUND))) > 50_000)
            second = self.screen(lambda content: content != first)
            self.assertGreater(second.count(bytes(reversed(BACKGROUND))), 50_000)
            window.communicate(b"end\n")
        self.assertEqual(window.returncode, 0)


if __name__ == "__main__":
    main()
