#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "CKVR3DWeldLine.h"
#include "TestHost.h"

namespace weldline::test {

// A truncation angle that no node reaches, so that the angles stay as the pair tests left them.
constexpr double kNoTruncation = 1000.0;

// What a head-on pair leaves at a node: 180.0 - acos(-1) * 180.0 / 3.14159265. Pi is longer than
// its eight digits by 3.59e-9, so the angle is 180.00000020568 and the rest just below zero.
constexpr double kHeadOn = -2.0567998149090272e-07;

// What a perpendicular pair leaves: 180.0 - (pi / 2) * 180.0 / 3.14159265.
constexpr double kPerpendicular = 89.99999989716001;

// The calculator's record bound to a test host, with short names for what angle tests write.
//
// A pace maker is a last cell, in all nodes and without faces, that takes part in no pair because
// its gradient counts as zeroed. Its gradient (1000, 0, 0) lifts the upper magnitude limit to 990,
// and its volume makes all nodes neighbours of each other, so that no node stands alone.
struct Bench {
    enum class PaceMaker { Yes, No };

    Bench();

    TestHost host;
    CKVR3DWeldLine line;

    int addNode(Point position);
    int addCell(Point centre, Point gradient, std::vector<int> nodes);
    void bind(PaceMaker paceMaker = PaceMaker::Yes);  // after all nodes, cells and faces
    void setGradient(int slot, Point gradient);
    void setSecondGradient(int slot, Point gradient);
    void run(int method);  // 1 to 4
    double angle(int node) const { return line.m_pMeetingAngle[node]; }
    bool met(int node) const { return angle(node) != 180.0; }

  private:
    int m_nodes = 0;
    std::vector<Point> m_gradients;
};

// Where the two cells of TwoCells, the centre of their face and their four nodes lie.
struct Layout {
    Point a{9, 20, 30};
    Point b{11, 20, 30};
    Point face{10, 20, 30};
    std::vector<Point> nodes{{10, 21, 31}, {10, 19, 31}, {10, 19, 29}, {10, 21, 29}};
    bool sharedFace = true;

    // Node 1 and the face centre in one point, so that both pair tests judge at the same place.
    Layout& judgedAt(Point point) {
        nodes[0] = face = point;
        return *this;
    }
};

//           1..4
//   +--------+--------+
//   | A ->   |   <- B |      cell 1 (A) and cell 2 (B) share inner face 1 and nodes 1 to 4;
//   +--------+--------+      their gradients (1, 0, 0) and (-1, 0, 0) meet head-on
struct TwoCells : Bench {
    explicit TwoCells(const Layout& layout = {});
};

// One own cell (1) and its neighbour in another partition behind interface face 1.
//
//            1, 2
//   +---------||- - - - -
//   | A ->  3 ||  <- halo      the interface face names nodes 1 and 2; node 3 is A's alone
//   +---------||- - - - -
struct HaloPair : Bench {
    HaloPair();
    int halo;  // slot of the neighbour
};

// Whether `method` finds cells A and B to meet at node 1 after `change`.
using Change = std::function<void(TwoCells&)>;
bool meets(int method, const Change& change, const Layout& layout = {});

// For INSTANTIATE_TEST_SUITE_P over method numbers.
std::string methodName(const testing::TestParamInfo<int>& info);

// Equal to the last bit; NaN equals NaN.
bool sameBits(double left, double right);

}  // namespace weldline::test
