#pragma once

#include <random>
#include <vector>

#include "Bench.h"

namespace weldline::test {

// A small box of shaken hexahedra around the origin with random gradients that mostly flow to the
// plane x = 0 or to the side x = max. That side is a partition interface; the other sides are
// walls, outlets and symmetry, or bare. Rows of faces are shuffled, inner faces are turned round at
// random.
struct RandomBox : Bench {
    explicit RandomBox(unsigned seed);

    bool chance(double probability) { return real(0.0, 1.0) < probability; }
    double real(double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(m_random);
    }
    int whole(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_random); }

  private:
    int node(int i, int j, int k) const { return 1 + i + (m_n[0] + 1) * (j + (m_n[1] + 1) * k); }
    int cell(int i, int j, int k) const { return 1 + i + m_n[0] * (j + m_n[1] * k); }
    Point mean(const std::vector<int>& nodes) const;
    std::vector<int> faceNodes(int i, int j, int k, int axis) const;
    void addNodesAndCells();
    void addFaces();
    void addSide(int i, int j, int k, int axis, int owner, bool upper);
    void fillFields();
    void fillSettings();
    void shuffleFaceRows();

    std::mt19937 m_random;
    std::array<int, 3> m_n{};
    std::vector<Point> m_positions{{}};
};

}  // namespace weldline::test
