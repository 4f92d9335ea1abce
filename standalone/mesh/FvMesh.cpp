#include "FvMesh.h"

#include <algorithm>
#include <utility>

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
    const std::span<const int> faces = fv.cellFaces[cell];
    Vec3 middle;
    Vec3 gap;
    double surface = 0.0;
    const auto outward = [&](int face) {
        const auto f = static_cast<std::size_t>(face);
        return fv.owner[f] == cell ? fv.faceArea[f] : -1.0 * fv.faceArea[f];
    };
    for (const int face : faces) {
        middle = middle + fv.faceCentre[static_cast<std::size_t>(face)];
        gap = gap + outward(face);
        surface += norm(outward(face));
    }
    middle = (1.0 / static_cast<double>(faces.size())) * middle;
    if (!(norm(gap) <= closureTolerance * surface)) {
        failOnOpenCell(cells, cell);
    }

    double volume = 0.0;
    Vec3 moment;  // about the middle
    for (const int face : faces) {
        // The centre of a pyramid lies at three quarters of the way from its tip to its base.
        const Vec3 height = fv.faceCentre[static_cast<std::size_t>(face)] - middle;
        const double pyramid = dot(outward(face), height) / 3.0;
        volume += pyramid;
        moment = moment + (0.75 * pyramid) * height;
    }
    if (!(volume > flatTolerance * surface * std::sqrt(surface))) {
        const double flat = flatTolerance * surface * std::sqrt(surface);
        failOnVolume(cells, cell, volume < -flat ? volume : 0.0);
    }
    fv.cellVolume.push_back(volume);
    fv.cellCentre.push_back(middle + (1.0 / volume) * moment);
}

double weightOfNeighbour(const FvMesh& fv, std::size_t face) {
    const Vec3 centre = fv.faceCentre[face];
    const Vec3 toOwner = centre - fv.cellCentre[static_cast<std::size_t>(fv.owner[face])];
    const Vec3 toNeighbour = centre - fv.cellCentre[static_cast<std::size_t>(fv.neighbour[face])];
    // The length of the area vector cancels in the quotient.
    const double owner = std::abs(dot(fv.faceArea[face], toOwner));
    const double neighbour = std::abs(dot(fv.faceArea[face], toNeighbour));
    const double sum = owner + neighbour;
    return sum > 0.0 ? owner / sum : 0.5;
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
    for (int f = 0; f < fv.innerFaces; ++f) {
        fv.lambda.push_back(weightOfNeighbour(fv, static_cast<std::size_t>(f)));
    }
    return fv;
}

}  // namespace weldline
