#!/usr/bin/env python3
"""Writes the test models without skins beside it, each for one corner of the format. The same bytes on every run."""

import math

from modelParts import Y, Z, material, new_document, save, swing  # puts Assets on the search path
from gltfDocument import LINE_LOOP, LINE_STRIP, LINES, POINTS
from pngFile import encode_png
from transforms import column_major, matrix, quaternion, smooth_step


def box(document, surface, size, centre=(0.0, 0.0, 0.0)):
    """A primitive with flat sides."""
    positions, normals, indices = [], [], []
    for axis in range(3):
        for sign in (-1.0, 1.0):
            first = len(positions)
            for a, b in ((-1, -1), (1, -1), (1, 1), (-1, 1)):
                corner = [0.0, 0.0, 0.0]
                corner[axis], corner[(axis + 1) % 3], corner[(axis + 2) % 3] = sign, a, b
                positions.append(tuple(c + 0.5 * s * k for c, s, k in zip(centre, size, corner)))
                normals.append(tuple(sign if i == axis else 0.0 for i in range(3)))
            order = (0, 1, 2, 0, 2, 3) if sign > 0 else (0, 2, 1, 0, 3, 2)
            indices += [first + k for k in order]
    return {"attributes": {"POSITION": document.positions(positions), "NORMAL": document.attribute(normals)},
            "indices": document.indices(indices), "material": surface}


def rigid():
    document = new_document()
    steel = material(document, "steel", (0.55, 0.60, 0.65, 1.0))
    paint = material(document, "paint", (0.90, 0.65, 0.10, 1.0))

    def part(name, *shape):
        return document.add("meshes", name=name, primitives=[box(document, *shape)])

    pillar = part("pillar", steel, (0.4, 2.0, 0.4), (0.0, 1.0, 0.0))
    jib = part("jib", paint, (2.0, 0.25, 0.25), (1.0, 0.0, 0.0))
    hook = part("hook", steel, (0.3, 0.3, 0.3))
    hook_node = document.node("hook", mesh=hook, matrix=column_major(
        matrix((1.8, -0.7, 0.0), quaternion(Y, 0.6), (1.0, 1.5, 1.0))))
    jib_node = document.node("jib", mesh=jib, translation=[0.0, 2.0, 0.0], rotation=quaternion(Z, 0.3),
                             children=[hook_node])
    base = document.node("crane", mesh=pillar, scale=[1.5, 0.75, 1.0], children=[jib_node])
    document.scene([base])
    document.animation("lift", [
        (base, "rotation", (0.0, 1.0, 2.0), swing(Y, 0, 90, 0)),
        (jib_node, "rotation", (0.0, 0.5, 1.0, 2.0), swing(Z, 17, 45, -10, 17)),
        (jib_node, "scale", (0.0, 1.0, 2.0), [(1.0, 1.0, 1.0), (1.4, 1.0, 0.8), (1.0, 1.0, 1.0)])])
    save(document, "rigid")


def mirrored():
    document = new_document()
    paint = material(document, "paint", (0.75, 0.30, 0.25, 1.0))
    letter = document.add("meshes", name="letter L", primitives=[
        box(document, paint, (0.3, 1.6, 0.3), (0.15, 0.8, 0.0)),
        box(document, paint, (0.7, 0.3, 0.5), (0.65, 0.15, 0.1))])
    twice = document.node("mirrored twice", mesh=letter, translation=[0.0, 2.0, 0.0], scale=[-1.0, 1.0, 1.0])
    document.scene([
        document.node("plain", mesh=letter, translation=[0.25, 0.0, 0.0]),
        document.node("mirrored", mesh=letter, translation=[-0.25, 0.0, 0.0], scale=[-1.0, 1.0, 1.0],
                      children=[twice]),
        document.node("through its origin", mesh=letter, translation=[3.0, 1.6, 0.0], scale=[-1.0, -1.0, -1.0])])
    save(document, "mirrored")


def lines():
    document = new_document()
    inks = [material(document, name, colour) for name, colour in (
        ("red", (0.9, 0.1, 0.1, 1.0)), ("green", (0.1, 0.7, 0.2, 1.0)), ("blue", (0.1, 0.3, 0.9, 1.0)))]
    corners = [(float(x), float(y), float(z)) for x in (-1, 1) for y in (-1, 1) for z in (-1, 1)]
    edges = [end for a in range(8) for bit in (1, 2, 4) if not a & bit for end in (a, a | bit)]
    helix = [(math.cos(0.3 * i), -1.0 + 2.0 * i / 63, math.sin(0.3 * i)) for i in range(64)]
    circle = [(1.5 * math.cos(math.pi * i / 16), 0.0, 1.5 * math.sin(math.pi * i / 16)) for i in range(32)]
    primitives = [
        {"attributes": {"POSITION": document.positions(corners)}, "indices": document.indices(edges), "mode": LINES},
        {"attributes": {"POSITION": document.positions(helix)}, "mode": LINE_STRIP},
        {"attributes": {"POSITION": document.positions(circle)}, "indices": document.indices(range(32)),
         "mode": LINE_LOOP}]
    for primitive, ink in zip(primitives, inks):
        primitive["material"] = ink
    document.scene([document.node("wires", mesh=document.add("meshes", name="wires", primitives=primitives))])
    save(document, "lines")


def points():
    document = new_document()
    spiral = [(0.02 * i * math.cos(2.4 * i), 0.0, 0.02 * i * math.sin(2.4 * i)) for i in range(64)]
    cloud = document.add("meshes", name="cloud", primitives=[
        {"attributes": {"POSITION": document.positions(spiral)}, "mode": POINTS}])
    document.scene([document.node("cloud", mesh=cloud)])
    save(document, "points")


def unlit():
    document = new_document()
    document.json["extensionsUsed"] = ["KHR_materials_unlit"]
    side = 32

    def glow(column, row):
        distance = math.hypot(column - 15.5, row - 15.5) / 16.0
        return (255, 120 + 4 * row, 40, int(255 * smooth_step(1.0, 0.3, distance) + 0.5))

    picture = encode_png([[glow(column, row) for column in range(side)] for row in range(side)])
    image = document.add("images", name="glow", mimeType="image/png", bufferView=document.view(picture))
    texture = document.add("textures", source=image)
    marked = {"KHR_materials_unlit": {}}
    wall = material(document, "wall", (0.10, 0.15, 0.30, 1.0), extensions=marked)
    glass = document.add("materials", name="glow", alphaMode="BLEND", doubleSided=True, extensions=marked,
                         pbrMetallicRoughness={"baseColorTexture": {"index": texture}, "metallicFactor": 0.0})
    quad = {"attributes": {
        "POSITION": document.positions([(-1.0, -1.0, 0.5), (1.0, -1.0, 0.5), (1.0, 1.0, 0.5), (-1.0, 1.0, 0.5)]),
        "NORMAL": document.attribute([Z] * 4),
        "TEXCOORD_0": document.attribute([(0.0, 1.0), (1.0, 1.0), (1.0, 0.0), (0.0, 0.0)])},
        "indices": document.indices([0, 1, 2, 0, 2, 3]), "material": glass}
    lamp = document.add("meshes", name="lamp", primitives=[box(document, wall, (1.2, 1.2, 0.4)), quad])
    document.scene([document.node("lamp", mesh=lamp)])
    save(document, "unlit")


def main():
    for write in (rigid, mirrored, lines, points, unlit):
        write()


if __name__ == "__main__":
    main()
