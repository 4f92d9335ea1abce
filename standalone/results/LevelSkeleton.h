#pragma once

#include <vector>

#include "mesh/Rows.h"
#include "mesh/Vec3.h"

namespace weldline {

// Places and the links between them; a link stands in the rows of both its ends. 0-based.
struct PointGraph {
    std::vector<Vec3> places;
    Rows links;

    int count() const { return static_cast<int>(places.size()); }
};

// A polyline through a graph. Each point stands for a set of the graph's nodes.
struct SkeletonCurve {
    std::vector<Vec3> points;             // ordered; of a closed curve the first stands once
    std::vector<std::vector<int>> nodes;  // per point
    bool isClosed = false;
};

// Median length of the links; 0 without links.
double typicalLinkLength(const PointGraph& graph);

// The curves along the middle of a connected band of nodes, whatever its width: the longest first,
// then its branches. Branches no longer than the band is wide are left out. A single node gives a
// curve of one point, more nodes at least two points.
//
// The nodes are sorted by their distance along links from one end of the band, cut into slices of
// two link lengths, and each connected part of a slice becomes the mean of its nodes (level-set
// diagram; Lazarus and Verroust, 1999). At free ends the curve reaches as far as the nodes do.
std::vector<SkeletonCurve> skeletonOf(const PointGraph& graph);

}  // namespace weldline
