#include "NodeSharing.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "comm/Messages.h"

namespace weldline {

namespace {

struct Holder {
    std::int64_t number;
    int rank;
    int node;  // index on that rank
    bool operator<(const Holder& other) const {
        return std::tie(number, rank) < std::tie(other.number, other.rank);
    }
};

struct Sharing {
    int node;   // index on the rank that is told
    int other;  // a rank that has the node, too
};

// Makes one ascending list of ascending ones that stand one behind another, each pair of neighbours
// at a time. Of equal numbers that of the lower rank stays first.
void mergeLists(std::vector<Holder>& holders, std::vector<std::ptrdiff_t> ends) {
    while (ends.size() > 1) {
        std::vector<std::ptrdiff_t> merged;
        std::ptrdiff_t begin = 0;
        for (std::size_t list = 0; list < ends.size(); list += 2) {
            const std::ptrdiff_t end = ends[std::min(list + 1, ends.size() - 1)];
            std::inplace_merge(holders.begin() + begin, holders.begin() + ends[list],
                               holders.begin() + end);
            merged.push_back(end);
            begin = end;
        }
        ends = std::move(merged);
    }
}

// Which nodes this rank looks up for all, and who holds them.
std::vector<Holder> collectHolders(Ranks& ranks, const std::vector<std::int64_t>& nodeNumber) {
    struct Entry {
        std::int64_t number;
        int node;
    };
    const auto size = static_cast<std::size_t>(ranks.size());
    std::vector<std::vector<Entry>> toRanks(size);
    for (std::size_t n = 0; n < nodeNumber.size(); ++n)
        toRanks[static_cast<std::size_t>(nodeNumber[n]) % size].push_back(
            {nodeNumber[n], static_cast<int>(n)});
    std::vector<Holder> holders;
    std::vector<std::ptrdiff_t> ends;
    const std::vector<std::vector<Entry>> received = exchangeValues(ranks, toRanks);
    for (std::size_t r = 0; r < size; ++r) {
        for (const Entry& entry : received[r])
            holders.push_back({entry.number, static_cast<int>(r), entry.node});
        ends.push_back(static_cast<std::ptrdiff_t>(holders.size()));
    }
    mergeLists(holders, std::move(ends));
    return holders;
}

}  // namespace

std::vector<SharedNodes> findSharedNodes(Ranks& ranks,
                                         const std::vector<std::int64_t>& nodeNumber) {
    std::vector<std::vector<Sharing>> toRanks(static_cast<std::size_t>(ranks.size()));
    const std::vector<Holder> holders = collectHolders(ranks, nodeNumber);
    for (std::size_t begin = 0; begin < holders.size();) {
        std::size_t end = begin + 1;
        while (end < holders.size() && holders[end].number == holders[begin].number) ++end;
        for (std::size_t a = begin; a < end; ++a)
            for (std::size_t b = begin; b < end; ++b)
                if (a != b)
                    toRanks[static_cast<std::size_t>(holders[a].rank)].push_back(
                        {holders[a].node, holders[b].rank});
        begin = end;
    }
    std::map<int, std::vector<int>> nodesByRank;
    for (const std::vector<Sharing>& list : exchangeValues(ranks, toRanks))
        for (const Sharing& sharing : list) nodesByRank[sharing.other].push_back(sharing.node);

    std::vector<SharedNodes> result;
    for (auto& [rank, nodes] : nodesByRank) {
        std::sort(nodes.begin(), nodes.end());
        result.push_back({rank, std::move(nodes)});
    }
    return result;
}

}  // namespace weldline
