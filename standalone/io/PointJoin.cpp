#include "PointJoin.h"

#include <algorithm>
#include <bit>

namespace weldline {
namespace {

bool isSamePlace(Vec3 a, Vec3 b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

std::vector<std::pair<std::uint64_t, int>> sortedKeys(const std::vector<Vec3>& points) {
    std::vector<std::pair<std::uint64_t, int>> keys;
    keys.reserve(points.size());
    for (std::size_t p = 0; p < points.size(); ++p) {
        keys.emplace_back(placeKey(points[p]), static_cast<int>(p));
    }
    std::sort(keys.begin(), keys.end());
    return keys;
}

// Per point the first point of an earlier piece at its place, or itself.
std::vector<int> findTwins(const std::vector<Vec3>& points, std::span<const int> pieceStarts) {
    const auto pieceOf = [&](int point) {
        return std::upper_bound(pieceStarts.begin(), pieceStarts.end(), point) -
               pieceStarts.begin();
    };
    std::vector<int> twin(points.size());
    const auto keys = sortedKeys(points);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const int point = keys[i].second;
        twin[static_cast<std::size_t>(point)] = point;
        int first = point;  // at this place, in any piece
        bool isFirstOfPiece = true;
        for (std::size_t j = i; j > 0 && keys[j - 1].first == keys[i].first; --j) {
            const int earlier = keys[j - 1].second;
            if (isSamePlace(points[static_cast<std::size_t>(earlier)],
                            points[static_cast<std::size_t>(point)])) {
                first = earlier;
                isFirstOfPiece = isFirstOfPiece && pieceOf(earlier) != pieceOf(point);
            }
        }
        if (isFirstOfPiece) {
            twin[static_cast<std::size_t>(point)] = first;
        }
    }
    return twin;
}

}  // namespace

std::uint64_t placeKey(Vec3 place) {
    std::uint64_t key = 0;
    for (const double coordinate : {place.x, place.y, place.z}) {
        // Adding zero turns -0.0 into 0.0. The finaliser is that of SplitMix64.
        key += std::bit_cast<std::uint64_t>(coordinate + 0.0) + 0x9e3779b97f4a7c15ULL;
        key = (key ^ (key >> 30U)) * 0xbf58476d1ce4e5b9ULL;
        key = (key ^ (key >> 27U)) * 0x94d049bb133111ebULL;
        key ^= key >> 31U;
    }
    return key;
}

PointIndex::PointIndex(const std::vector<Vec3>& points)
    : points_(points), keys_(sortedKeys(points)) {}

int PointIndex::find(Vec3 place) const {
    const std::uint64_t key = placeKey(place);
    for (auto it = std::lower_bound(keys_.begin(), keys_.end(), std::pair{key, 0});
         it != keys_.end() && it->first == key; ++it) {
        if (isSamePlace(points_[static_cast<std::size_t>(it->second)], place)) {
            return it->second;
        }
    }
    return -1;
}

std::vector<int> joinPieces(std::vector<Vec3>& points, std::span<const int> pieceStarts) {
    std::vector<int> joined = findTwins(points, pieceStarts);
    int next = 0;
    for (std::size_t p = 0; p < points.size(); ++p) {
        const auto twin = static_cast<std::size_t>(joined[p]);
        if (twin == p) {
            points[static_cast<std::size_t>(next)] = points[p];
            joined[p] = next++;
        } else {
            joined[p] = joined[twin];
        }
    }
    points.resize(static_cast<std::size_t>(next));
    return joined;
}

}  // namespace weldline
