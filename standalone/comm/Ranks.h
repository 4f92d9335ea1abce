#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "HaloLinks.h"

class CCommunication;

namespace weldline {

using Bytes = std::vector<std::byte>;

// The ranks of a run: one process, threads of one process, or the processes of an MPI run. Every
// member but rank() and size() is collective: all ranks call the same ones in the same order.
class Ranks {
  public:
    virtual ~Ranks() = default;

    virtual int rank() const = 0;  // 0 to size() - 1
    virtual int size() const = 0;

    virtual std::int64_t maximum(std::int64_t value) = 0;
    virtual std::int64_t sum(std::int64_t value) = 0;
    virtual double maximum(double value) = 0;  // of values that are numbers

    // One message to each rank, this one included; answers what each rank sent here. A message may
    // be of any length, also above 2 GiB.
    virtual std::vector<Bytes> exchange(std::vector<Bytes> toRanks) = 0;

    // The halo exchange of the library along `links`, set up once. Borrows this object.
    virtual std::unique_ptr<CCommunication> haloExchange(const HaloLinks& links) = 0;
};

}  // namespace weldline
