#pragma once

#include <vector>

#include "Bench.h"

namespace weldline::test {

// The four methods once more, as plainly as possible and one by one, on a copy of what they change.
// For random meshes, where the record and this must end with the same bits.
class NaiveAngles {
  public:
    explicit NaiveAngles(Bench& bench);
    void run(int method);

    std::vector<double> angles;  // per node, 1-based
    std::vector<double> gx, gy, gz;
    double boundaryAngle, upper, lower;

  private:
    using Pair = void (NaiveAngles::*)(int node, int position, int a, int b);

    double length(int cell) const;
    double angleBetween(int a, int b) const;
    Point centre(int cell) const;
    Point faceCentre(int cell, int position) const;
    bool contains(const int* row, int value) const;

    void prepare(double defaultAngle);
    bool rejected(int a, int b) const;
    bool directed(int a, int b) const;
    int agreeingSigns(int a, int b) const;
    bool inCone(int cell, const Point& point, double limit) const;
    void judge(int node, const Point& point, int a, int b);
    void nodePair(int node, int a, int b);
    void facePair(int node, int position, int a, int b);
    void convergingPair(int node, int position, int a, int b);
    Point movedPoint(int cell, double step) const;

    void cellLoop(int node);
    void faceWalk(int node, Pair pair);
    void hybrid(int node);
    void copySecondSet();
    void finish();

    CKVR3DWeldLine& m_line;
    CPartitionFace_DLL& m_partition;
    double m_switch;
};

}  // namespace weldline::test
