"""Runs the programs of a benchmark, each in the same conditions, and takes in what they print."""

import contextlib
import json
import os
import pathlib
import subprocess
import tempfile

from plan import APPLICATION, NEEDS_DISPLAY, OURS, PROGRAMS, REPLAY

PASSED_ON = ("PATH", "LANG", "TMPDIR", "GALLIUM_DRIVER", "LIBGL_ALWAYS_SOFTWARE", "LP_NUM_THREADS")

# Freed memory stays in the process: on a virtual machine, touching a page for the first time may cost more than a draw.
KEEP_MEMORY = {"MALLOC_MMAP_THRESHOLD_": str(32 << 20), "MALLOC_TRIM_THRESHOLD_": str(2000 << 20),
               "MALLOC_TOP_PAD_": str(16 << 20)}

RECORDED_SETUP = 2  # frames: the first uploads, from the second on all are alike
# Where memory is measured: what waits for llvmpipe's threads would count, more or less of it in every run.
RASTERISE_AT_ONCE = {"LP_NUM_THREADS": "0"}

TIME_LIMIT = 600  # seconds, of one run
ATTEMPTS = 4  # Mesa's noop driver may crash where OpenSceneGraph fills its buffers: about one run in ten


class Failed(Exception):
    """A program did not do what it was started for."""


@contextlib.contextmanager
def display():
    """An X server of its own for programs that need one; yields its name."""
    reader, writer = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-screen", "0", "640x640x24", "-nolisten", "tcp",
                               "-noreset"],  # nobody finds it closed between two runs
                              pass_fds=[writer], stderr=subprocess.DEVNULL)
    os.close(writer)
    try:
        with os.fdopen(reader) as number:
            yield ":" + number.readline().strip()
    finally:
        server.terminate()
        server.wait()


def run_program(command, environment):
    """What a program prints. One that crashes is started again."""
    words = [str(word) for word in command]
    for _ in range(ATTEMPTS):
        try:
            done = subprocess.run(words, env=environment, stdin=subprocess.DEVNULL, text=True, timeout=TIME_LIMIT,
                                  stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        except subprocess.TimeoutExpired as error:
            raise Failed(f"{' '.join(words)}: not done after {TIME_LIMIT} s") from error
        if done.returncode == 0:
            return done.stdout
        if done.returncode > 0:  # no crash: it would end in the same way again
            break
    raise Failed(f"{' '.join(words)}: status {done.returncode}\n{done.stderr}")


class Runner:
    """Starts the programs of one build."""

    def __init__(self, build, technique, x_display):
        self.build = pathlib.Path(build)
        self.technique = technique
        self.x_display = x_display
        self._home = tempfile.TemporaryDirectory(prefix="benchmark-")

    def close(self):
        self._home.cleanup()

    def environment(self, program, mode, keeps_memory=True):
        """A stranger's, so that no preference of the user's counts."""
        kept = {name: os.environ[name] for name in PASSED_ON if name in os.environ}
        kept |= {"HOME": self._home.name, "XDG_CONFIG_HOME": self._home.name}
        kept |= KEEP_MEMORY if keeps_memory else RASTERISE_AT_ONCE
        if mode == APPLICATION:
            kept["GALLIUM_NOOP"] = "1"
        if program in NEEDS_DISPLAY:
            kept["DISPLAY"] = self.x_display
        return kept

    def recording(self, scene):
        moving = "-moving" if scene.moving else ""
        return self.build / "recordings" / f"{scene.kind}-{scene.count}{moving}-{self.technique}"

    def record(self, scene):
        """Records the calls of our frames, and looks whether their replay shows the same picture."""
        file = self.recording(scene)
        file.parent.mkdir(exist_ok=True)
        environment = self.environment(OURS, None) | {
            "LD_PRELOAD": str(self.build / "lib/Recorder.so"), "SG_RECORD_FILE": str(file),
            "SG_RECORD_SETUP": str(RECORDED_SETUP), "SG_RECORD_FRAMES": str(scene.repeated)}
        run_program(self._command(OURS, scene), environment)
        run_program([self.build / "bin/replay", file, "--check"], self.environment(REPLAY, None))

    def run(self, program, scene, mode, keeps_memory=True):
        """What a program says of its frames."""
        text = run_program(self._command(program, scene), self.environment(program, mode, keeps_memory))
        try:
            return json.loads(text)
        except json.JSONDecodeError as error:
            raise Failed(f"{program} printed no figures: {text[:200]!r}") from error

    def _command(self, program, scene):
        command = [self.build / "bin" / PROGRAMS[program]]
        if program == OURS:
            command += ["bench", "--size", "512x512", "--technique", self.technique, "--json"]
        if program == REPLAY:
            command.append(self.recording(scene))
        return command + scene.arguments + ["--frames", str(scene.frames)]
