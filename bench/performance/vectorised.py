#!/usr/bin/env python3
"""The default configuration (method 4, gradient method 3) with NumPy and SciPy on one core.

    vectorised.py FOLDER

Reads the arrays that weldline_write_arrays left in FOLDER, calculates the meeting angles and
compares them with those of the library. Prints the processor time of the calculation in
milliseconds. Exit code 1 when the angles differ: then the times are not of the same work.
"""

import os

for variable in ("OMP_NUM_THREADS", "OPENBLAS_NUM_THREADS", "MKL_NUM_THREADS"):
    os.environ[variable] = "1"

import pathlib
import sys
import time

import numpy as np
from scipy import sparse

EPS = 1e-30
FLAT = 0.001
PI = 3.14159265
INLET = 1
PASSES_BEFORE = 2
PASSES_AFTER = 20
TRUNCATE_ANGLE = 145.0
BOUNDARY_ANGLE = 120.0

# Rounding decides here and there whether a pair counts.
ANGLE_TOLERANCE = 1e-6
NODES_THAT_MAY_DIFFER = 1e-4


class Mesh:
    """Cells and, behind them, one slot per boundary face."""

    def __init__(self, folder):
        def load(name):
            return np.fromfile(folder / name, dtype=name.rsplit(".", 1)[1])

        self.owner = load("owner.int32")
        self.neighbour = load("neighbour.int32")
        self.lambda_ = load("lambda.float64")
        self.area = load("face_area.float64").reshape(-1, 3).T.copy()
        self.face_centre = load("face_centre.float64").reshape(-1, 3).T.copy()
        self.face_node_offsets = load("face_node_offsets.int64")
        self.face_nodes = load("face_nodes.int32")
        self.cell_node_offsets = load("cell_node_offsets.int64")
        self.cell_nodes = load("cell_nodes.int32")
        self.centre = load("cell_centre.float64").reshape(-1, 3).T.copy()
        self.volume = load("cell_volume.float64")
        self.fill_time = load("fill_time.float32").astype(np.float64)
        self.copied = load("boundary_kind.uint8") != INLET
        self.angles = load("angles.float64")
        self.cells = len(self.volume)
        self.inner = len(self.neighbour)
        self.slots = self.cells + len(self.owner) - self.inner
        self.first = self.owner[: self.inner]
        self.boundary_cell = self.owner[self.inner :]
        self.boundary_slot = np.arange(self.cells, self.slots, dtype=np.int32)


def smoothing(mesh, takes_part):
    """The matrix of one pass over all slots, and the slots that take their cell's new value."""
    length = np.sqrt((mesh.area**2).sum(axis=0))
    inner = takes_part[mesh.first] & takes_part[mesh.neighbour]
    a, b = mesh.first[inner], mesh.neighbour[inner]
    size, part = length[: mesh.inner][inner], mesh.lambda_[inner]
    border = takes_part[mesh.boundary_cell] & takes_part[mesh.boundary_slot]
    c, s = mesh.boundary_cell[border], mesh.boundary_slot[border]
    border_size = length[mesh.inner :][border]
    # An inner face gives both cells its value; a boundary face gives both its slot's.
    rows = np.concatenate([a, a, b, b, c, s])
    columns = np.concatenate([a, b, a, b, s, s])
    own, other = (1 - part) * size, part * size
    values = np.concatenate([own, other, own, other, border_size, border_size])
    weight = np.bincount(rows, values, mesh.slots)
    matrix = sparse.csr_matrix((values, (rows, columns)), (mesh.slots, mesh.slots))
    scaled = sparse.diags(1 / (weight + EPS)) @ matrix
    return sparse.csr_matrix(scaled), mesh.boundary_slot[mesh.copied], mesh.boundary_cell[mesh.copied]


def smooth(smoother, values, passes):
    matrix, slots, cells = smoother
    for _ in range(passes):
        values = matrix @ values
        values[slots] = values[cells]
    return values


def upwind_gradient(mesh, phi):
    a, b = mesh.first, mesh.neighbour
    pa, pb = phi[a], phi[b]
    empty = (pa < EPS) | (pb < EPS)
    lower = np.minimum(pa, pb)
    qa, qb = np.where(empty, pa, lower), np.where(empty, pb, lower)
    cells = np.concatenate([a, b, mesh.boundary_cell])
    q = np.concatenate([qa, -qb, phi[mesh.boundary_cell]])
    gradient = np.zeros((3, mesh.slots))
    for g, area in zip(gradient, mesh.area):
        inner = area[: mesh.inner]
        terms = np.concatenate([inner, inner, area[mesh.inner :]]) * q
        g[: mesh.cells] = np.bincount(cells, terms, mesh.cells) / mesh.volume
    gradient[:, mesh.boundary_slot] = gradient[:, mesh.boundary_cell]
    return gradient


def displacements(mesh):
    inner = mesh.centre[:, mesh.neighbour] - mesh.centre[:, mesh.first]
    border = mesh.face_centre[:, mesh.inner :] - mesh.centre[:, mesh.boundary_cell]
    return np.concatenate([inner, inner, border], axis=1)


def least_squares_gradient(mesh, phi, d):
    cells = np.concatenate([mesh.first, mesh.neighbour, mesh.boundary_cell])
    rise = phi[mesh.neighbour] - phi[mesh.first]
    rise = np.concatenate([rise, rise, phi[mesh.boundary_slot] - phi[mesh.boundary_cell]])

    def moment(u, v):
        return np.bincount(cells, u * v, mesh.cells)

    x, y, z = d
    a = [[moment(x, x), moment(x, y), moment(x, z), moment(rise, x)],
         [None, moment(y, y), moment(y, z), moment(rise, y)],
         [None, None, moment(z, z), moment(rise, z)]]
    a[1][0], a[2][0], a[2][1] = a[0][1].copy(), a[0][2].copy(), a[1][2].copy()
    for k in range(2):
        for r in range(k + 1, 3):
            factor = a[r][k] / a[k][k]
            for j in range(k + 1, 4):
                a[r][j] = a[r][j] - factor * a[k][j]
    gradient = np.zeros((3, mesh.slots))
    gz = a[2][3] / a[2][2]
    gy = (a[1][3] - gz * a[1][2]) / a[1][1]
    gx = (a[0][3] - gy * a[0][1] - gz * a[0][2]) / a[0][0]
    gradient[:, : mesh.cells] = gx, gy, gz
    return gradient


def is_singular(mesh, d):
    cells = np.concatenate([mesh.first, mesh.neighbour, mesh.boundary_cell])
    xx = np.bincount(cells, d[0] * d[0], mesh.cells)
    yy = np.bincount(cells, d[1] * d[1], mesh.cells)
    xy = np.bincount(cells, d[0] * d[1], mesh.cells)
    return bool(np.any((xx == 0) | (yy - xy / xx * xy == 0)))


def length(v):
    return np.sqrt((v * v).sum(axis=0))


def zero_flat(mesh, gradient, flat):
    zeroed = length(gradient[:, : mesh.cells]) < FLAT
    gradient[:, : mesh.cells][:, zeroed] = 0
    flat[: mesh.cells] |= zeroed


def pair_angles(mesh, gradient, phi, flat):
    """Faces whose two cells meet, and their angles."""
    a, b = mesh.first, mesh.neighbour
    reached = (phi > EPS) & ~flat
    candidate = reached[a] & reached[b]
    candidate &= ~np.all(gradient[:, a] * gradient[:, b] > 0, axis=0)
    face = np.flatnonzero(candidate)
    a, b = a[face], b[face]
    ga, gb = gradient[:, a], gradient[:, b]
    ma, mb = length(ga), length(gb)
    limit = np.cos(BOUNDARY_ANGLE * PI / 180)
    centre = mesh.face_centre[:, face]

    def points_there(g, m, c):
        way = centre - mesh.centre[:, c]
        return (g * way).sum(axis=0) / (length(way) * m + EPS) > limit

    keep = points_there(ga, ma, a) & points_there(gb, mb, b)
    distance = length(mesh.centre[:, a] - mesh.centre[:, b])
    steeper = ma > mb
    fa = np.where(steeper, 1, ma / (mb + EPS))
    fb = np.where(steeper, mb / (ma + EPS), 1)
    pa = mesh.centre[:, a] + ga / ma * (distance * 0.5 * fa)
    pb = mesh.centre[:, b] + gb / mb * (distance * 0.5 * fb)
    keep &= distance > length(pa - pb)
    cosine = np.clip((ga * gb).sum(axis=0) / (ma * mb + EPS), -1, 1)
    theta = np.arccos(cosine) * 180 / PI
    keep &= theta >= 180 - TRUNCATE_ANGLE
    return face[keep], theta[keep]


def node_angles(mesh, face, theta):
    begin = mesh.face_node_offsets[face]
    count = mesh.face_node_offsets[face + 1] - begin
    place = np.arange(count.sum()) + np.repeat(begin - np.cumsum(count) + count, count)
    largest = np.zeros(len(mesh.angles))
    np.maximum.at(largest, mesh.face_nodes[place], np.repeat(theta, count))
    return 180 - largest


def truncate(mesh, angle):
    angle[angle >= TRUNCATE_ANGLE] = 180
    below = angle < TRUNCATE_ANGLE
    sizes = np.diff(mesh.cell_node_offsets)
    in_cell = np.add.reduceat(below[mesh.cell_nodes], mesh.cell_node_offsets[:-1], dtype=np.int32)
    others = np.repeat(in_cell, sizes) - below[mesh.cell_nodes]
    kept = np.zeros(len(angle), dtype=bool)
    kept[mesh.cell_nodes[others > 0]] = True
    angle[~kept] = 180
    return angle


def calculate(mesh):
    loaded = np.concatenate([mesh.fill_time, mesh.fill_time[mesh.boundary_cell]])
    reached = loaded >= EPS
    phi = smooth(smoothing(mesh, reached), loaded, PASSES_BEFORE)

    flat = np.zeros(mesh.slots, dtype=bool)
    first = upwind_gradient(mesh, phi)
    zero_flat(mesh, first, flat)
    d = displacements(mesh)
    if is_singular(mesh, d):
        sys.exit("vectorised.py: the mesh is singular; this script has no RBF gradient")
    second = least_squares_gradient(mesh, phi, d)
    zero_flat(mesh, second, flat)

    smoother = smoothing(mesh, reached & ~flat)
    both = [smooth(smoother, g, PASSES_AFTER) for g in (*first, *second)]
    gradient = np.array(both[3:])
    return truncate(mesh, node_angles(mesh, *pair_angles(mesh, gradient, phi, flat)))


def main():
    mesh = Mesh(pathlib.Path(sys.argv[1]))
    start = time.process_time()
    with np.errstate(divide="ignore", invalid="ignore"):
        angles = calculate(mesh)
    milliseconds = 1e3 * (time.process_time() - start)
    different = np.mean(np.abs(angles - mesh.angles) > ANGLE_TOLERANCE)
    if different > NODES_THAT_MAY_DIFFER or np.all(angles == 180):
        sys.exit(f"vectorised.py: {100 * different:.3f} % of the nodes have other angles")
    print(f"{milliseconds:.3f}")


if __name__ == "__main__":
    main()
