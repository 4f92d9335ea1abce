#pragma once

#include <cstring>
#include <type_traits>
#include <utility>
#include <vector>

#include "Ranks.h"

namespace weldline {

// Messages of values: what `Ranks::exchange` sends as bytes.

template <class Value>
Bytes toBytes(const std::vector<Value>& values) {
    static_assert(std::is_trivially_copyable_v<Value>);
    Bytes bytes(values.size() * sizeof(Value));
    if (!values.empty()) std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}

template <class Value>
std::vector<Value> fromBytes(const Bytes& bytes) {
    static_assert(std::is_trivially_copyable_v<Value>);
    std::vector<Value> values(bytes.size() / sizeof(Value));
    if (!values.empty()) std::memcpy(values.data(), bytes.data(), values.size() * sizeof(Value));
    return values;
}

// One list to each rank; answers the list that each rank sent here. Collective, as all below.
template <class Value>
std::vector<std::vector<Value>> exchangeValues(Ranks& ranks,
                                               const std::vector<std::vector<Value>>& toRanks) {
    std::vector<Bytes> messages;
    messages.reserve(toRanks.size());
    for (const std::vector<Value>& list : toRanks) messages.push_back(toBytes(list));
    std::vector<std::vector<Value>> received;
    received.reserve(toRanks.size());
    for (Bytes& message : ranks.exchange(std::move(messages))) {
        received.push_back(fromBytes<Value>(message));
        message = {};
    }
    return received;
}

// Rank 0 answers the messages of all ranks, in their order; the others nothing.
std::vector<Bytes> gatherToFirst(Ranks& ranks, Bytes own);

// All ranks answer the messages of all ranks, in their order. For short messages.
std::vector<Bytes> gatherToAll(Ranks& ranks, Bytes own);

// All ranks answer the message of rank `from`; that of the others is left out.
Bytes broadcast(Ranks& ranks, const Bytes& message, int from = 0);

// The sum of the values of all lower ranks.
std::int64_t sumBefore(Ranks& ranks, std::int64_t value);

}  // namespace weldline
