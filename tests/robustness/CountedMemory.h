#pragma once

// The global operator new of this program counts, and fails on demand. So does calloc, from which
// the library has its arrays, but for the counting.

namespace weldline::test {

// What operator new has given out and operator delete has not got back, in all threads.
struct MemoryInUse {
    long blocks;
    long bytes;
    bool operator==(const MemoryInUse&) const = default;
};
MemoryInUse memoryInUse();

// While it lives, the n-th allocation of this thread from here on throws std::bad_alloc, once.
class FailingAllocation {
  public:
    explicit FailingAllocation(long n);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
};

}  // namespace weldline::test
