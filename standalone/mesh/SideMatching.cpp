// Each side is looked for among the sides before it. The first side of a face is kept in a list of
// its smallest node; two sides can only be the same face when they share that node, and a list
// holds few sides, so that the whole costs linear time.
//
// Of a triangle or quadrangle all corners are kept, from the smallest node on and outwards. The
// other side of the face runs around it in the opposite direction, so that comparing three numbers
// finds it and tells at once that both cells lie on different sides of the face.
#include "SideMatching.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "MeshFaults.h"
#include "NodeSets.h"
#include "SideOrientation.h"

namespace weldline {
namespace {

// The corners after the smallest node; the last is -1 for a triangle. A polygon of more corners
// has the key of its node set instead, and below zero the number of its corners.
struct Ring {
    int a;
    int b;
    int c;
    bool operator==(const Ring&) const = default;
    bool isLarge() const { return c < -1; }
    unsigned sum() const {
        return static_cast<unsigned>(a) + static_cast<unsigned>(b) + static_cast<unsigned>(c);
    }
    Ring reversed() const {
        if (isLarge()) {
            return *this;
        }
        return c < 0 ? Ring{b, a, c} : Ring{c, b, a};
    }
};

struct PlacedRing {
    std::size_t node;  // the smallest
    Ring ring;
};

PlacedRing ringOf(std::span<const int> p) {
    if (p.size() == 4) {
        const std::size_t low = p[1] < p[0] ? 1 : 0;
        const std::size_t high = p[3] < p[2] ? 3 : 2;
        const std::size_t s = p[high] < p[low] ? high : low;
        return {static_cast<std::size_t>(p[s]),
                {p[(s + 1) & 3U], p[(s + 2) & 3U], p[(s + 3) & 3U]}};
    }
    const auto s = static_cast<std::size_t>(std::min_element(p.begin(), p.end()) - p.begin());
    const auto node = static_cast<std::size_t>(p[s]);
    if (p.size() == 3) {
        const std::size_t next = s < 2 ? s + 1 : 0;
        return {node, {p[next], p[3 - s - next], -1}};
    }
    const std::uint64_t key = nodeSetKey(p);
    return {node,
            {static_cast<int>(key), static_cast<int>(key >> 32U), -static_cast<int>(p.size())}};
}

// The same corners in whatever order.
bool sameCorners(Ring x, Ring y) {
    const auto ordered = [](Ring r) {
        std::array<int, 3> corners{r.a, r.b, r.c};
        std::sort(corners.begin(), corners.end());
        return corners;
    };
    return ordered(x) == ordered(y);
}

// Both polygons name the same nodes; true when they run around them in opposite directions.
bool areOpposite(std::span<const int> a, bool turnA, std::span<const int> b, bool turnB) {
    const std::size_t n = a.size();
    const auto start = static_cast<std::size_t>(std::find(b.begin(), b.end(), a[0]) - b.begin());
    const bool opposite = turnA == turnB;
    for (std::size_t i = 1; i < n; ++i) {
        if (a[i] != b[(start + (opposite ? n - i : i)) % n]) {
            return false;
        }
    }
    return true;
}

class Matching {
  public:
    Matching(const CellMesh& mesh, const CellSides& sides, const std::vector<std::uint8_t>& inward)
        : mesh_(mesh),
          sides_(sides),
          inward_(inward),
          newest_(mesh.points.size(), -1),
          partner_(static_cast<std::size_t>(sides.count()), -1) {
        faces_.reserve(partner_.size() / 2 + partner_.size() / 16);
    }

    std::vector<int> match() {
        for (int c = 0; c < mesh_.cellCount(); ++c) {
            sides_.visit(c, [&](int side, std::span<const int> corners) { place(side, corners); });
        }
        if (!misfits_.empty()) {
            failOnFirstMisfit();
        }
        return std::move(partner_);
    }

  private:
    struct Face {
        Ring ring;
        int side;      // the first one found
        int previous;  // face of the same smallest node, -1 none
    };

    void place(int side, std::span<const int> corners) {
        const PlacedRing own = ringOf(corners);
        const bool turned = inward_[static_cast<std::size_t>(side)] != 0;
        const Ring outward = turned ? own.ring.reversed() : own.ring;
        const Ring across = outward.reversed();
        int& newest = newest_[own.node];
        for (int f = newest; f >= 0; f = faces_[static_cast<std::size_t>(f)].previous) {
            const Face& face = faces_[static_cast<std::size_t>(f)];
            if (face.ring == across) {
                if (!across.isLarge()) {
                    return join(face.side, side, true);
                }
                CellSides::Corners otherSpace;
                const std::span<const int> other = sides_.polygon(face.side, otherSpace);
                if (sameNodeSet(other, corners)) {
                    return join(face.side, side,
                                areOpposite(other, isTurned(face.side), corners, turned));
                }
            } else if (face.ring.sum() == across.sum() && !across.isLarge() &&
                       sameCorners(face.ring, across)) {
                return join(face.side, side, false);
            }
        }
        faces_.push_back({outward, side, newest});
        newest = static_cast<int>(faces_.size()) - 1;
    }

    bool isTurned(int side) const { return inward_[static_cast<std::size_t>(side)] != 0; }

    void join(int a, int b, bool fits) {
        int& known = partner_[static_cast<std::size_t>(a)];
        if (known >= 0) {
            failOnSharedFace(mesh_, sides_.cell(a), sides_.cell(known), sides_.cell(b));
        }
        if (sides_.cell(a) == sides_.cell(b)) {
            failOnRepeatedFace(mesh_, sides_.cell(a));
        }
        known = b;
        partner_[static_cast<std::size_t>(b)] = a;
        if (!fits) {
            misfits_.emplace_back(sides_.cell(a), sides_.cell(b));
        }
    }

    [[noreturn]] void failOnFirstMisfit() const {
        const auto [a, b] = *std::min_element(misfits_.begin(), misfits_.end());
        failOnOverlap(mesh_, a, signedVolume(mesh_, sides_, inward_, a), b,
                      signedVolume(mesh_, sides_, inward_, b));
    }

    const CellMesh& mesh_;
    const CellSides& sides_;
    const std::vector<std::uint8_t>& inward_;
    std::vector<int> newest_;  // per node: the last face kept in its list, -1 none
    std::vector<Face> faces_;
    std::vector<int> partner_;
    std::vector<std::pair<int, int>> misfits_;  // cells on the same side of their face
};

}  // namespace

std::vector<int> matchSides(const CellMesh& mesh, const CellSides& sides,
                            const std::vector<std::uint8_t>& inward) {
    return Matching(mesh, sides, inward).match();
}

}  // namespace weldline
