"""What is measured: scenes, the programs that draw them, and how drawing goes on."""

from dataclasses import dataclass

FRAME = "frame"  # whole frames, on the driver that OpenGL picks
APPLICATION = "application"  # drawing thrown away: what program and OpenGL's front end cost
MODES = (FRAME, APPLICATION)

OURS = "sgview"
REPLAY = "replay"
BARE = "bare OpenGL"
PEERS = {"OpenSceneGraph": "peer-openscenegraph", "Irrlicht": "peer-irrlicht"}
PROGRAMS = {OURS: "sgview", REPLAY: "replay", BARE: "bare-opengl"} | PEERS
NEEDS_DISPLAY = ("Irrlicht",)


@dataclass(frozen=True)
class Scene:
    """A scene of `sgview bench`, and how many of its frames are timed in one run."""

    kind: str
    count: int
    moving: bool = False
    frames: int = 30
    repeated: int = 1  # frames that the replay has, so that it moves where the scene does

    @property
    def title(self):
        return f"{self.kind}{', moving' if self.moving else ''}, {self.count:,}"

    @property
    def is_skinned(self):
        return self.kind.startswith("skinned")

    @property
    def arguments(self):
        return ["--scene", self.kind, "--count", str(self.count)] + (["--moving"] if self.moving else [])


SCENES = (
    Scene("many", 10_000, frames=40),
    Scene("many", 10_000, moving=True, frames=40, repeated=6),
    Scene("textured", 2_000, frames=20),
    Scene("skinned", 64, frames=20, repeated=4),
    Scene("skinned-varied", 64, frames=20, repeated=4),
    Scene("deep", 2_000, frames=200, repeated=20),
    Scene("many", 1_000, frames=150),
    Scene("many", 100_000, frames=12),
)

VERTICES_A_SHEET = 10_000  # of the skinned scenes
SKINNING_PASSES = ("ManualAnimator", "ConverterToFloats")

# How much memory a surface takes is seen between these, and a start in the first.
ONE_SURFACE = Scene("many", 1, frames=3)
MANY_SURFACES = Scene("many", 100_000, frames=3)


def turned(programs, round_number):
    """Another program comes first in every round: none always follows the same one."""
    start = round_number % len(programs)
    return programs[start:] + programs[:start]


def skinning_milliseconds(program, run):
    """Of a run's frame, from setting poses to arrays that OpenGL takes; None where nothing of the kind is done."""
    if program == REPLAY:
        return None
    whole = run["application"]["median"]
    if program == OURS:
        whole += sum(entry["milliseconds"] for entry in run["passes"] if entry["name"] in SKINNING_PASSES)
    return whole
