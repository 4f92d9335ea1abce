#include "SideOrientation.h"

#include <algorithm>
#include <tuple>

#include "PolygonGeometry.h"

namespace weldline {
namespace {

// A polygon's way along an edge.
struct EdgeUse {
    int low;
    int high;
    int side;      // within the cell
    bool forward;  // from low to high as given
    bool operator<(const EdgeUse& other) const {
        return std::tie(low, high, side) < std::tie(other.low, other.high, other.side);
    }
};

// Sets of sides whose orientations hang together: a union-find forest in which every side knows
// whether it has to be turned relative to its parent.
class TurnForest {
  public:
    void reset(int sides) {
        parent_.resize(static_cast<std::size_t>(sides));
        turned_.assign(static_cast<std::size_t>(sides), 0);
        for (int s = 0; s < sides; ++s) {
            parent_[static_cast<std::size_t>(s)] = s;
        }
    }
    // The root of a side and whether the side is turned relative to it.
    std::pair<int, std::uint8_t> find(int side) const {
        std::uint8_t turned = 0;
        while (parent_[static_cast<std::size_t>(side)] != side) {
            turned ^= turned_[static_cast<std::size_t>(side)];
            side = parent_[static_cast<std::size_t>(side)];
        }
        return {side, turned};
    }
    void unite(int a, int b, bool opposite) {
        const auto [rootA, turnedA] = find(a);
        const auto [rootB, turnedB] = find(b);
        if (rootA != rootB) {
            const int high = std::max(rootA, rootB);
            parent_[static_cast<std::size_t>(high)] = std::min(rootA, rootB);
            turned_[static_cast<std::size_t>(high)] =
                static_cast<std::uint8_t>(turnedA ^ turnedB ^ (opposite ? 1 : 0));
        }
    }

  private:
    std::vector<int> parent_;
    std::vector<std::uint8_t> turned_;
};

// Turns the sides of polyhedra outwards; keeps its working space from cell to cell.
class PolyhedronOrientation {
  public:
    PolyhedronOrientation(const CellMesh& mesh, const CellSides& sides)
        : mesh_(mesh), sides_(sides) {}

    // Leaves the orientation of the cell's sides in `inward`, apart from a common sign.
    void orient(int cell, std::vector<std::uint8_t>& inward) {
        collectEdges(cell);
        std::uint8_t* turned = inward.data() + sides_.first(cell);
        if (isConsistent(turned)) {
            return;
        }
        propagate(cell, turned);
        if (!isConsistent(turned)) {
            turnFromMiddle(cell, turned);
        }
    }

  private:
    void collectEdges(int cell) {
        edges_.clear();
        CellSides::Corners space;
        for (int s = sides_.first(cell); s < sides_.end(cell); ++s) {
            const std::span<const int> corners = sides_.polygon(s, space);
            for (std::size_t i = 0; i < corners.size(); ++i) {
                const int a = corners[i];
                const int b = corners[i + 1 < corners.size() ? i + 1 : 0];
                edges_.push_back({std::min(a, b), std::max(a, b), s - sides_.first(cell), a < b});
            }
        }
        std::sort(edges_.begin(), edges_.end());
    }

    std::size_t endOfEdge(std::size_t begin) const {
        std::size_t end = begin + 1;
        while (end < edges_.size() && edges_[end].low == edges_[begin].low &&
               edges_[end].high == edges_[begin].high) {
            ++end;
        }
        return end;
    }

    // Every edge is run along equally often in both directions.
    bool isConsistent(const std::uint8_t* turned) const {
        for (std::size_t begin = 0; begin < edges_.size();) {
            const std::size_t end = endOfEdge(begin);
            int balance = 0;
            for (std::size_t e = begin; e < end; ++e) {
                const bool forward = edges_[e].forward != (turned[edges_[e].side] != 0);
                balance += forward ? 1 : -1;
            }
            if (balance != 0) {
                return false;
            }
            begin = end;
        }
        return true;
    }

    void propagate(int cell, std::uint8_t* turned) {
        const int sides = sides_.end(cell) - sides_.first(cell);
        forest_.reset(sides);
        for (std::size_t begin = 0; begin < edges_.size();) {
            const std::size_t end = endOfEdge(begin);
            if (end - begin == 2) {
                const EdgeUse& a = edges_[begin];
                const EdgeUse& b = edges_[begin + 1];
                forest_.unite(a.side, b.side, a.forward == b.forward);
            }
            begin = end;
        }
        for (int s = 0; s < sides; ++s) {
            turned[s] = forest_.find(s).second;
        }
    }

    void turnFromMiddle(int cell, std::uint8_t* turned) const {
        CellSides::Corners space;
        Vec3 middle;
        for (int s = sides_.first(cell); s < sides_.end(cell); ++s) {
            middle = middle + polygonGeometry(mesh_.points, sides_.polygon(s, space)).centre;
        }
        middle = (1.0 / (sides_.end(cell) - sides_.first(cell))) * middle;
        for (int s = sides_.first(cell); s < sides_.end(cell); ++s, ++turned) {
            const PolygonGeometry side = polygonGeometry(mesh_.points, sides_.polygon(s, space));
            *turned = dot(side.area, side.centre - middle) < 0.0 ? 1 : 0;
        }
    }

    const CellMesh& mesh_;
    const CellSides& sides_;
    std::vector<EdgeUse> edges_;
    TurnForest forest_;
};

}  // namespace

std::vector<std::uint8_t> orientSides(const CellMesh& mesh, const CellSides& sides) {
    std::vector<std::uint8_t> inward(static_cast<std::size_t>(sides.count()), 0);
    PolyhedronOrientation polyhedra(mesh, sides);
    for (int c = 0; c < mesh.cellCount(); ++c) {
        const CellKind kind = mesh.kinds[static_cast<std::size_t>(c)];
        if (kind != CellKind::Polyhedron && kind != CellKind::Wedge) {
            continue;
        }
        if (kind == CellKind::Polyhedron) {
            polyhedra.orient(c, inward);
        }
        if (signedVolume(mesh, sides, inward, c) < 0.0) {
            for (int s = sides.first(c); s < sides.end(c); ++s) {
                inward[static_cast<std::size_t>(s)] ^= 1U;
            }
        }
    }
    return inward;
}

double signedVolume(const CellMesh& mesh, const CellSides& sides,
                    const std::vector<std::uint8_t>& inward, int cell) {
    CellSides::Corners space;
    const int anyNode = sides.polygon(sides.first(cell), space)[0];
    const Vec3 origin = mesh.points[static_cast<std::size_t>(anyNode)];
    double volume = 0.0;
    for (int s = sides.first(cell); s < sides.end(cell); ++s) {
        const PolygonGeometry side = polygonGeometry(mesh.points, sides.polygon(s, space));
        const double pyramid = dot(side.area, side.centre - origin) / 3.0;
        volume += inward[static_cast<std::size_t>(s)] != 0 ? -pyramid : pyramid;
    }
    return volume;
}

}  // namespace weldline
