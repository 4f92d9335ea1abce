#pragma once

#include <condition_variable>
#include <mutex>
#include <vector>

#include "PartitionData.h"

namespace weldline::reference {

// The meeting points of the partitions of one run, each of which runs in a thread of its own. A
// partition that does not come in time breaks the collective for good: everybody goes on without
// waiting, and the logs will differ.
class Collective {
  public:
    explicit Collective(int partitions);

    void barrier();

    // Fills the halo slots of this partition's array from the others' arrays.
    void exchange(int partition, double* cellArray,
                  const std::vector<PartitionData::HaloSource>& halo);

    int maximum(int partition, int value);

    // Called by a partition that will not come again.
    void leave();
    bool broken() const;

  private:
    int partitions_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    int arrived_ = 0;
    unsigned round_ = 0;
    bool broken_ = false;
    std::vector<double*> arrays_;
    std::vector<int> values_;
};

}  // namespace weldline::reference
