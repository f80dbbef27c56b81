"""What the scripts for the test models share."""

import math
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Assets"))

from gltfDocument import GltfDocument  # noqa: E402
from transforms import quaternion  # noqa: E402

X, Y, Z = (1.0, 0.0, 0.0), (0.0, 1.0, 0.0), (0.0, 0.0, 1.0)


def new_document():
    return GltfDocument("Tests/Models")


def save(document, name):
    document.write_embedded(pathlib.Path(__file__).with_name(name + ".gltf"))


def material(document, name, colour, **more):
    factors = {"baseColorFactor": colour, "metallicFactor": 0.0, "roughnessFactor": 0.6}
    return document.add("materials", name=name, pbrMetallicRoughness=factors, **more)


def swing(axis, *degrees):
    """Rotations about `axis`, one for each key."""
    return [quaternion(axis, math.radians(angle)) for angle in degrees]
