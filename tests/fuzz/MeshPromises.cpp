#include "MeshPromises.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Target.h"

namespace weldline::fuzz {

namespace {

bool isFinite(Vec3 v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

void checkRows(const Rows& rows, int count, int limit, const char* what) {
    require(rows.count() == count && rows.offsets.front() == 0 &&
                std::is_sorted(rows.offsets.begin(), rows.offsets.end()) &&
                rows.offsets.back() == static_cast<std::int64_t>(rows.entries.size()),
            what);
    require(std::all_of(rows.entries.begin(), rows.entries.end(),
                        [&](int entry) { return entry >= 0 && entry < limit; }),
            what);
}

void checkSizes(const FvMesh& mesh) {
    const auto cells = static_cast<std::size_t>(mesh.cellCount());
    const auto faces = static_cast<std::size_t>(mesh.faceCount());
    const auto inner = static_cast<std::size_t>(mesh.innerFaces);
    require(mesh.innerFaces >= 0 && inner <= faces, "inner faces come first");
    require(mesh.neighbour.size() == inner && mesh.lambda.size() == inner,
            "every inner face has a neighbour and a weight");
    require(mesh.faceCentre.size() == faces && mesh.faceArea.size() == faces,
            "every face has its geometry");
    require(mesh.cellCentre.size() == cells, "every cell has a centre");
    checkRows(mesh.cellNodes, mesh.cellCount(), mesh.pointCount(), "nodes of cells");
    checkRows(mesh.cellFaces, mesh.cellCount(), mesh.faceCount(), "faces of cells");
    checkRows(mesh.faceNodes, mesh.faceCount(), mesh.pointCount(), "nodes of faces");
}

void checkFaces(const FvMesh& mesh) {
    for (int f = 0; f < mesh.faceCount(); ++f) {
        const auto i = static_cast<std::size_t>(f);
        require(mesh.owner[i] >= 0 && mesh.owner[i] < mesh.cellCount(), "owner in range");
        require(mesh.faceNodes[f].size() >= 3, "a face is a polygon");
        require(isFinite(mesh.faceCentre[i]) && isFinite(mesh.faceArea[i]), "finite faces");
        if (f >= mesh.innerFaces) continue;
        require(mesh.neighbour[i] > mesh.owner[i] && mesh.neighbour[i] < mesh.cellCount(),
                "the neighbour is the upper cell");
        require(mesh.lambda[i] >= 0.0 && mesh.lambda[i] <= 1.0, "weight from 0 to 1");
    }
}

// Faces of a cell are its own, each once; their area vectors, turned out of it, sum to zero within
// a millionth of the surface.
void checkCells(const FvMesh& mesh) {
    for (int c = 0; c < mesh.cellCount(); ++c) {
        const auto i = static_cast<std::size_t>(c);
        Vec3 gap;
        double surface = 0.0;
        int last = -1;
        for (const int f : mesh.cellFaces[c]) {
            const auto face = static_cast<std::size_t>(f);
            const bool isOwner = mesh.owner[face] == c;
            require(isOwner || (f < mesh.innerFaces && mesh.neighbour[face] == c), "own faces");
            require(f > last, "faces in ascending order, each once");
            gap = gap + (isOwner ? 1.0 : -1.0) * mesh.faceArea[face];
            surface += norm(mesh.faceArea[face]);
            last = f;
        }
        require(norm(gap) <= 2e-6 * surface, "a cell is closed");
        require(mesh.cellVolume[i] > 0.0 && std::isfinite(mesh.cellVolume[i]),
                "a volume is positive");
        require(isFinite(mesh.cellCentre[i]), "finite cell centres");
    }
}

}  // namespace

void checkMesh(const FvMesh& mesh) {
    checkSizes(mesh);
    checkFaces(mesh);
    checkCells(mesh);
    std::size_t sides = 0;
    for (int c = 0; c < mesh.cellCount(); ++c) sides += mesh.cellFaces[c].size();
    require(sides == static_cast<std::size_t>(mesh.faceCount() + mesh.innerFaces),
            "inner faces have two cells, boundary faces one");
}

void checkGroups(const FvMesh& mesh, const BoundaryGroups& groups) {
    require(groups.kinds.size() == static_cast<std::size_t>(mesh.boundaryFaces()),
            "every boundary face has a group");
    for (const GroupKind kind : groups.kinds) require(kind <= GroupKind::Symmetry, "known groups");
}

}  // namespace weldline::fuzz
