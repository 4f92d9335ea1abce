#include "FvMesh.h"

#include <algorithm>

#include "CellGeometry.h"
#include "MeshFaults.h"
#include "PolygonGeometry.h"
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

std::span<const int> oriented(std::span<const int> corners, bool inward, std::vector<int>& space) {
    if (!inward) {
        return corners;
    }
    // The first corner stays the first, so that the order does not depend on the orientation.
    space.assign(corners.begin(), corners.end());
    std::reverse(space.begin() + 1, space.end());
    return space;
}

// Both polygons name the same nodes; true when they run around them in opposite directions.
bool areOpposite(std::span<const int> a, std::span<const int> b) {
    const std::size_t n = a.size();
    const auto start = static_cast<std::size_t>(std::find(b.begin(), b.end(), a[0]) - b.begin());
    for (std::size_t i = 1; i < n; ++i) {
        if (a[i] != b[(start + n - i) % n]) {
            return false;
        }
    }
    return true;
}

// Numbers the faces and fills the face table.
class FaceTable {
  public:
    FaceTable(const CellMesh& mesh, FvMesh& fv)
        : mesh_(mesh),
          fv_(fv),
          sides_(mesh),
          partner_(matchSides(mesh, sides_)),
          inward_(orientSides(mesh, sides_)),
          faceOfSide_(static_cast<std::size_t>(sides_.count()), -1) {}

    void fill() {
        reserve();
        for (int c = 0; c < mesh_.cellCount(); ++c) {
            addInnerFaces(c);
        }
        fv_.innerFaces = fv_.faceCount();
        for (int s = 0; s < sides_.count(); ++s) {
            if (partner_[static_cast<std::size_t>(s)] < 0) {
                addFace(s);
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
            checkFit(side);
            addFace(side);
            fv_.neighbour.push_back(neighbour);
        }
    }

    void addFace(int side) {
        const int face = fv_.faceCount();
        const int other = partner_[static_cast<std::size_t>(side)];
        faceOfSide_[static_cast<std::size_t>(side)] = face;
        if (other >= 0) {
            faceOfSide_[static_cast<std::size_t>(other)] = face;
        }
        fv_.owner.push_back(sides_.cell(side));
        fv_.faceNodes.append(outwardPolygon(side, corners_, space_));
    }

    std::span<const int> outwardPolygon(int side, CellSides::Corners& corners,
                                        std::vector<int>& space) const {
        return oriented(sides_.polygon(side, corners), inward_[static_cast<std::size_t>(side)] != 0,
                        space);
    }

    void checkFit(int side) {
        const int other = partner_[static_cast<std::size_t>(side)];
        if (!areOpposite(outwardPolygon(side, corners_, space_),
                         outwardPolygon(other, otherCorners_, otherSpace_))) {
            const int a = sides_.cell(side);
            const int b = sides_.cell(other);
            failOnOverlap(mesh_, a, signedVolume(mesh_, sides_, inward_, a), b,
                          signedVolume(mesh_, sides_, inward_, b));
        }
    }

    void fillCellFaces() {
        fv_.cellFaces.entries = std::move(faceOfSide_);
        fv_.cellFaces.offsets.reserve(static_cast<std::size_t>(mesh_.cellCount()) + 1);
        for (int c = 0; c < mesh_.cellCount(); ++c) {
            fv_.cellFaces.offsets.push_back(sides_.end(c));
            std::sort(fv_.cellFaces.entries.begin() + sides_.first(c),
                      fv_.cellFaces.entries.begin() + sides_.end(c));
        }
    }

    const CellMesh& mesh_;
    FvMesh& fv_;
    CellSides sides_;
    std::vector<int> partner_;
    std::vector<std::uint8_t> inward_;
    std::vector<int> faceOfSide_;

    // Working space, kept from face to face.
    std::vector<std::pair<int, int>> upper_;  // upper cell, side of the lower cell
    CellSides::Corners corners_{};
    CellSides::Corners otherCorners_{};
    std::vector<int> space_;
    std::vector<int> otherSpace_;
};

void computeFaces(FvMesh& fv) {
    const auto faces = static_cast<std::size_t>(fv.faceCount());
    fv.faceCentre.resize(faces);
    fv.faceArea.resize(faces);
    for (std::size_t f = 0; f < faces; ++f) {
        const PolygonGeometry face = polygonGeometry(fv.points, fv.faceNodes[static_cast<int>(f)]);
        fv.faceCentre[f] = face.centre;
        fv.faceArea[f] = face.area;
    }
}

void computeCell(const CellMesh& cells, FvMesh& fv, int cell) {
    const CellGeometry geometry = cellGeometry(fv, cell, fv.cellFaces[cell]);
    if (!(norm(geometry.gap) <= closureTolerance * geometry.surface)) {
        failOnOpenCell(cells, cell);
    }
    const double flat = flatTolerance * geometry.surface * std::sqrt(geometry.surface);
    if (!(geometry.volume > flat)) {
        failOnVolume(cells, cell, geometry.volume < -flat ? geometry.volume : 0.0);
    }
    fv.cellVolume[static_cast<std::size_t>(cell)] = geometry.volume;
    fv.cellCentre[static_cast<std::size_t>(cell)] = geometry.centre;
}

}  // namespace

FvMesh buildFvMesh(const CellMesh& cells) {
    FvMesh fv;
    FaceTable(cells, fv).fill();
    fv.points = cells.points;
    fv.cellNodes = cells.cellNodes;

    computeFaces(fv);
    fv.cellCentre.resize(static_cast<std::size_t>(cells.cellCount()));
    fv.cellVolume.resize(static_cast<std::size_t>(cells.cellCount()));
    for (int c = 0; c < cells.cellCount(); ++c) {
        computeCell(cells, fv, c);
    }
    fv.lambda.resize(static_cast<std::size_t>(fv.innerFaces));
    for (std::size_t f = 0; f < fv.lambda.size(); ++f) {
        fv.lambda[f] = weightOfNeighbour(fv.faceCentre[f], fv.faceArea[f],
                                         fv.cellCentre[static_cast<std::size_t>(fv.owner[f])],
                                         fv.cellCentre[static_cast<std::size_t>(fv.neighbour[f])]);
    }
    return fv;
}

}  // namespace weldline
