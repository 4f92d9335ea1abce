#include "Messages.h"

#include "Packing.h"

namespace weldline {

std::vector<Bytes> gatherToFirst(Ranks& ranks, Bytes own) {
    std::vector<Bytes> toRanks(static_cast<std::size_t>(ranks.size()));
    toRanks.front() = std::move(own);
    std::vector<Bytes> received = ranks.exchange(std::move(toRanks));
    if (ranks.rank() != 0) received.clear();
    return received;
}

std::vector<Bytes> gatherToAll(Ranks& ranks, Bytes own) {
    Packer packer;
    for (const Bytes& message : gatherToFirst(ranks, std::move(own))) packer.put(message);
    const Bytes packed = broadcast(ranks, packer.take());
    std::vector<Bytes> all(static_cast<std::size_t>(ranks.size()));
    Unpacker unpacker(packed);
    for (Bytes& message : all) unpacker.get(message);
    return all;
}

Bytes broadcast(Ranks& ranks, const Bytes& message, int from) {
    std::vector<Bytes> toRanks(static_cast<std::size_t>(ranks.size()));
    if (ranks.rank() == from) toRanks.assign(toRanks.size(), message);
    return std::move(ranks.exchange(std::move(toRanks))[static_cast<std::size_t>(from)]);
}

std::int64_t sumBefore(Ranks& ranks, std::int64_t value) {
    // Rank 0 adds up for all, so that the number of messages grows with the ranks, not with their
    // square.
    const std::vector<Bytes> all = gatherToFirst(ranks, toBytes(std::vector{value}));
    std::vector<std::vector<std::int64_t>> sums(static_cast<std::size_t>(ranks.size()));
    std::int64_t sum = 0;
    for (std::size_t r = 0; r < all.size(); ++r) {
        sums[r].push_back(sum);
        sum += fromBytes<std::int64_t>(all[r]).front();
    }
    return exchangeValues(ranks, sums).front().front();
}

}  // namespace weldline
