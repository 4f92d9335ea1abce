#pragma once

#include <cstdint>
#include <random>

#include "TestHost.h"

namespace weldline::test {

// Random numbers that are the same with every standard library.
class Dice {
  public:
    explicit Dice(std::uint64_t seed) : m_engine(seed) {}

    int below(int count) { return static_cast<int>(m_engine() % static_cast<unsigned>(count)); }
    double unit() { return static_cast<double>(m_engine() >> 11) * 0x1p-53; }  // [0, 1)
    double between(double low, double high) { return low + (high - low) * unit(); }

    // A cell value: mostly positive, often equal to others, at or about the limit 1e-30, or empty.
    double value();
    // The same with infinite and undefined ones.
    double wildValue();
    Point point();

  private:
    std::mt19937_64 m_engine;
};

// Adds a small random mesh without any geometric sense: 1 to 6 cells, faces of all kinds with any
// area, centre and weight. Not finished.
void addRandomScene(TestHost& host, Dice& dice);

// Random stencils and weights for `faces` inner faces, over slots 1 to `slots`.
RbfRows randomRbfRows(Dice& dice, int faces, int slots);

// An exchange that changes the halo slots a little differently at every call.
class ChangingHalo {
  public:
    explicit ChangingHalo(TestHost& host);
    void operator()(double* cellArray);

  private:
    std::vector<int> m_slots;
    int m_calls = 0;
};

}  // namespace weldline::test
