#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

namespace weldline {

// A number that depends on the set of nodes, not on their order. Different sets rarely share it.
template <class Node>
std::uint64_t nodeSetKey(std::span<const Node> nodes) {
    std::uint64_t key = nodes.size();
    for (const Node node : nodes) {
        // Finaliser of the SplitMix64 generator (Steele, Lea, Flood 2014).
        std::uint64_t bits = static_cast<std::uint64_t>(node) + 0x9e3779b97f4a7c15ULL;
        bits = (bits ^ (bits >> 30U)) * 0xbf58476d1ce4e5b9ULL;
        bits = (bits ^ (bits >> 27U)) * 0x94d049bb133111ebULL;
        key += bits ^ (bits >> 31U);
    }
    return key;
}

// Equality of two lists in which no node stands twice.
inline bool sameNodeSet(std::span<const int> a, std::span<const int> b) {
    return a.size() == b.size() && std::is_permutation(a.begin(), a.end(), b.begin());
}

}  // namespace weldline
