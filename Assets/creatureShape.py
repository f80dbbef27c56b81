"""The creature's form: closed tubes for the body, legs, toes, gills and eyes, in world units, facing +z."""

import math

from transforms import add, cross, normalise, quaternion, rotate, scale, subtract
from tubeMesh import catmull_rom, rounding, tube

NOSE, TAIL_TIP = 0.86, -1.26

# z, half width, height above and below the centre, sharpness of the ridge above and below (1 is an ellipse)
_PROFILE = (
    (0.86, 0.270, 0.165, 0.125, 0.90, 0.90),
    (0.70, 0.300, 0.195, 0.145, 0.90, 0.90),
    (0.55, 0.300, 0.200, 0.150, 0.90, 0.90),
    (0.43, 0.225, 0.170, 0.145, 0.95, 0.95),
    (0.33, 0.190, 0.155, 0.145, 1.00, 1.00),
    (0.15, 0.205, 0.170, 0.170, 1.00, 1.00),
    (-0.05, 0.215, 0.180, 0.180, 1.15, 1.00),
    (-0.22, 0.180, 0.190, 0.160, 1.60, 1.00),
    (-0.40, 0.125, 0.220, 0.130, 2.30, 1.20),
    (-0.62, 0.080, 0.270, 0.150, 2.50, 1.80),
    (-0.85, 0.055, 0.280, 0.180, 2.30, 2.00),
    (-1.08, 0.038, 0.220, 0.160, 2.00, 1.80),
    (-1.26, 0.024, 0.130, 0.100, 1.60, 1.60),
)

EYE_CENTRE, EYE_RADIUS = (0.228, 0.118, 0.640), 0.068
FILAMENTS = 12


def _profile_at(z):
    for i in range(len(_PROFILE) - 1):
        upper, lower = _PROFILE[i], _PROFILE[i + 1]
        if z >= lower[0] or i == len(_PROFILE) - 2:
            return catmull_rom([row[1:] for row in _PROFILE], i + (upper[0] - z) / (upper[0] - lower[0]))


def body(s, angle):
    """A point of the body: s from 0 (nose) to 1 (tail tip), angle from the belly line towards +x."""
    run = s - 0.35 * math.sin(math.pi * s) / math.pi - 0.55 * math.sin(2 * math.pi * s) / (2 * math.pi)
    z = NOSE + (TAIL_TIP - NOSE) * run
    width, above, below, sharp_above, sharp_below = _profile_at(z)
    cap = rounding(NOSE - z, 0.26, 2.3) * rounding(z - TAIL_TIP, 0.30, 2.0)
    sine, cosine = math.sin(angle), -math.cos(angle)
    height, sharp = (above, sharp_above) if cosine > 0 else (below, sharp_below)
    x = math.copysign(width * cap * abs(sine) ** sharp, sine)
    return (x, cap * height * cosine, z)


def eye(s, angle):
    outward = normalise((0.75, 0.45, 0.35))
    side = normalise(cross(outward, (0.0, 1.0, 0.0)))
    up = cross(side, outward)
    across = math.sin(math.pi * s) * EYE_RADIUS
    return add(EYE_CENTRE, add(scale(outward, -math.cos(math.pi * s) * EYE_RADIUS),
                               add(scale(side, across * math.sin(angle)), scale(up, -across * math.cos(angle)))))


def leg(front):
    """The tubes of the leg on the side of +x: the limb itself, then its toes."""
    z, reach = (0.25, 0.10) if front else (-0.20, 0.07)
    ankle = (0.385, -0.245, z + reach)
    limb = tube([(0.09, -0.06, z), (0.22, -0.09, z), (0.33, -0.15, z - 0.01), ankle],
                [0.074, 0.068, 0.052, 0.050], caps=(0.1, 0.16))
    toes = []
    for turn in (-0.75, 0.0, 0.75):
        forward = rotate(quaternion((0.0, 1.0, 0.0), 0.45 + turn), (0.0, 0.0, 1.0))
        toes.append(tube([add(ankle, add(scale(forward, reach), (0.0, drop, 0.0)))
                          for reach, drop in ((-0.035, 0.022), (0.045, -0.010), (0.115, -0.040))],
                         [0.034, 0.034, 0.027], 0.8, caps=(0.25, 0.35)))
    return limb, toes


def filament_place(index):
    """Where along its gill, from 0 to 1, a filament grows; they stand in pairs."""
    return 0.26 + 0.14 * (index // 2)


def gill(height):
    """The tubes of a gill on the side of +x, height -1, 0 or 1: its stalk, then the filaments along it."""
    direction = normalise((0.84, 0.16 + 0.46 * height, -0.52))
    root = (0.205, 0.045 + 0.055 * height, 0.455 - 0.01 * abs(height))
    length = 0.40 if height == 0 else 0.36
    centres = [add(root, add(scale(direction, length * t), (0.0, 0.13 * t * t, -0.04 * t * t)))
               for t in (0.0, 0.35, 0.7, 1.0)]
    stalk = tube(centres, [0.040, 0.032, 0.022, 0.012], caps=(0.08, 0.08))
    across = normalise(cross(direction, (0.0, 0.25, 1.0)))
    filaments = []
    for i in range(FILAMENTS):
        base = catmull_rom(centres, 3.0 * filament_place(i))
        outward = normalise(add(scale(across, 1.0 if i % 2 else -1.0), scale(direction, 0.6)))
        reach = 0.165 - 0.10 * filament_place(i)
        tip = add(base, add(scale(outward, reach), (0.0, 0.1 * reach, -0.35 * reach)))
        inside = subtract(base, scale(outward, 0.25 * reach))
        filaments.append(tube([inside, add(base, scale(outward, 0.4 * reach)), tip],
                              [0.015, 0.015, 0.011], caps=(0.15, 0.35)))
    return stalk, filaments
