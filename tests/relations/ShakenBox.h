#pragma once

#include <cstdint>

#include "BoxMesh.h"

namespace weldline::test {

// Random numbers that are the same with every compiler and standard library.
class Shaker {
  public:
    double between(double low, double high) { return low + (high - low) * unit(); }
    // A multiple of `step` between -count and count times the step.
    double multiple(double step, int count) {
        return step *
               static_cast<double>(static_cast<int>(between(0.0, 2.0 * count + 1.0)) - count);
    }

  private:
    double unit() {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<double>(m_state >> 40U) / (1U << 24U);
    }

    std::uint64_t m_state = 1;
};

// Fills a host with a box of 6 x 4 x 3 cells of edge 0.5 in which two fronts meet:
//
//   inlet at -x, symmetry at -y, wall at +y and -z, outlet at +z, interface faces at +x
//
// Everything is shaken: nodes, centres, area vectors, volumes, weights, values. The mesh closes
// only roughly, which no relation needs. All coordinates are multiples of 1/1024 and all weights
// multiples of 1/64, so that differences of coordinates are exact. The exchange copies to each halo
// slot the value of the own cell at the other end of its row of cells. Two cells are not reached.
void addShakenBox(TestHost& host);

// Control section: method and gradient method first, the lines after them.
std::string settings(int method, int gradientMethod, const std::vector<std::string>& lines = {});

}  // namespace weldline::test
