"""Closed tubes: surfaces of a place along them, s from 0 to 1, and an angle, and the triangles that cover them."""

import math

from transforms import add, cross, normalise, scale, subtract


def catmull_rom(points, t):
    """A smooth curve through `points` for t from 0 to their number minus 1."""
    i = min(int(t), len(points) - 2)
    a, b, c, d = (points[min(max(k, 0), len(points) - 1)] for k in range(i - 1, i + 3))
    f = t - i
    return tuple(q + 0.5 * f * (r - p + f * (2 * p - 5 * q + 4 * r - s + f * (3 * (q - r) + s - p)))
                 for p, q, r, s in zip(a, b, c, d))


def rounding(distance, length, power):
    """The share of the full radius at `distance` from the pole of a cap of the given length."""
    if distance >= length:
        return 1.0
    return (1.0 - (1.0 - max(distance, 0.0) / length) ** power) ** (1.0 / power)


def tube(centres, radii, flatness=1.0, caps=(0.12, 0.12)):
    """A surface around a smooth curve through `centres`, nowhere vertical: flattened in height, rounded at its ends."""
    def surface(s, angle):
        last = len(centres) - 1
        centre = catmull_rom(centres, s * last)
        ahead = catmull_rom(centres, min(s + 0.01, 1.0) * last)
        behind = catmull_rom(centres, max(s - 0.01, 0.0) * last)
        along = normalise(subtract(ahead, behind))
        side = normalise(cross(along, (0.0, 1.0, 0.0)))
        up = cross(side, along)
        radius = catmull_rom([(r,) for r in radii], s * (len(radii) - 1))[0]
        radius *= rounding(s, caps[0], 2.0) * rounding(1.0 - s, caps[1], 2.0)
        return add(centre, add(scale(side, radius * math.sin(angle)),
                               scale(up, -radius * flatness * math.cos(angle))))
    return surface


class Mesh:
    """Triangles of one material; each vertex carries what the skeleton needs to bind it."""

    def __init__(self):
        self.positions, self.coordinates, self.bindings, self.indices = [], [], [], []

    def add_tube(self, surface, rings, segments, coordinates, binding, mirrored=False):
        """`coordinates(s, u)` maps to the texture; `binding(position, s)` tells bones and weights."""
        def vertex(s, u):
            x, y, z = surface(s, 2 * math.pi * u)
            position = (-x, y, z) if mirrored else (x, y, z)
            self.positions.append(position)
            self.coordinates.append(coordinates(s, u))
            self.bindings.append(binding(position, s))
            return len(self.positions) - 1

        def triangle(a, b, c):
            self.indices += (a, c, b) if mirrored else (a, b, c)

        levels = [(i + 1) / (rings + 1) for i in range(rings)]
        grid = [[vertex(s, j / segments) for j in range(segments + 1)] for s in levels]
        for j in range(segments):
            middle = (j + 0.5) / segments
            triangle(vertex(0.0, middle), grid[0][j], grid[0][j + 1])
            triangle(grid[-1][j], vertex(1.0, middle), grid[-1][j + 1])
            for upper, lower in zip(grid, grid[1:]):
                triangle(upper[j], lower[j], upper[j + 1])
                triangle(lower[j], lower[j + 1], upper[j + 1])

    def normals(self):
        """Averages over the faces at a place, so that seams of the texture do not show."""
        def place(index):
            return tuple(round(component, 6) for component in self.positions[index])
        sums = {}
        for corner in range(0, len(self.indices), 3):
            triple = self.indices[corner:corner + 3]
            a, b, c = (self.positions[index] for index in triple)
            face = cross(subtract(b, a), subtract(c, a))
            for index in triple:
                sums[place(index)] = add(sums.get(place(index), (0.0, 0.0, 0.0)), face)
        return [normalise(sums[place(index)]) for index in range(len(self.positions))]
