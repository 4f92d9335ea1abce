#include "FvMesh.h"

#include <algorithm>
#include <utility>

#include "CellGeometry.h"
#include "MeshFaults.h"
#include "PolygonGeometry.h"
#include "QuadrangleBlock.h"
#include "SideMatching.h"
#include "SideOrientation.h"

namespace weldline {
namespace {

// A cell's area vectors may miss zero by this part of their lengths: faces that were given as
// separate polygons (a node in the middle of another face's edge) fit as well as single precision
// coordinates allow.
constexpr double closureTolerance = 1e-6;

// A cell below this part of (surface area)^(3/2) is flat: rounding decides its volume.
constexpr double flatTolerance = 1e-13;

// Numbers the faces and fills the face table.
class FaceTable {
  public:
    FaceTable(const CellMesh& mesh, FvMesh& fv)
        : mesh_(mesh),
          fv_(fv),
          sides_(mesh),
          inward_(orientSides(mesh, sides_)),
          partner_(matchSides(mesh, sides_, inward_)) {}

    void fill() {
        reserve();
        for (int c = 0; c < mesh_.cellCount(); ++c) {
            addInnerFaces(c);
        }
        fv_.innerFaces = fv_.faceCount();
        for (int c = 0; c < mesh_.cellCount(); ++c) {
            for (int s = sides_.first(c); s < sides_.end(c); ++s) {
                if (partner_[static_cast<std::size_t>(s)] < 0) {
                    addFace(c, s);
                }
            }
        }
        fillCellFaces();
    }

  private:
    void reserve() {
        const auto boundary =
            static_cast<std::size_t>(std::count(partner_.begin(), partner_.end(), -1));
        const std::size_t inner = (partner_.size() - boundary) / 2;
        fv_.owner.reserve(inner + boundary);
        fv_.neighbour.reserve(inner);
        fv_.faceNodes.offsets.reserve(inner + boundary + 1);
        fv_.faceNodes.entries.reserve(4 * (inner + boundary));
    }

    void addInnerFaces(int cell) {
        upper_.clear();
        for (int s = sides_.first(cell); s < sides_.end(cell); ++s) {
            const int other = partner_[static_cast<std::size_t>(s)];
            if (other > s) {
                upper_.emplace_back(sides_.cell(other), s);
            }
        }
        std::sort(upper_.begin(), upper_.end());
        for (const auto& [neighbour, side] : upper_) {
            addFace(cell, side);
            fv_.neighbour.push_back(neighbour);
        }
    }

    // The polygon keeps its first corner where it is turned.
    void addFace(int cell, int side) {
        CellSides::Corners space;
        const std::span<const int> corners = sides_.polygonOf(cell, side, space);
        std::vector<int>& entries = fv_.faceNodes.entries;
        if (inward_[static_cast<std::size_t>(side)] == 0) {
            entries.insert(entries.end(), corners.begin(), corners.end());
        } else {
            entries.push_back(corners.front());
            entries.insert(entries.end(), corners.rbegin(), corners.rend() - 1);
        }
        fv_.faceNodes.offsets.push_back(static_cast<std::int64_t>(entries.size()));
        fv_.owner.push_back(cell);
    }

    // Faces go to their cells in ascending order.
    void fillCellFaces() {
        std::vector<int> next;
        next.reserve(static_cast<std::size_t>(mesh_.cellCount()));
        fv_.cellFaces.offsets.reserve(static_cast<std::size_t>(mesh_.cellCount()) + 1);
        for (int c = 0; c < mesh_.cellCount(); ++c) {
            next.push_back(sides_.first(c));
            fv_.cellFaces.offsets.push_back(sides_.end(c));
        }
        std::vector<int>& entries = fv_.cellFaces.entries;
        entries.resize(static_cast<std::size_t>(sides_.count()));
        const auto give = [&](int cell, int face) {
            entries[static_cast<std::size_t>(next[static_cast<std::size_t>(cell)]++)] = face;
        };
        for (int f = 0; f < fv_.faceCount(); ++f) {
            give(fv_.owner[static_cast<std::size_t>(f)], f);
            if (f < fv_.innerFaces) {
                give(fv_.neighbour[static_cast<std::size_t>(f)], f);
            }
        }
    }

    const CellMesh& mesh_;
    FvMesh& fv_;
    CellSides sides_;
    std::vector<std::uint8_t> inward_;
    std::vector<int> partner_;
    std::vector<std::pair<int, int>> upper_;  // working space: upper cell, side of the lower cell
};

void computeFaces(FvMesh& fv) {
    const auto faces = static_cast<std::size_t>(fv.faceCount());
    fv.faceCentre.resize(faces);
    fv.faceArea.resize(faces);
    const auto take = [&](std::size_t f, const PolygonGeometry& face) {
        fv.faceCentre[f] = face.centre;
        fv.faceArea[f] = face.area;
    };
    QuadrangleBlock block;
    for (std::size_t f = 0; f < faces; ++f) {
        const std::span<const int> corners = fv.faceNodes[static_cast<int>(f)];
        if (corners.size() != 4) {
            take(f, polygonGeometry(fv.points, corners));
            continue;
        }
        block.add(fv.points, corners, f);
        if (block.isFull()) {
            block.flush(take);
        }
    }
    block.flush(take);
}

void addCell(const CellMesh& cells, FvMesh& fv, int cell) {
    const CellGeometry geometry = cellGeometry(fv, cell, fv.cellFaces[cell]);
    if (!(norm(geometry.gap) <= closureTolerance * geometry.surface)) {
        failOnOpenCell(cells, cell);
    }
    const double flat = flatTolerance * geometry.surface * std::sqrt(geometry.surface);
    if (!(geometry.volume > flat)) {
        failOnVolume(cells, cell, geometry.volume < -flat ? geometry.volume : 0.0);
    }
    fv.cellVolume.push_back(geometry.volume);
    fv.cellCentre.push_back(geometry.centre);
}

}  // namespace

FvMesh buildFvMesh(const CellMesh& cells) {
    FvMesh fv;
    FaceTable(cells, fv).fill();
    fv.points = cells.points;
    fv.cellNodes = cells.cellNodes;

    computeFaces(fv);
    fv.cellCentre.reserve(static_cast<std::size_t>(cells.cellCount()));
    fv.cellVolume.reserve(static_cast<std::size_t>(cells.cellCount()));
    for (int c = 0; c < cells.cellCount(); ++c) {
        addCell(cells, fv, c);
    }
    fv.lambda.reserve(static_cast<std::size_t>(fv.innerFaces));
    for (std::size_t f = 0; f < static_cast<std::size_t>(fv.innerFaces); ++f) {
        fv.lambda.push_back(weightOfNeighbour(
            fv.faceCentre[f], fv.faceArea[f], fv.cellCentre[static_cast<std::size_t>(fv.owner[f])],
            fv.cellCentre[static_cast<std::size_t>(fv.neighbour[f])]));
    }
    return fv;
}

}  // namespace weldline
