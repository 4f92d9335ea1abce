// Whole calculations on plates whose weld lines are known: plane fronts move at the same speed and
// meet where they come at the same time. No smoothing after the gradients: with the default twenty
// passes fronts that meet at 60 degrees come out above the limit on so coarse a mesh.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <utility>
#include <vector>

#include "BindBoxMesh.h"
#include "bind/Analysis.h"
#include "bind/TrappedAir.h"
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

    // `time` is the fill time at a place of a plate of unit cubes, `isGap` tells where air stays.
    Plate(
        int nx, int ny, const std::function<double(Vec3)>& time,
        const std::function<bool(Vec3)>& isGap = [](Vec3) { return false; })
        : mesh(boxMesh(nx, ny, kLayers)) {
        std::vector<float> fillTime;
        for (const Vec3 centre : mesh.cellCentre)
            fillTime.push_back(isGap(centre) ? 0.0F : static_cast<float>(1.0 + time(centre)));
        closeTrappedAir(UncutMesh().part(), mesh, fillTime);
        TemporaryFolder folder;
        HostOptions options;
        options.controlFile = folder.write("run.cmp",
                                           "[WeldLinePlotCtrl]\nWeldlingAngleMethod = 4\n"
                                           "nSmooth_afterGrad = 0\n[/WeldLinePlotCtrl]\n");
        HostModel model(mesh, boxGroups(mesh, "WWWWWW"), fillTime, options);
        const std::vector<double> angles = runWeldLine(model);
        lines = findWeldLines(mesh, angles, fillTime, 135.0);
        UncutMesh uncut(mesh.pointCount());
        cut = cutOutLines(uncut.part(), mesh, lines, angles, flowDirections(mesh, fillTime));
        shapes = shapesOf(cut);
    }
};

// A front that moves along `direction` (a unit vector) and is at `origin` at time 0.
struct Front {
    Vec3 direction;
    Vec3 origin;

    double time(Vec3 x) const { return dot(direction, x - origin); }
};

std::function<double(Vec3)> firstOf(std::vector<Front> fronts) {
    return [fronts = std::move(fronts)](Vec3 x) {
        double time = fronts.front().time(x);
        for (const Front& front : fronts) time = std::min(time, front.time(x));
        return 100.0 + time;
    };
}

Vec3 along(double degrees) {
    const double angle = degrees * std::numbers::pi / 180.0;
    return {std::cos(angle), std::sin(angle), 0.0};
}

// How far a place is from where the first two fronts come together: their times part by
// |d1 - d2| per unit of length.
double offLine(Vec3 x, const std::vector<Front>& fronts) {
    std::vector<std::pair<double, Vec3>> times;
    for (const Front& front : fronts) times.emplace_back(front.time(x), front.direction);
    std::sort(times.begin(), times.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    return (times[1].first - times[0].first) / norm(times[1].second - times[0].second);
}

void expectWithinACell(const Plate& plate, const std::vector<Front>& fronts) {
    for (const auto& curves : {plate.shapes[0].path, plate.shapes[0].skin})
        for (const LineCurve& curve : curves)
            for (const Vec3 point : curve.points) EXPECT_LT(offLine(point, fronts), 1.0);
}

}  // namespace

// Head-on along x: the whole middle plane, 20 long.
TEST(KnownLines, along_the_mesh) {
    const std::vector<Front> fronts{{along(0), {20, 0, 0}}, {along(180), {20, 0, 0}}};
    const Plate plate(40, 20, firstOf(fronts));
    ASSERT_GE(plate.shapes.size(), 1U);
    EXPECT_NEAR(plate.shapes[0].length, 20.0, 0.05 * 20.0);
    EXPECT_EQ(plate.shapes[0].branchLength, 0.0);
    expectWithinACell(plate, fronts);
}

// The same with air that stays along two thirds of the line, 1 to 5 wide, and once through the
// whole thickness.
TEST(KnownLines, along_trapped_air) {
    const std::vector<Front> fronts{{along(0), {20, 0, 0}}, {along(180), {20, 0, 0}}};
    const auto isGap = [](Vec3 x) {
        return x.y < 14 && std::abs(x.x - 20) < 1 + x.y / 7 && (x.z < 2 || x.y < 3);
    };
    const Plate plate(40, 20, firstOf(fronts), isGap);
    ASSERT_GE(plate.shapes.size(), 1U);
    EXPECT_NEAR(plate.shapes[0].length, 20.0, 0.05 * 20.0);
    EXPECT_EQ(plate.shapes[0].branchLength, 0.0);
    expectWithinACell(plate, fronts);
}

// Head-on at 30 degrees to the mesh, through the middle of a plate 45 wide: 45 / cos(30) = 51.96.
TEST(KnownLines, across_the_mesh) {
    const Vec3 middle{27.5, 22.5, 0};
    const std::vector<Front> fronts{{along(30), middle}, {along(210), middle}};
    const Plate plate(55, 45, firstOf(fronts));
    ASSERT_GE(plate.shapes.size(), 1U);
    EXPECT_NEAR(plate.shapes[0].length, 51.96, 0.05 * 51.96);
    expectWithinACell(plate, fronts);
}

// At a meeting angle of 60 degrees.
TEST(KnownLines, oblique_fronts) {
    const std::vector<Front> fronts{{along(30), {20, 0, 0}}, {along(150), {20, 0, 0}}};
    const Plate plate(40, 30, firstOf(fronts));
    ASSERT_GE(plate.shapes.size(), 1U);
    EXPECT_NEAR(plate.shapes[0].length, 30.0, 0.05 * 30.0);
    expectWithinACell(plate, fronts);
}

// Three fronts 120 degrees apart meet in (30, 28) of a plate of 60 x 60: one line goes down, 28
// long, two go up to the sides at 30 degrees, 30 / cos(30) = 34.64 long.
TEST(KnownLines, three_fronts_meet_in_a_point) {
    const Vec3 point{30, 28, 0};
    const std::vector<Front> fronts{{along(270), point}, {along(30), point}, {along(150), point}};
    const Plate plate(60, 60, firstOf(fronts));
    ASSERT_GE(plate.shapes.size(), 1U);
    const LineShape& shape = plate.shapes[0];
    ASSERT_EQ(shape.path.size(), 2U);
    EXPECT_NEAR(shape.length, 2 * 34.64, 0.05 * 2 * 34.64);
    EXPECT_NEAR(shape.branchLength, 28.0, 0.05 * 28.0);
    expectWithinACell(plate, fronts);
}

}  // namespace weldline::test
