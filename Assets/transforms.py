"""Vectors, quaternions (x, y, z, w) and affine 4x4 matrices (lists of rows) for the model scripts."""

import math


def add(a, b):
    return tuple(x + y for x, y in zip(a, b))


def subtract(a, b):
    return tuple(x - y for x, y in zip(a, b))


def scale(a, factor):
    return tuple(x * factor for x in a)


def mix(a, b, t):
    return tuple(x + (y - x) * t for x, y in zip(a, b))


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def normalise(a):
    return scale(a, 1.0 / math.sqrt(dot(a, a)))


def smooth_step(low, high, value):
    t = min(1.0, max(0.0, (value - low) / (high - low)))
    return t * t * (3.0 - 2.0 * t)


def quaternion(axis, angle):
    """Rotation by `angle` radians about `axis`, counter-clockwise when the axis points at the viewer."""
    return scale(normalise(axis), math.sin(angle / 2)) + (math.cos(angle / 2),)


def conjugate(q):
    return (-q[0], -q[1], -q[2], q[3])


def compose(*rotations):
    """The rotation that applies the last of `rotations` first."""
    result = (0.0, 0.0, 0.0, 1.0)
    for q in rotations:
        vector = add(add(scale(q[:3], result[3]), scale(result[:3], q[3])), cross(result[:3], q[:3]))
        result = vector + (result[3] * q[3] - dot(result[:3], q[:3]),)
    return normalise(result)


def rotate(q, vector):
    twice = scale(cross(q[:3], vector), 2.0)
    return add(add(vector, scale(twice, q[3])), cross(q[:3], twice))


def quaternion_from_z(direction):
    """A rotation that takes +z to `direction`."""
    direction = normalise(direction)
    if direction[2] < -0.999999:
        return (0.0, 1.0, 0.0, 0.0)
    return normalise(cross((0.0, 0.0, 1.0), direction) + (1.0 + direction[2],))


def matrix(translation=(0.0, 0.0, 0.0), rotation=(0.0, 0.0, 0.0, 1.0), scaling=(1.0, 1.0, 1.0)):
    columns = [scale(rotate(rotation, axis), factor)
               for axis, factor in zip(((1.0, 0.0, 0.0), (0.0, 1.0, 0.0), (0.0, 0.0, 1.0)), scaling)]
    return [[columns[0][i], columns[1][i], columns[2][i], translation[i]] for i in range(3)] + [[0.0, 0.0, 0.0, 1.0]]


def multiply(a, b):
    return [[sum(a[i][k] * b[k][j] for k in range(4)) for j in range(4)] for i in range(4)]


def inverse(m):
    """Inverse of an affine matrix."""
    rows = [m[i][:3] for i in range(3)]
    determinant = dot(rows[0], cross(rows[1], rows[2]))
    columns = [scale(cross(rows[(i + 1) % 3], rows[(i + 2) % 3]), 1.0 / determinant) for i in range(3)]
    linear = [[columns[j][i] for j in range(3)] for i in range(3)]
    return [linear[i] + [-dot(linear[i], [m[j][3] for j in range(3)])] for i in range(3)] + [[0.0, 0.0, 0.0, 1.0]]


def column_major(m):
    return tuple(m[i][j] for j in range(4) for i in range(4))
