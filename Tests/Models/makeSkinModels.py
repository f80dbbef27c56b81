#!/usr/bin/env python3
"""Writes the skinned test models beside it, each for one corner of the format. The same bytes on every run."""

import math

from modelParts import X, Y, Z, material, new_document, save, swing  # puts Assets on the search path
from gltfDocument import FLOAT, UNSIGNED_BYTE, UNSIGNED_SHORT
from transforms import add, column_major, compose, inverse, matrix, multiply, quaternion, scale, smooth_step
from tubeMesh import Mesh, tube


def along_chain(borders, blur):
    """Weights for joints 0, 1, ... of a chain along +x: each fades into the next around a border."""
    def binding(position, _):
        passed = [1.0] + [smooth_step(x - blur, x + blur, position[0]) for x in borders] + [0.0]
        return {i: passed[i] - passed[i + 1] for i in range(len(borders) + 1) if passed[i] > passed[i + 1]}
    return binding


def coordinates(s, u):
    return (u, s)


def arm_meshes(length, binding):
    """A tapering arm from the origin along +x, and a fist at its end."""
    arm, fist = Mesh(), Mesh()
    arm.add_tube(tube([(-0.3, 0.0, 0.0), (length / 2, 0.0, 0.0), (length, 0.0, 0.0)], [0.40, 0.30, 0.20]),
                 18, 10, coordinates, binding)
    fist.add_tube(tube([(length - 0.1, 0.0, 0.0), (length + 0.5, 0.0, 0.0)], [0.32, 0.32], 0.8, caps=(0.5, 0.5)),
                  6, 10, coordinates, binding)
    return arm, fist


def influences(binding, slots, total):
    """Joints and weights, strongest first, whole numbers that add up to `total`."""
    strongest = sorted(binding.items(), key=lambda item: (-item[1], item[0]))[:slots]
    whole = [round(total * weight / sum(weight for _, weight in strongest)) for _, weight in strongest]
    whole[0] += total - sum(whole)
    used = [(joint, weight) for (joint, _), weight in zip(strongest, whole) if weight > 0]
    used += [(0, 0)] * (slots - len(used))
    return tuple(joint for joint, _ in used), tuple(weight for _, weight in used)


def skinned_primitive(document, mesh, surface, joint_type, weight_type, sets=1):
    total = {UNSIGNED_BYTE: 255, UNSIGNED_SHORT: 65535, FLOAT: 4096}[weight_type]
    bound = [influences(binding, 4 * sets, total) for binding in mesh.bindings]
    attributes = {"POSITION": document.positions(mesh.positions), "NORMAL": document.attribute(mesh.normals())}
    for number in range(sets):
        part = slice(4 * number, 4 * number + 4)
        weights = [row[part] for _, row in bound]
        if weight_type == FLOAT:
            weights = [scale(row, 1.0 / total) for row in weights]
        attributes["JOINTS_%d" % number] = document.attribute([row[part] for row, _ in bound], joint_type)
        attributes["WEIGHTS_%d" % number] = document.attribute(weights, weight_type, weight_type != FLOAT)
    return {"attributes": attributes, "indices": document.indices(mesh.indices), "material": surface}


def add_arm(document, meshes, joint_type=UNSIGNED_BYTE, weight_type=FLOAT, sets=1):
    surfaces = (material(document, "sleeve", (0.20, 0.45, 0.75, 1.0)),
                material(document, "fist", (0.85, 0.55, 0.40, 1.0)))
    return document.add("meshes", name="arm", primitives=[
        skinned_primitive(document, mesh, surface, joint_type, weight_type, sets)
        for mesh, surface in zip(meshes, surfaces)])


def add_chain(document, transforms):
    """Nodes joint0, joint1, ... each a child of the one before; `transforms` holds what to write in each."""
    joints = [document.node("joint%d" % i, **content) for i, content in enumerate(transforms)]
    for upper, lower in zip(joints, joints[1:]):
        document.json["nodes"][upper]["children"] = [lower]
    return joints


def add_skin(document, joints, binds=None):
    content = {"joints": joints}
    if binds is not None:
        content["inverseBindMatrices"] = document.accessor([column_major(inverse(bind)) for bind in binds])
    return document.add("skins", **content)


def skin_8_bit():
    document = new_document()
    mesh = add_arm(document, arm_meshes(4.0, along_chain((1.0, 2.0, 3.0), 0.6)), UNSIGNED_BYTE, UNSIGNED_BYTE)
    # binds are turned so that joints have axes of their own; the rest pose is bent away from them
    turn = quaternion((1.0, 0.5, 0.25), 0.7)
    binds = [matrix((float(i), 0.0, 0.0), turn) for i in range(4)]
    steps = [inverse(upper) for upper in [matrix()] + binds[:-1]]
    offsets = [tuple(row[3] for row in multiply(step, bind)[:3]) for step, bind in zip(steps, binds)]
    rests = [compose(turn, quaternion(X, 0.1))] + swing((0.3, 0.2, 1.0), 8, -5, 12)
    joints = add_chain(document, [{"translation": offset, "rotation": rest} for offset, rest in zip(offsets, rests)])
    shoulder = document.node("shoulder", children=[joints[0]], matrix=column_major(
        matrix((0.0, 1.0, 0.0), quaternion(Z, 0.2))))
    room = document.node("room", children=[shoulder], translation=[0.5, -0.25, 1.0], scale=[1.2, 0.8, 1.5],
                         rotation=quaternion((1.0, 2.0, 3.0), 0.5))
    skin = add_skin(document, joints, binds)
    # a skinned mesh ignores the transforms of its own node and of those above
    arm = document.node("arm", mesh=mesh, skin=skin, rotation=quaternion(Y, 1.0), translation=[-4.0, 5.0, 6.0])
    stand = document.node("stand", children=[arm], translation=[10.0, 20.0, 30.0], scale=[3.0, 3.0, 3.0])
    document.scene([room, stand])
    times = (0.0, 0.25, 0.5, 1.0)
    document.animation("wave", [
        (joints[0], "translation", times, [add(offsets[0], (0.0, y, 0.3 * y)) for y in (0.0, 0.4, -0.2, 0.0)]),
        (joints[1], "rotation", times, swing((0.4, 0.3, 1.0), 8, 40, -35, 8)),
        (joints[2], "rotation", times, swing((0.1, 1.0, 0.8), -5, 50, -20, -5)),
        (joints[3], "rotation", (0.0, 0.6, 1.0), swing(Z, 12, -60, 12))])
    save(document, "skin8bit")


def skin_16_bit():
    document = new_document()
    order = (2, 0, 1)  # the skin's own, not the chain's
    in_chain = along_chain((1.0, 2.0), 0.5)

    def in_skin(position, s):
        return {order.index(joint): weight for joint, weight in in_chain(position, s).items()}

    mesh = add_arm(document, arm_meshes(3.0, in_skin), UNSIGNED_SHORT, UNSIGNED_SHORT)
    chain = add_chain(document, [{"translation": [float(i > 0), 0.0, 0.0]} for i in range(3)])
    skin = add_skin(document, [chain[i] for i in order], [matrix((float(i), 0.0, 0.0)) for i in order])
    document.scene([document.node("arm", mesh=mesh, skin=skin), chain[0]])
    times = (0.0, 0.5, 1.0, 1.5)
    document.animation("flex", [
        (chain[0], "scale", times, [(1.0, 1.0, 1.0), (1.0, 1.4, 0.8), (1.3, 0.9, 1.1), (1.0, 1.0, 1.0)]),
        (chain[1], "rotation", times, swing(Z, 0, 70, 120, 0)),
        (chain[1], "scale", times, [(1.0, 1.0, 1.0), (0.8, 1.6, 1.6), (1.2, 1.2, 1.2), (1.0, 1.0, 1.0)]),
        (chain[2], "rotation", times, swing(Y, 0, -40, 30, 0)),
        (chain[2], "scale", (0.0, 0.75, 1.5), [(1.0, 1.0, 1.0), (1.8, 1.8, 1.8), (1.0, 1.0, 1.0)])])
    save(document, "skin16bit")


def skin_without_inverse_bind():
    document = new_document()
    mesh = add_arm(document, arm_meshes(3.0, along_chain((0.8, 1.8), 0.6)))
    # with identity binds the joints turn the whole arm about their own places: it curls up like a shell
    joints = add_chain(document, [{"translation": [0.0, 0.5, 0.0]}, {"rotation": quaternion(Z, 0.1)}, {}])
    skin = add_skin(document, joints)
    document.scene([document.node("arm", mesh=mesh, skin=skin), joints[0]])
    times = (0.0, 0.5, 1.0)
    document.animation("curl", [(joint, "rotation", times, swing((0.0, 0.2, 1.0), 6, 30, 6)) for joint in joints])
    save(document, "skinNoInverseBind")


def skin_with_many_bones():
    count, step = 300, 0.1
    length = count * step

    def nearest(position, _):
        place = min(max(position[0] / step - 0.5, 0.0), count - 1.001)
        return {int(place): 1.0 - place % 1.0, int(place) + 1: place % 1.0}

    document = new_document()
    worm = Mesh()
    worm.add_tube(tube([(0.0, 0.0, 0.0), (length, 0.0, 0.0)], [0.8, 0.5], caps=(0.03, 0.03)),
                  110, 6, coordinates, nearest)
    surface = material(document, "worm", (0.75, 0.35, 0.40, 1.0))
    mesh = document.add("meshes", name="worm", primitives=[
        skinned_primitive(document, worm, surface, UNSIGNED_SHORT, FLOAT)])
    joints = add_chain(document, [{"translation": [step if i else 0.0, 0.0, 0.0]} for i in range(count)])
    skin = add_skin(document, joints, [matrix((i * step, 0.0, 0.0)) for i in range(count)])
    document.scene([document.node("worm", mesh=mesh, skin=skin), joints[0]])
    times = [0.25 * key for key in range(9)]
    document.animation("wriggle", [
        (joints[i], "rotation", times,
         swing(Y, *(25.0 * math.sin(math.pi * (key % 8) / 4 - i / 20) for key in range(9))))
        for i in range(0, count, 10)])
    save(document, "skinManyBones")


def with_tangents(values, slopes):
    """Rows of a cubic spline: for each key the slope before it, the value, and the slope after it."""
    return [row for value, slope in zip(values, slopes) for row in (slope, value, slope)]


def skin_with_cubic_spline():
    document = new_document()
    mesh = add_arm(document, arm_meshes(3.0, along_chain((1.0, 2.0), 0.6)))
    joints = add_chain(document, [{"translation": [float(i > 0), 0.0, 0.0]} for i in range(3)])
    skin = add_skin(document, joints, [matrix((float(i), 0.0, 0.0)) for i in range(3)])
    document.scene([document.node("arm", mesh=mesh, skin=skin), joints[0]])
    times = (0.0, 0.4, 1.0, 1.6)
    bends = swing(Z, 0, 60, -30, 0)
    slopes = [(0.0, 0.0, 1.2, 0.0), (0.1, 0.0, 0.3, -0.2), (0.0, -0.4, -0.5, 0.3), (0.0, 0.0, 0.0, 0.0)]
    hops = [(0.0, 0.0, 0.0), (0.0, 1.0, 0.2), (0.5, 0.3, 0.0), (0.0, 0.0, 0.0)]
    speeds = [(0.0, 4.0, 0.0), (1.0, 0.0, 0.0), (-1.0, -1.0, 0.5), (0.0, 0.0, 0.0)]
    growths = [(1.0, 1.0, 1.0), (1.5, 0.7, 1.0), (1.0, 1.2, 1.4), (1.0, 1.0, 1.0)]
    document.animation("spring", [
        (joints[0], "translation", times, with_tangents(hops, speeds), "CUBICSPLINE"),
        (joints[1], "rotation", times, with_tangents(bends, slopes), "CUBICSPLINE"),
        (joints[2], "rotation", times, swing(Y, 0, 45, -45, 20), "STEP"),
        (joints[2], "translation", times, [add(X, (0.0, y, 0.0)) for y in (0.0, 0.3, -0.3, 0.1)], "STEP"),
        (joints[2], "scale", times, growths, "STEP")])
    save(document, "skinCubic")


def skin_with_six_influences():
    def wide(position, _):
        weights = {i: math.exp(-((position[0] - i * 0.6) / 1.1) ** 2) for i in range(6)}
        return {i: weight for i, weight in weights.items() if weight > 0.02}

    document = new_document()
    mesh = add_arm(document, arm_meshes(3.0, wide), sets=2)
    joints = add_chain(document, [{"translation": [0.6 if i else 0.0, 0.0, 0.0]} for i in range(6)])
    skin = add_skin(document, joints, [matrix((0.6 * i, 0.0, 0.0)) for i in range(6)])
    document.scene([document.node("arm", mesh=mesh, skin=skin), joints[0]])
    times = (0.0, 0.5, 1.0)
    document.animation("bend", [(joint, "rotation", times, swing((0.0, 0.1 * i, 1.0), 0, 10 + 6 * i, 0))
                                for i, joint in enumerate(joints)])
    save(document, "skinSixInfluences")


def main():
    for write in (skin_8_bit, skin_16_bit, skin_without_inverse_bind, skin_with_many_bones, skin_with_cubic_spline,
                  skin_with_six_influences):
        write()


if __name__ == "__main__":
    main()
