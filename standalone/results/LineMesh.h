#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "FlowDirection.h"
#include "WeldLines.h"
#include "bind/RankPart.h"
#include "mesh/FvMesh.h"

namespace weldline {

// The parts of a mesh that weld lines pass through, cut out of it: what their shape follows from.
// Points ascend by their number in the whole mesh, so that nothing depends on the ranks.
struct LineMesh {
    std::vector<std::int64_t> number;  // per point, 0-based, in the whole mesh
    std::vector<Vec3> points;
    std::vector<int> line;      // per point: id of its weld line; 0 for other corners of faces
    std::vector<double> angle;  // per point, as reported; degrees
    std::vector<double> time;   // per point: formation time; NaN where there is none

    std::vector<std::array<int, 2>> links;  // points of the same line that share a cell; each once
    Rows skin;     // polygons of the part's skin that have a point of a line
    Rows surface;  // polygons of mesh faces across which streams run into each other
};

// Cuts the weld lines out of the parts of a mesh. A mesh face belongs to the surface of a weld line
// where all its nodes are nodes of that line and the flow directions d of its two cells converge:
// (d_owner - d_neighbour) . n >= 0.5 for its unit normal n out of the owner, each of them towards
// the face. So the surface is one face thick, whatever the width of the line. Rank 0 has the
// result, the others nothing. Collective.
LineMesh cutOutLines(const RankPart& part, const FvMesh& mesh, const WeldLines& lines,
                     const std::vector<double>& angles, const std::vector<Vec3>& directions);

}  // namespace weldline
