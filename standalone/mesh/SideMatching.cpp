// Sides are put into one bucket per smallest node. Two sides can only be the same face when they
// lie in one bucket, and a bucket holds few sides, so that the whole costs linear time.
#include "SideMatching.h"

#include <algorithm>

#include "MeshFaults.h"
#include "NodeSets.h"

namespace weldline {
namespace {

struct Buckets {
    std::vector<int> offsets;  // per node, one more at the end
    std::vector<int> sides;    // ascending within a bucket
};

Buckets fillBuckets(const CellMesh& mesh, const CellSides& sides) {
    CellSides::Corners space;
    const auto bucketOf = [&](int side) {
        const std::span<const int> corners = sides.polygon(side, space);
        return static_cast<std::size_t>(*std::min_element(corners.begin(), corners.end()));
    };
    Buckets buckets;
    buckets.offsets.assign(mesh.points.size() + 1, 0);
    for (int s = 0; s < sides.count(); ++s) {
        ++buckets.offsets[bucketOf(s) + 1];
    }
    for (std::size_t b = 1; b < buckets.offsets.size(); ++b) {
        buckets.offsets[b] += buckets.offsets[b - 1];
    }
    std::vector<int> next(buckets.offsets.begin(), buckets.offsets.end() - 1);
    buckets.sides.resize(static_cast<std::size_t>(sides.count()));
    for (int s = 0; s < sides.count(); ++s) {
        buckets.sides[static_cast<std::size_t>(next[bucketOf(s)]++)] = s;
    }
    return buckets;
}

struct KeyedSide {
    std::uint64_t key;
    int side;
    bool operator<(const KeyedSide& other) const {
        return key != other.key ? key < other.key : side < other.side;
    }
};

bool isSameFace(const CellSides& sides, int a, int b) {
    CellSides::Corners spaceA;
    CellSides::Corners spaceB;
    return sameNodeSet(sides.polygon(a, spaceA), sides.polygon(b, spaceB));
}

// All sides of the run have the same key; nearly always they are the two sides of one face.
void matchRun(const CellMesh& mesh, const CellSides& sides, std::span<const KeyedSide> run,
              std::vector<int>& partner) {
    for (std::size_t i = 0; i < run.size(); ++i) {
        const int a = run[i].side;
        for (std::size_t j = i + 1; j < run.size(); ++j) {
            const int b = run[j].side;
            if (!isSameFace(sides, a, b)) {
                continue;
            }
            const int known = partner[static_cast<std::size_t>(a)];
            if (known >= 0) {
                failOnSharedFace(mesh, sides.cell(a), sides.cell(known), sides.cell(b));
            }
            if (sides.cell(a) == sides.cell(b)) {
                failOnRepeatedFace(mesh, sides.cell(a));
            }
            partner[static_cast<std::size_t>(a)] = b;
            partner[static_cast<std::size_t>(b)] = a;
        }
    }
}

}  // namespace

std::vector<int> matchSides(const CellMesh& mesh, const CellSides& sides) {
    const Buckets buckets = fillBuckets(mesh, sides);
    std::vector<int> partner(static_cast<std::size_t>(sides.count()), -1);
    std::vector<KeyedSide> bucket;
    CellSides::Corners space;
    for (std::size_t b = 0; b + 1 < buckets.offsets.size(); ++b) {
        bucket.clear();
        for (int i = buckets.offsets[b]; i < buckets.offsets[b + 1]; ++i) {
            const int side = buckets.sides[static_cast<std::size_t>(i)];
            bucket.push_back({nodeSetKey(sides.polygon(side, space)), side});
        }
        std::sort(bucket.begin(), bucket.end());
        for (std::size_t begin = 0; begin < bucket.size();) {
            std::size_t end = begin + 1;
            while (end < bucket.size() && bucket[end].key == bucket[begin].key) {
                ++end;
            }
            matchRun(mesh, sides, {bucket.data() + begin, end - begin}, partner);
            begin = end;
        }
    }
    return partner;
}

}  // namespace weldline
