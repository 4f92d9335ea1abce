#include "Collective.h"

#include <algorithm>
#include <chrono>

namespace weldline::reference {

Collective::Collective(int partitions)
    : partitions_(partitions), arrays_(partitions, nullptr), values_(partitions, 0) {}

void Collective::barrier() {
    if (partitions_ == 1) {
        return;
    }
    std::unique_lock lock(mutex_);
    if (broken_) {
        return;
    }
    const unsigned round = round_;
    if (++arrived_ == partitions_) {
        arrived_ = 0;
        ++round_;
        changed_.notify_all();
        return;
    }
    const auto gone = [&] { return round_ != round || broken_; };
    if (!changed_.wait_for(lock, std::chrono::seconds(60), gone)) {
        broken_ = true;
        changed_.notify_all();
    }
}

void Collective::leave() {
    const std::lock_guard lock(mutex_);
    broken_ = true;
    changed_.notify_all();
}

bool Collective::broken() const {
    const std::lock_guard lock(mutex_);
    return broken_;
}

void Collective::exchange(int partition, double* cellArray,
                          const std::vector<PartitionData::HaloSource>& halo) {
    arrays_[partition] = cellArray;
    barrier();
    if (!broken()) {
        for (const PartitionData::HaloSource& source : halo) {
            cellArray[source.slot] = arrays_[source.partition][source.cell];
        }
    }
    barrier();
}

int Collective::maximum(int partition, int value) {
    values_[partition] = value;
    barrier();
    const int largest = *std::max_element(values_.begin(), values_.end());
    barrier();
    return largest;
}

}  // namespace weldline::reference
