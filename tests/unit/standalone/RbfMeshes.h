#pragma once

#include <vector>

#include "TestHost.h"

namespace weldline::test {

// Polyhedral cells by their face polygons (nodes 0-based); cells that share a polygon are
// neighbours.
struct FaceCells {
    std::vector<Point> nodes;
    std::vector<std::vector<std::vector<int>>> cells;
};

// nx * ny * nz cubes of edge 1, corner at the origin. Nodes inside the block are moved by up to
// `jitter` per axis, the same for the same counts.
FaceCells hexahedra(int nx, int ny, int nz, double jitter);

// The same cubes, each cut into six tetrahedra around its diagonal.
FaceCells tetrahedra(int nx, int ny, int nz, double jitter);

// Adds the cells to the host and finishes it: centres are means of the nodes, every coordinate is
// multiplied by `scale` and then moved by `shift`. Volumes and areas, which no stencil reads, are
// NaN. Boundary faces become wall faces.
void fillHost(TestHost& host, const FaceCells& cells, double scale = 1.0, Point shift = {0, 0, 0});

}  // namespace weldline::test
