#!/usr/bin/env python3
"""Writes creature.glb: a small salamander with gills that swims. The same bytes on every run."""

import math
import pathlib

from creatureShape import body, eye, filament_place, gill, leg
from creatureTexture import BODY_AREA, GILL_AREA, LEG_AREA, coordinates_in, paint
from gltfDocument import UNSIGNED_BYTE, GltfDocument
from pngFile import encode_png
from transforms import (add, column_major, compose, conjugate, inverse, matrix, quaternion, quaternion_from_z,
                        rotate, smooth_step, subtract)
from tubeMesh import Mesh

# name, parent, place of the joint, direction of the bone
BONES = (
    ("hips", None, (0.0, 0.0, -0.20), (0.0, 0.0, 1.0)),
    ("spine1", "hips", (0.0, 0.0, -0.05), (0.0, 0.1, 1.0)),
    ("spine2", "spine1", (0.0, 0.01, 0.18), (0.0, 0.05, 1.0)),
    ("head", "spine2", (0.0, 0.02, 0.40), (0.0, 0.0, 1.0)),
    ("tail1", "hips", (0.0, 0.0, -0.35), (0.0, 0.05, -1.0)),
    ("tail2", "tail1", (0.0, 0.01, -0.53), (0.0, 0.05, -1.0)),
    ("tail3", "tail2", (0.0, 0.02, -0.71), (0.0, 0.0, -1.0)),
    ("tail4", "tail3", (0.0, 0.02, -0.89), (0.0, 0.0, -1.0)),
    ("tail5", "tail4", (0.0, 0.02, -1.07), (0.0, 0.0, -1.0)),
    ("legFrontLeft", "spine2", (0.13, -0.07, 0.25), (0.7, -0.5, 0.1)),
    ("legFrontRight", "spine2", (-0.13, -0.07, 0.25), (-0.7, -0.5, 0.1)),
    ("legBackLeft", "hips", (0.12, -0.07, -0.20), (0.7, -0.5, 0.1)),
    ("legBackRight", "hips", (-0.12, -0.07, -0.20), (-0.7, -0.5, 0.1)),
    ("gillsLeft", "head", (0.205, 0.05, 0.45), (0.8, 0.3, -0.4)),
    ("gillsRight", "head", (-0.205, 0.05, 0.45), (-0.8, 0.3, -0.4)),
)
INDEX = {name: i for i, (name, *_) in enumerate(BONES)}
SPINE = ("tail5", "tail4", "tail3", "tail2", "tail1", "hips", "spine1", "spine2", "head")
BORDERS = (-1.07, -0.89, -0.71, -0.53, -0.35, -0.05, 0.18, 0.40)

SWIM_LENGTH, SWIM_KEYS = 1.6, 33
LOOK_LENGTH, LOOK_KEYS = 1.2, 25


def spine_weights(position):
    """Bones along the spine, fading into one another around their joints."""
    passed = [1.0] + [smooth_step(border - 0.13, border + 0.13, position[2]) for border in BORDERS] + [0.0]
    return {name: passed[i] - passed[i + 1] for i, name in enumerate(SPINE) if passed[i] > passed[i + 1]}


def binding_to(bone, fade_start, fade_end, fixed=None):
    """Weights of a limb's vertices: the spine's at its root, `bone` alone from `fade_end` on.

    `fixed` is the place along the limb where a whole side branch hangs.
    """
    def binding(position, s):
        share = smooth_step(fade_start, fade_end, s if fixed is None else fixed)
        weights = {name: weight * (1.0 - share) for name, weight in spine_weights(position).items()}
        weights[bone] = share
        return weights
    return binding


def build_meshes():
    skin, eyes = Mesh(), Mesh()
    skin.add_tube(body, 40, 20, coordinates_in(BODY_AREA), lambda position, s: spine_weights(position))
    in_leg, in_gill = coordinates_in(LEG_AREA), coordinates_in(GILL_AREA)
    for side, mirrored in (("Left", False), ("Right", True)):
        for end in ("Front", "Back"):
            limb, toes = leg(end == "Front")
            bone = "leg" + end + side
            skin.add_tube(limb, 7, 8, in_leg, binding_to(bone, 0.1, 0.5), mirrored)
            for toe in toes:
                skin.add_tube(toe, 2, 5, lambda s, u: in_leg(0.85 + 0.15 * s, u),
                              binding_to(bone, 0.1, 0.5, fixed=1.0), mirrored)
        for height in (-1, 0, 1):
            stalk, filaments = gill(height)
            skin.add_tube(stalk, 6, 6, in_gill, binding_to("gills" + side, 0.05, 0.5), mirrored)
            for i, filament in enumerate(filaments):
                skin.add_tube(filament, 2, 4, lambda s, u: in_gill(0.45 + 0.55 * s, u),
                              binding_to("gills" + side, 0.05, 0.5, fixed=filament_place(i)), mirrored)
        eyes.add_tube(eye, 7, 10, lambda s, u: (u, s), lambda position, s: {"head": 1.0}, mirrored)
    return skin, eyes


def packed(weights):
    """The four strongest bones, in 4096ths so that single precision adds them up to exactly 1."""
    strongest = sorted(weights.items(), key=lambda item: (-item[1], item[0]))[:4]
    total = sum(weight for _, weight in strongest)
    parts = [round(4096 * weight / total) for _, weight in strongest]
    parts[0] += 4096 - sum(parts)
    used = [(INDEX[name], part / 4096) for (name, _), part in zip(strongest, parts) if part > 0]
    used += [(0, 0.0)] * (4 - len(used))
    return tuple(bone for bone, _ in used), tuple(weight for _, weight in used)


class Skeleton:
    """The bones at rest: each looks along its own +z."""

    def __init__(self):
        self.places = {name: place for name, _, place, _ in BONES}
        self.parents = {name: parent for name, parent, _, _ in BONES}
        self.turns = {name: quaternion_from_z(direction) for name, _, _, direction in BONES}

    def translation(self, name):
        parent = self.parents[name]
        if parent is None:
            return self.places[name]
        return rotate(conjugate(self.turns[parent]), subtract(self.places[name], self.places[parent]))

    def rotation(self, name, turn=(0.0, 0.0, 0.0, 1.0)):
        """The node's rotation when the bone is turned from rest about axes of the unbent creature."""
        parent = self.parents[name]
        own = compose(turn, self.turns[name])
        return own if parent is None else compose(conjugate(self.turns[parent]), own)

    def inverse_bind(self, name):
        return inverse(matrix(self.places[name], self.turns[name]))


def yaw(angle):
    return quaternion((0.0, 1.0, 0.0), angle)


def pitch(angle):
    return quaternion((1.0, 0.0, 0.0), angle)


def roll(angle):
    return quaternion((0.0, 0.0, 1.0), angle)


def swim_turns(phase):
    """Turns of all bones: a wave runs down the spine, the legs lie back and paddle, the gills trail."""
    wave = {"head": (-0.16, 1.1), "spine2": (-0.13, 0.5), "spine1": (-0.08, 0.2), "hips": (0.14, 0.0),
            "tail1": (0.22, -0.6), "tail2": (0.28, -1.2), "tail3": (0.33, -1.8), "tail4": (0.38, -2.4),
            "tail5": (0.42, -3.0)}
    turns = {name: yaw(size * math.sin(phase + lag)) for name, (size, lag) in wave.items()}
    for side, sign in (("Left", 1.0), ("Right", -1.0)):
        for end, lag in (("Front", 0.0), ("Back", 2.2)):
            stroke = math.sin(phase + lag + (0.0 if sign > 0 else math.pi))
            turns["leg" + end + side] = compose(yaw(sign * (0.75 + 0.35 * stroke)), roll(sign * (0.25 - 0.15 * stroke)))
        turns["gills" + side] = compose(yaw(sign * (0.16 + 0.12 * math.sin(2 * phase + 0.4))),
                                        roll(sign * 0.12 * math.sin(2 * phase - 0.5)))
    return turns


def look_turns(share):
    """Turns of the front: a glance to the left and up, with the gills spread, and back."""
    glance = math.sin(math.pi * share) ** 2
    return {"spine2": yaw(0.22 * glance), "head": compose(yaw(0.48 * glance), pitch(-0.22 * glance)),
            "gillsLeft": yaw(-0.25 * glance), "gillsRight": yaw(0.25 * glance)}


def rotation_tracks(skeleton, joints, length, keys, turns_at):
    times = [length * key / (keys - 1) for key in range(keys)]
    poses = [turns_at(key / (keys - 1)) for key in range(keys - 1)]
    poses.append(poses[0])
    return [(joints[name], "rotation", times, [skeleton.rotation(name, pose[name]) for pose in poses])
            for name in poses[0]]


def add_animations(document, skeleton, joints):
    swim = rotation_tracks(skeleton, joints, SWIM_LENGTH, SWIM_KEYS, lambda share: swim_turns(2 * math.pi * share))
    phases = [2 * math.pi * key / (SWIM_KEYS - 1) for key in range(SWIM_KEYS - 1)] + [0.0]
    drift = [add(skeleton.translation("hips"), (0.03 * math.sin(phase - 0.6), 0.012 * math.sin(2 * phase), 0.0))
             for phase in phases]
    document.animation("swim", swim + [(joints["hips"], "translation", swim[0][2], drift)])
    document.animation("look", rotation_tracks(skeleton, joints, LOOK_LENGTH, LOOK_KEYS, look_turns))


def add_materials(document):
    image = document.add("images", name="creature", mimeType="image/png", bufferView=document.view(encode_png(paint())))
    sampler = document.add("samplers", magFilter=9729, minFilter=9987, wrapS=10497, wrapT=10497)
    texture = document.add("textures", source=image, sampler=sampler)
    skin = document.add("materials", name="skin", pbrMetallicRoughness={
        "baseColorTexture": {"index": texture}, "metallicFactor": 0.0, "roughnessFactor": 0.5})
    eyes = document.add("materials", name="eyes", pbrMetallicRoughness={
        "baseColorFactor": [0.012, 0.010, 0.020, 1.0], "metallicFactor": 0.0, "roughnessFactor": 0.1})
    return skin, eyes


def primitive(document, mesh, material, textured):
    bound = [packed(binding) for binding in mesh.bindings]
    attributes = {"POSITION": document.positions(mesh.positions), "NORMAL": document.attribute(mesh.normals())}
    if textured:
        attributes["TEXCOORD_0"] = document.attribute(mesh.coordinates)
    attributes["JOINTS_0"] = document.attribute([bones for bones, _ in bound], UNSIGNED_BYTE)
    attributes["WEIGHTS_0"] = document.attribute([weights for _, weights in bound])
    return {"attributes": attributes, "indices": document.indices(mesh.indices), "material": material}


def add_skeleton(document, skeleton):
    """Returns the node of each bone."""
    joints = {name: document.node(name, translation=skeleton.translation(name), rotation=skeleton.rotation(name))
              for name in INDEX}
    for name, parent in skeleton.parents.items():
        if parent is not None:
            document.json["nodes"][joints[parent]].setdefault("children", []).append(joints[name])
    return joints


def main():
    document = GltfDocument("makeCreature.py")
    skin_mesh, eyes_mesh = build_meshes()
    skin_material, eyes_material = add_materials(document)
    mesh = document.add("meshes", name="creature", primitives=[
        primitive(document, skin_mesh, skin_material, True), primitive(document, eyes_mesh, eyes_material, False)])
    skeleton = Skeleton()
    joints = add_skeleton(document, skeleton)
    binds = document.accessor([column_major(skeleton.inverse_bind(name)) for name in INDEX])
    skin = document.add("skins", name="skeleton", joints=list(joints.values()), skeleton=joints["hips"],
                        inverseBindMatrices=binds)
    creature = document.node("creature", mesh=mesh, skin=skin)
    document.scene([creature, joints["hips"]])
    add_animations(document, skeleton, joints)
    document.write_binary(pathlib.Path(__file__).with_name("creature.glb"))


if __name__ == "__main__":
    main()
