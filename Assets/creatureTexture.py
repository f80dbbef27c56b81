"""The creature's texture: painted by place on the unbent form, so that nothing is stretched and no seam shows."""

import math
import random

from creatureShape import EYE_CENTRE, body
from transforms import mix, smooth_step

SIZE = 512

# left, top, right, bottom in texels: what each part has of the picture
BODY_AREA = (0, 4, 512, 388)
LEG_AREA = (4, 396, 252, 508)
GILL_AREA = (260, 396, 508, 508)

_BACK, _FLANK, _BELLY = (38, 132, 150), (104, 214, 200), (255, 242, 216)
_SPOT, _SPECKLE, _EDGE = (10, 32, 58), (255, 214, 110), (255, 172, 96)
_MOUTH, _CHEEK = (60, 30, 52), (255, 150, 132)
_GILL_ROOT, _GILL, _GILL_TIP = (120, 28, 62), (236, 82, 88), (255, 188, 150)
_TOE = (255, 190, 140)


def coordinates_in(area):
    """A map from (s, u), both 0 to 1, to texture coordinates inside `area`."""
    left, top, right, bottom = area
    return lambda s, u: ((left + u * (right - left)) / SIZE, (top + s * (bottom - top)) / SIZE)


def _scatter(count, radii, gap, generator):
    """Discs on the upper body that keep `gap` apart: (centre, radius)."""
    discs = []
    while len(discs) < count:
        s, u = 0.12 + 0.80 * generator.random(), 0.27 + 0.46 * generator.random()
        radius = radii[0] + (radii[1] - radii[0]) * generator.random()
        centre = body(s, 2 * math.pi * u)
        if centre[2] < -0.6:
            radius *= 0.8
        if math.dist((abs(centre[0]), centre[1], centre[2]), EYE_CENTRE) < 0.12 + radius or centre[2] > 0.74:
            continue
        if all(math.dist(centre, other) > radius + size + gap for other, size in discs):
            discs.append((centre, radius))
    return discs


class Painter:
    def __init__(self):
        generator = random.Random(11)
        self._spots = _scatter(54, (0.026, 0.062), 0.022, generator)
        self._speckles = _scatter(110, (0.006, 0.011), 0.030, generator)

    def body_colour(self, s, u):
        angle = 2 * math.pi * u
        place = body(s, angle)
        x, y, z = place
        height = mix((-math.cos(angle),), (y / 0.16,), smooth_step(0.60, 0.78, z))[0]
        colour = mix(_BELLY, _FLANK, smooth_step(-0.62, -0.12, height + 0.06 * math.sin(23 * z)))
        colour = mix(colour, _BACK, smooth_step(0.05, 0.80, height) * 0.9)
        fin = smooth_step(-0.25, -0.65, z)
        colour = mix(colour, _EDGE, fin * smooth_step(0.55, 0.85, abs(height)))
        spotted = max((smooth_step(radius, radius * 0.72, math.dist(place, centre))
                       for centre, radius in self._spots if abs(centre[2] - z) < radius), default=0.0)
        colour = mix(colour, _SPOT, 0.92 * spotted)
        lit = max((smooth_step(radius, radius * 0.5, math.dist(place, centre))
                   for centre, radius in self._speckles if abs(centre[2] - z) < radius), default=0.0)
        colour = mix(colour, _SPECKLE, lit)
        return self._face(colour, abs(x), y, z) if z > 0.4 else colour

    def _face(self, colour, x, y, z):
        around_eye = math.dist((x, y, z), EYE_CENTRE)
        colour = mix(colour, _BELLY, smooth_step(0.112, 0.094, around_eye))
        colour = mix(colour, _SPOT, smooth_step(0.088, 0.078, around_eye))
        cheek = math.dist((x, y, z), (0.285, 0.000, 0.57))
        colour = mix(colour, _CHEEK, 0.85 * smooth_step(0.085, 0.03, cheek))
        smile = -0.040 + 0.75 * x * x
        line = abs(y - smile) + 0.5 * max(0.0, x - 0.245)
        colour = mix(colour, _MOUTH, smooth_step(0.0105, 0.0065, line) * smooth_step(0.655, 0.675, z))
        nostril = math.dist((x, y, z), (0.055, 0.045, 0.855))
        return mix(colour, _MOUTH, smooth_step(0.019, 0.012, nostril))

    @staticmethod
    def leg_colour(s, u):
        height = -math.cos(2 * math.pi * u)
        colour = mix(_BELLY, _FLANK, smooth_step(-0.7, -0.2, height))
        colour = mix(colour, _BACK, 0.6 * smooth_step(0.2, 0.9, height))
        band = max(smooth_step(0.075, 0.05, abs(s - centre)) for centre in (0.42, 0.64))
        colour = mix(colour, _SPOT, 0.9 * band * smooth_step(-0.35, 0.05, height))
        return mix(colour, _TOE, smooth_step(0.74, 0.88, s))

    @staticmethod
    def gill_colour(s, u):
        colour = mix(_GILL_ROOT, _GILL, smooth_step(0.0, 0.45, s))
        return mix(colour, _GILL_TIP, smooth_step(0.6, 1.0, s))


def paint():
    """Rows of (r, g, b) from the top."""
    painter = Painter()
    areas = ((BODY_AREA, painter.body_colour), (LEG_AREA, painter.leg_colour), (GILL_AREA, painter.gill_colour))

    def texel(column, row):
        # a part's own colours continue into the margin around its area, for the coarser levels of detail
        (left, top, right, bottom), colour_at = areas[0 if row < 392 else 1 if column < 256 else 2]
        s = min(1.0, max(0.0, (row + 0.5 - top) / (bottom - top)))
        u = min(1.0, max(0.0, (column + 0.5 - left) / (right - left)))
        return tuple(int(component + 0.5) for component in colour_at(s, u))

    return [[texel(column, row) for column in range(SIZE)] for row in range(SIZE)]
