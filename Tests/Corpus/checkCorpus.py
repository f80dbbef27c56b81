#!/usr/bin/env python3
"""Draws every file of a folder of model files with sgview and holds each outcome against a manifest.

A file must end with a picture or with one line on standard error, within its time and memory, never by a
signal. A file that the manifest does not know is reported; one that is missing in the folder too.

The manifest has a line a file: path, outcome, and for a refusal its kind, separated by tabs. Outcomes:

  static     a picture; nothing in the file moves
  animated   a picture, and other bounds or another picture later in the first clip
  still      a picture; there are clips, but the first one moves nothing
  rest       a picture of a skinned model in rest pose, as the file holds no clip
  blank      a picture with nothing to be seen in it: all that the file holds is seen edge-on
  nothing    a model with nothing to draw
  refused    not drawn, for the reason named
"""

import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import resource
import subprocess
import sys
import tempfile
import time
import zlib

SIZE = "160x120"
BACKGROUND = "#ff00ff"  # no model is likely to fill the picture with this
SECONDS = 10.0
MEMORY = 1 << 30

Run = collections.namedtuple("Run", "status output errors seconds memory")


class Failure(Exception):
    """What a file did that no file may make sgview do."""


def run(arguments):
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        start = time.monotonic()
        process = subprocess.Popen(arguments, stdin=subprocess.DEVNULL, stdout=output, stderr=errors)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = 0  # reaped
        seconds = time.monotonic() - start
        output.seek(0)
        errors.seek(0)
        return Run(os.waitstatus_to_exitcode(status), output.read().decode("utf-8", "replace"),
                   errors.read().decode("utf-8", "replace"), seconds, usage.ru_maxrss * 1024)


def compressed_pixels(png):
    """A picture without what it says of itself."""
    data, at = b"", 8
    while at < len(png):
        length = int.from_bytes(png[at:at + 4], "big")
        if png[at + 4:at + 8] == b"IDAT":
            data += png[at + 8:at + 8 + length]
        at += length + 12
    return data


def rgb_rows(png):
    """The rows of an 8-bit RGB or RGBA picture, as sgview writes them."""
    if png[:8] != b"\x89PNG\r\n\x1a\n":
        raise Failure("the picture is no PNG")
    width, height, depth, colour = (int.from_bytes(png[16:20], "big"), int.from_bytes(png[20:24], "big"), png[24], png[25])
    if depth != 8 or colour not in (2, 6):
        raise Failure("the picture is not 8-bit RGB or RGBA")
    components = 3 if colour == 2 else 4
    data = zlib.decompress(compressed_pixels(png))
    stride = width * components
    previous = bytes(stride)
    for y in range(height):
        kind = data[y * (stride + 1)]
        row = bytearray(data[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for x in range(stride):
            left = row[x - components] if x >= components else 0
            up = previous[x]
            corner = previous[x - components] if x >= components else 0
            if kind == 1:
                row[x] = (row[x] + left) & 255
            elif kind == 2:
                row[x] = (row[x] + up) & 255
            elif kind == 3:
                row[x] = (row[x] + (left + up) // 2) & 255
            elif kind == 4:
                estimate = left + up - corner
                nearest = min((abs(estimate - left), 0, left), (abs(estimate - up), 1, up), (abs(estimate - corner), 2, corner))
                row[x] = (row[x] + nearest[2]) & 255
        previous = bytes(row)
        yield previous, components


def shows_something(png):
    background = bytes.fromhex(BACKGROUND[1:])
    return any(row[x:x + 3] != background
               for row, components in rgb_rows(png) for x in range(0, len(row), components))


def switch_techniques_off(sgview, folder):
    """Gives the user of this folder a verdict for the card in use that grants nothing: pictures then do not depend on how
    fast the machine is just now."""
    os.environ["XDG_CONFIG_HOME"] = folder
    subprocess.run([sgview, "diagnose", "--quiet"], stdout=subprocess.DEVNULL, check=True)
    preferences = pathlib.Path(folder) / "OpenGLRenderer" / "preferences"
    preferences.write_text(preferences.read_text(encoding="utf-8").replace("= True", "= False"), encoding="utf-8")


class Corpus:
    def __init__(self, sgview, folder, slowness, pictures):
        self.sgview = sgview
        self.folder = folder
        self.slowness = slowness
        self.pictures = pictures
        # A sanitized build takes a multiple of the memory that it is granted.
        self.limits = [] if slowness == 1.0 else ["--time-limit", str(round(SECONDS * slowness)), "--memory-limit", str(MEMORY >> 20)]

    def check_manners(self, result):
        if result.status < 0:
            raise Failure(f"ended by signal {-result.status}")
        if result.status not in (0, 1):
            raise Failure(f"exit status {result.status}: {result.errors.strip()}")
        # The import has 10 s of its own; starting and drawing come on top.
        if result.seconds > (SECONDS + 3.0) * self.slowness:
            raise Failure(f"took {result.seconds:.1f} s")
        if self.slowness == 1.0 and result.memory > MEMORY:
            raise Failure(f"took {result.memory >> 20} MiB")
        lines = [line for line in result.errors.splitlines() if not line.startswith("sgview: warning: ")]
        if result.status == 1 and len(lines) != 1:
            raise Failure(f"{len(lines)} lines on standard error: {result.errors.strip()}")
        if result.status == 0 and lines:
            raise Failure(f"a picture, and errors: {result.errors.strip()}")

    def picture(self, path, *extra):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / "picture.png"
            result = run([self.sgview, "render", str(self.folder / path), "--output", str(file), "--size", SIZE,
                          "--background", BACKGROUND, *self.limits, *extra])
            self.check_manners(result)
            if result.status != 0:
                raise Failure(f"info reads it, render does not: {result.errors.strip()}")
            return file.read_bytes()

    def keep(self, path, png):
        if self.pictures:
            self.pictures.mkdir(parents=True, exist_ok=True)
            (self.pictures / (path.replace("/", "__") + ".png")).write_bytes(png)

    def outcome(self, path):
        """The outcome's columns."""
        result = run([self.sgview, "info", str(self.folder / path), "--json", *self.limits])
        self.check_manners(result)
        if result.status == 1:
            refused = run([self.sgview, "render", str(self.folder / path), "--output", "/dev/null/no", "--quiet", *self.limits])
            self.check_manners(refused)
            if refused.status != 1:
                raise Failure("render draws what info refuses")
            kind = json.loads(result.output)["error"]["kind"]
            return ["nothing"] if kind == "nothing to draw" else ["refused", kind]
        info = json.loads(result.output)
        clips = [clip["seconds"] for clip in info["animations"]]
        if not clips:
            png = self.picture(path)
            self.keep(path, png)
            if not shows_something(png):
                return ["blank"]
            return ["rest" if info["bones"] else "static"]
        early, late = (self.picture(path, "--animation", "0", "--time", repr(share * clips[0])) for share in (0.05, 0.6))
        self.keep(path, late)
        if not (shows_something(early) or shows_something(late)):
            return ["blank"]
        moved = (compressed_pixels(early) != compressed_pixels(late)
                 or self.bounds(path, 0.05 * clips[0]) != self.bounds(path, 0.6 * clips[0]))
        return ["animated" if moved else "still"]

    def bounds(self, path, seconds):
        """The camera follows what moves as a whole, so the picture alone does not tell."""
        result = run([self.sgview, "info", str(self.folder / path), "--json", "--animation", "0", "--time", repr(seconds), *self.limits])
        self.check_manners(result)
        return json.loads(result.output)["bounds"]


def read_manifest(file):
    entries = {}
    for line in file.read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            path, *columns = line.split("\t")
            entries[path] = columns
    return entries


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--sgview", required=True)
    parser.add_argument("--folder", type=pathlib.Path, required=True)
    parser.add_argument("--manifest", type=pathlib.Path, required=True)
    parser.add_argument("--pictures", type=pathlib.Path, help="keep each picture in this folder")
    parser.add_argument("--slowness", type=float, default=1.0, help="how much longer a sanitized build may take; no memory limit then")
    parser.add_argument("--update", action="store_true", help="write the manifest instead of checking it")
    arguments = parser.parse_args()
    if not arguments.folder.is_dir():
        print(f"SKIPPED: {arguments.folder} is not there (Debian's assimp-testmodels)")
        return 77

    paths = sorted(str(file.relative_to(arguments.folder)) for file in arguments.folder.rglob("*") if not file.is_dir())
    corpus = Corpus(arguments.sgview, arguments.folder, arguments.slowness, arguments.pictures)
    outcomes, failures = {}, []
    with tempfile.TemporaryDirectory() as preferences:
        switch_techniques_off(arguments.sgview, preferences)
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            jobs = {path: pool.submit(corpus.outcome, path) for path in paths}
            for number, (path, job) in enumerate(jobs.items(), 1):
                try:
                    outcomes[path] = job.result()
                except Failure as failure:
                    failures.append(f"{path}: {failure}")
                if number % 100 == 0:
                    print(f"{number} of {len(paths)} files", flush=True)

    if arguments.update:
        lines = ["\t".join([path, *columns]) for path, columns in sorted(outcomes.items())]
        arguments.manifest.write_text("\n".join(lines) + "\n", encoding="utf-8")
    expected = read_manifest(arguments.manifest)
    for path in sorted(expected.keys() | outcomes.keys()):
        if path not in paths:
            failures.append(f"{path}: in the manifest, not in the folder")
        elif path in outcomes and expected.get(path) != outcomes[path]:
            failures.append(f"{path}: expected {expected.get(path)}, got {outcomes[path]}")

    tally = collections.Counter(" ".join(columns) for columns in outcomes.values())
    print(f"{len(paths)} files in {arguments.folder}")
    for outcome, count in sorted(tally.items()):
        print(f"{count:5}  {outcome}")
    for failure in failures:
        print(f"FAILED {failure}")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
