#pragma once

#include <vector>

#include "mesh/CellMesh.h"
#include "partition/MeshPart.h"

namespace weldline::test {

// A block of nx * ny * nz unit cubes (nx at least 3), corner at the origin, in which every cell
// kind occurs and all faces fit:
//  - the last cube along x is six tetrahedra around its diagonal;
//  - the one before is a polyhedron, with two triangles towards the tetrahedra;
//  - all others are hexahedra, six pyramids around the middle, polyhedra with six quadrilaterals,
//    or, as whole columns along z, two wedges; a hash of place and seed decides.
// Points inside the block are moved by up to `jitter` along each axis, the same for equal seeds.
CellMesh gridMesh(int nx, int ny, int nz, double jitter, unsigned seed);

// The same block out of hexahedra alone.
CellMesh hexahedraMesh(int nx, int ny, int nz);

// A part that is the whole mesh, as one process reads it: numbers are places. Its patches are the
// boundary faces at x = 0 ("gate"), at the largest x ("vent") and at y = 0 ("symmetry").
MeshPart wholePart(CellMesh mesh);

// A fill time per cell: streams from both ends of the x axis meet in the middle, where some cells
// are never reached (0). Times are above 0 and differ from cell to cell.
std::vector<float> meetingStreams(const CellMesh& mesh);

// Uniform from 0 to 1, by hashing: the same everywhere.
double hashed(unsigned a, unsigned b, unsigned c, unsigned seed);

}  // namespace weldline::test
