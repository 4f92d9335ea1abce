#include "SolidMesh.h"

#include <algorithm>
#include <vector>

namespace weldline::accuracy {

namespace {

// Three tetrahedra of a wedge (bottom 0 1 2, top 3 4 5). Every quadrangle is cut along the diagonal
// at its lowest node, so that neighbouring wedges agree.
void addTetrahedra(CellMesh& mesh, std::array<int, 6> w) {
    // Turned, and turned over if need be, until the lowest node stands first.
    const auto lowest = std::min_element(w.begin(), w.end()) - w.begin();
    if (lowest >= 3) w = {w[3], w[5], w[4], w[0], w[2], w[1]};
    while (w[0] != *std::min_element(w.begin(), w.end())) w = {w[1], w[2], w[0], w[4], w[5], w[3]};
    const auto add = [&](int a, int b, int c, int d) {
        const std::array<int, 4> nodes{a, b, c, d};
        mesh.kinds.push_back(CellKind::Tetrahedron);
        mesh.cellNodes.append(nodes);
        mesh.cellPolygons.append({});
    };
    // Both quadrangles at node 0 are cut at it; the third one along 1-5 or 2-4.
    if (std::min(w[1], w[5]) < std::min(w[2], w[4])) {
        add(w[0], w[1], w[2], w[5]);
        add(w[0], w[1], w[5], w[4]);
    } else {
        add(w[0], w[1], w[2], w[4]);
        add(w[0], w[2], w[5], w[4]);
    }
    add(w[0], w[4], w[5], w[3]);
}

class Extrusion {
  public:
    Extrusion(const PlaneMesh& plane, int layers, double h)
        : m_plane(plane), m_points(static_cast<int>(plane.points.size())), m_layers(layers) {
        for (int k = 0; k <= layers; ++k)
            for (const Point2& p : plane.points) m_mesh.points.push_back({p[0], p[1], k * h});
    }

    CellMesh prisms(CellKind kind) {
        for (int k = 0; k < m_layers; ++k)
            for (const std::vector<int>& loop : m_plane.polygons) addPrism(kind, loop, k);
        return std::move(m_mesh);
    }

    CellMesh tetrahedra() {
        for (int k = 0; k < m_layers; ++k)
            for (const std::vector<int>& t : m_plane.polygons)
                addTetrahedra(m_mesh, {at(t[0], k), at(t[1], k), at(t[2], k), at(t[0], k + 1),
                                       at(t[1], k + 1), at(t[2], k + 1)});
        return std::move(m_mesh);
    }

  private:
    int at(int point, int level) const { return level * m_points + point; }

    std::vector<int> lifted(const std::vector<int>& loop, int level) const {
        std::vector<int> nodes;
        nodes.reserve(loop.size());
        for (const int p : loop) nodes.push_back(at(p, level));
        return nodes;
    }

    void addPrism(CellKind kind, const std::vector<int>& loop, int k) {
        std::vector<int> nodes = lifted(loop, k);
        const std::vector<int> top = lifted(loop, k + 1);
        std::vector<int> polygons;
        if (kind == CellKind::Polyhedron) {
            const auto add = [&](const std::vector<int>& polygon) {
                polygons.push_back(m_mesh.polygons.count());
                m_mesh.polygons.append(polygon);
            };
            add(nodes);
            add(top);
            for (std::size_t i = 0; i < loop.size(); ++i) {
                const std::size_t j = (i + 1) % loop.size();
                add({nodes[i], nodes[j], top[j], top[i]});
            }
        }
        nodes.insert(nodes.end(), top.begin(), top.end());
        m_mesh.kinds.push_back(kind);
        m_mesh.cellNodes.append(nodes);
        m_mesh.cellPolygons.append(polygons);
    }

    const PlaneMesh& m_plane;
    int m_points, m_layers;
    CellMesh m_mesh;
};

}  // namespace

std::string nameOf(CellShape shape) {
    constexpr const char* kNames[] = {"hexahedra", "wedges", "tetrahedra", "polyhedra"};
    return kNames[static_cast<int>(shape)];
}

CellMesh plate(const PlaneMesh& quadrangles, CellShape shape, int layers, double h) {
    switch (shape) {
        case CellShape::Hexahedra:
            return Extrusion(quadrangles, layers, h).prisms(CellKind::Hexahedron);
        case CellShape::Wedges:
            return Extrusion(triangles(quadrangles), layers, h).prisms(CellKind::Wedge);
        case CellShape::Tetrahedra:
            return Extrusion(triangles(quadrangles), layers, h).tetrahedra();
        case CellShape::Polyhedra:
            break;
    }
    return Extrusion(dual(triangles(quadrangles)), layers, h).prisms(CellKind::Polyhedron);
}

}  // namespace weldline::accuracy
