// Whole calculations on plates whose weld lines are known: melt spreads from point gates at the
// same speed everywhere, so that fronts meet on the middle perpendiculars between the gates.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "BindBoxMesh.h"
#include "bind/Analysis.h"
#include "results/FlowDirection.h"
#include "results/LineShapes.h"

namespace weldline::test {

namespace {

constexpr int kLayers = 3;

struct Plate {
    FvMesh mesh;
    LineMesh cut;
    WeldLines lines;
    std::vector<LineShape> shapes;

    // `time` is the fill time at a place of a plate of unit cubes.
    Plate(int nx, int ny, const std::function<double(Vec3)>& time)
        : mesh(boxMesh(nx, ny, kLayers)) {
        std::vector<float> fillTime;
        for (const Vec3 centre : mesh.cellCentre)
            fillTime.push_back(static_cast<float>(1.0 + time(centre)));
        TemporaryFolder folder;
        HostOptions options;
        options.controlFile =
            folder.write("run.cmp", "[WeldLinePlotCtrl]\n[/WeldLinePlotCtrl]\n");
        HostModel model(mesh, boxGroups(mesh, "WWWWWW"), fillTime, options);
        const std::vector<double> angles = runWeldLine(model);
        lines = findWeldLines(mesh, angles, fillTime, 135.0);
        UncutMesh uncut(mesh.pointCount());
        cut = cutOutLines(uncut.part(), mesh, lines, angles, flowDirections(mesh, fillTime));
        shapes = shapesOf(cut);
    }
};

double distance(Vec3 a, Vec3 b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

std::function<double(Vec3)> fromGates(std::vector<Vec3> gates) {
    return [gates = std::move(gates)](Vec3 x) {
        double time = distance(x, gates.front());
        for (const Vec3 gate : gates) time = std::min(time, distance(x, gate));
        return time;
    };
}

// The two nearest gates are equally far where fronts meet; their difference is at most twice the
// distance from the line.
double offLine(Vec3 x, const std::vector<Vec3>& gates) {
    std::vector<double> ways;
    for (const Vec3 gate : gates) ways.push_back(distance(x, gate));
    std::sort(ways.begin(), ways.end());
    return 0.5 * (ways[1] - ways[0]);
}

void expectWithinACell(const Plate& plate, const std::vector<Vec3>& gates) {
    for (const auto& curves : {plate.shapes[0].path, plate.shapes[0].skin})
        for (const LineCurve& curve : curves)
            for (const Vec3 point : curve.points) EXPECT_LT(offLine(point, gates), 1.0);
}

}  // namespace

// Gates at both ends: the whole middle plane, 20 long.
TEST(KnownLines, straight_fronts) {
    const Plate plate(40, 20, [](Vec3 x) { return std::min(x.x, 40.0 - x.x); });
    ASSERT_EQ(plate.shapes.size(), 1U);
    EXPECT_NEAR(plate.shapes[0].length, 20.0, 0.05 * 20.0);
    EXPECT_EQ(plate.shapes[0].branchLength, 0.0);
    for (const Vec3 point : plate.shapes[0].path[0].points) EXPECT_NEAR(point.x, 20.0, 1.0);
}

// Gates at (10, 15) and (30, 15): x = 20 from side to side, 30 long.
TEST(KnownLines, two_point_gates) {
    const std::vector<Vec3> gates{{10.2, 15.1, 0}, {29.8, 15.1, 0}};
    const Plate plate(40, 30, fromGates(gates));
    ASSERT_GE(plate.shapes.size(), 1U);
    EXPECT_NEAR(plate.shapes[0].length, 30.0, 0.05 * 30.0);
    expectWithinACell(plate, gates);
}

// Gates at (10, 10) and (45, 35): the line runs at an angle to the mesh, through (27.5, 22.5) with
// slope -35 / 25. It leaves the plate of 55 x 45 at (11.43, 45) and (43.57, 0): 55.3 long.
TEST(KnownLines, across_the_mesh) {
    const std::vector<Vec3> gates{{10, 10, 0}, {45, 35, 0}};
    const Plate plate(55, 45, fromGates(gates));
    ASSERT_GE(plate.shapes.size(), 1U);
    EXPECT_NEAR(plate.shapes[0].length, std::hypot(32.14, 45.0), 0.05 * 55.3);
    expectWithinACell(plate, gates);
}

// Gates at (10, 10), (50, 10) and (30, 55) of a plate of 60 x 60. Equally far from all is
// (30, 28.06): 400 + (y - 10)^2 = (55 - y)^2. From there one line goes straight down to y = 0, two
// go up with slope -+20 / 45 and leave the plate at y = 41.39: lengths 28.06, 32.83 and 32.83.
TEST(KnownLines, three_gates_meet_in_a_point) {
    const std::vector<Vec3> gates{{10, 10, 0}, {50, 10, 0}, {30, 55, 0}};
    const Plate plate(60, 60, fromGates(gates));
    ASSERT_GE(plate.shapes.size(), 1U);
    const LineShape& shape = plate.shapes[0];
    ASSERT_EQ(shape.path.size(), 2U);
    EXPECT_NEAR(shape.length, 2 * 32.83, 0.05 * 2 * 32.83);
    EXPECT_NEAR(shape.branchLength, 28.06, 0.05 * 28.06);
    expectWithinACell(plate, gates);
}

}  // namespace weldline::test
