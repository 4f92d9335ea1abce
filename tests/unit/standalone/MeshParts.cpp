#include "MeshParts.h"

#include <algorithm>

#include "base/Errors.h"
#include "mesh/FvMesh.h"

namespace weldline::test {

MeshParts& MeshParts::shape(CellKind kind, std::initializer_list<int> nodes) {
    mesh_.kinds.push_back(kind);
    mesh_.cellNodes.append(std::vector<int>(nodes));
    mesh_.cellPolygons.append({});
    return *this;
}

MeshParts& MeshParts::polyhedron(std::initializer_list<std::vector<int>> faces) {
    std::vector<int> nodes;
    std::vector<int> numbers;
    for (const std::vector<int>& face : faces) {
        numbers.push_back(mesh_.polygons.count());
        mesh_.polygons.append(face);
        for (const int node : face) {
            if (std::find(nodes.begin(), nodes.end(), node) == nodes.end()) {
                nodes.push_back(node);
            }
        }
    }
    mesh_.kinds.push_back(CellKind::Polyhedron);
    mesh_.cellNodes.append(nodes);
    mesh_.cellPolygons.append(numbers);
    return *this;
}

std::vector<Vec3> boxRowPoints(std::initializer_list<double> walls) {
    std::vector<Vec3> points;
    for (const double x : walls) {
        points.insert(points.end(), {{x, 0, 0}, {x, 1, 0}, {x, 0, 1}, {x, 1, 1}});
    }
    return points;
}

MeshParts boxRow(std::initializer_list<double> walls) {
    MeshParts parts(boxRowPoints(walls));
    const int boxes = static_cast<int>(walls.size()) - 1;
    for (int i = 0; i < boxes; ++i) {
        const int n = 4 * i;
        parts.shape(CellKind::Hexahedron, {n, n + 4, n + 5, n + 1, n + 2, n + 6, n + 7, n + 3});
    }
    return parts;
}

std::string faultOf(const CellMesh& mesh) {
    try {
        buildFvMesh(mesh);
        return "";
    } catch (const InputError& error) {
        return error.what();
    }
}

}  // namespace weldline::test
