#pragma once

#include <vector>

#include "PartitionData.h"

namespace weldline::reference {

// The meeting points of the partitions of one run, each of which runs in a thread or in a process
// of its own: everything that they share lies in shared memory. A partition that does not come in
// time breaks the collective for good: everybody goes on without waiting, and the logs will differ.
class Collective {
  public:
    // For cell arrays of up to so many slots.
    explicit Collective(int partitions, int largestSlots = 0);
    Collective(const Collective&) = delete;
    Collective& operator=(const Collective&) = delete;
    ~Collective();

    void barrier();

    // Fills the halo slots of this partition's array, which has so many slots, from the others'.
    void exchange(int partition, double* cellArray, int slots,
                  const std::vector<PartitionData::HaloSource>& halo);

    int maximum(int partition, int value);

    // Called by a partition that will not come again.
    void leave();
    bool broken() const;

  private:
    struct Meeting;

    double* arrayOf(int partition) const;

    int partitions_;
    int largestSlots_;
    std::size_t bytes_;
    Meeting* meeting_;  // in shared memory, followed by a value and an array per partition
    int* values_;
    double* arrays_;
};

}  // namespace weldline::reference
