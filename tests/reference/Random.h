#pragma once

#include <cstdint>

namespace weldline::reference {

// A small deterministic generator (splitmix64), the same on every platform. Each purpose draws
// from its own stream, so that simplifying one part of a case leaves the others as they were.
class Random {
  public:
    Random(std::uint64_t seed, std::uint64_t stream) : state_(seed ^ mix(stream + 1)) { next(); }

    std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15ull;
        return mix(state_);
    }

    // Uniform in [0, 1).
    double real() { return static_cast<double>(next() >> 11) * 0x1.0p-53; }
    double real(double low, double high) { return low + (high - low) * real(); }

    // Uniform in low..high, both included.
    int integer(int low, int high) {
        return low + static_cast<int>(next() % static_cast<std::uint64_t>(high - low + 1));
    }

    bool chance(double probability) { return real() < probability; }

    template <class T, int n>
    const T& pick(const T (&values)[n]) {
        return values[integer(0, n - 1)];
    }

    template <class Container>
    void shuffle(Container& values, std::size_t first = 0) {
        for (std::size_t i = values.size(); i > first + 1; --i) {
            const std::size_t j = first + static_cast<std::size_t>(next() % (i - first));
            std::swap(values[i - 1], values[j]);
        }
    }

  private:
    static std::uint64_t mix(std::uint64_t z) {
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }

    std::uint64_t state_;
};

}  // namespace weldline::reference
