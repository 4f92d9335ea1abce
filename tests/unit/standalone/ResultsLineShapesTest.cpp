// Shape and details of weld lines on blocks of unit cubes whose streams meet on a plane x = 4.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

#include "GridMesh.h"
#include "JoinedPart.h"
#include "comm/ThreadRanks.h"
#include "partition/SplitMesh.h"
#include "results/LineDetails.h"
#include "results/LineShapes.h"
#include "results/PatchPlaces.h"
#include "results/SkinProjection.h"

namespace weldline::test {

namespace {

constexpr int kLong = 8;
constexpr int kWide = 10;
constexpr int kHigh = 3;

// What one rank has: streams from both ends of the x axis, weld nodes at x = 4.
struct Streams {
    std::vector<float> fillTime;
    std::vector<Vec3> directions;
    std::vector<double> angles;
    std::vector<double> column;  // per cell the number of its layer along x

    explicit Streams(const FvMesh& mesh) {
        for (const Vec3 centre : mesh.cellCentre) {
            const double way = centre.x < 4.0 ? centre.x : kLong - centre.x;
            fillTime.push_back(static_cast<float>(way));
            directions.push_back({centre.x < 4.0 ? 1.0 : -1.0, 0.0, 0.0});
            column.push_back(std::floor(centre.x));
        }
        for (const Vec3 point : mesh.points) angles.push_back(point.x == 4.0 ? 20.0 : 180.0);
    }
};

struct Joined : JoinedPart {
    RankPart rankPart;

    Joined(Ranks& ranks, MeshPart own)
        : JoinedPart(ranks, std::move(own)), rankPart{ranks, interface, part.nodeNumber} {}
};

struct Found {
    LineMesh cut;
    std::vector<LineShape> shapes;
    WeldLines lines;
};

Found find(const Joined& joined) {
    const Streams streams(joined.mesh);
    Found found;
    Ranks& ranks = joined.rankPart.ranks;
    found.lines =
        findWeldLines(joined.rankPart, joined.mesh, streams.angles, streams.fillTime, 180.0);
    found.cut =
        cutOutLines(joined.rankPart, joined.mesh, found.lines, streams.angles, streams.directions);
    found.shapes = shapesOf(found.cut);
    addShapes(ranks, found.shapes, kWeldLimit, found.lines);
    const BoundaryGroups groups =
        groupBoundaryFaces(joined.mesh, joined.part.patches, GroupPatterns{});
    addNearestPatches(findPatchPlaces(ranks, joined.mesh, joined.part.patches, groups),
                      found.lines);
    addCarried(ranks, joined.mesh, streams.fillTime, "column", streams.column, found.lines);
    return found;
}

void onRanks(int count, const std::function<void(Ranks&, const Found&)>& check) {
    const MeshPart whole = wholePart(hexahedraMesh(kLong, kWide, kHigh));
    std::vector<int> partOfCell(static_cast<std::size_t>(whole.mesh.cellCount()));
    for (std::size_t c = 0; c < partOfCell.size(); ++c)
        partOfCell[c] = static_cast<int>(hashed(static_cast<unsigned>(c), 0, 0, 7) * count);
    MeshSplitter splitter(whole, partOfCell, count);
    std::vector<MeshPart> parts;
    for (int p = 0; p < count; ++p) parts.push_back(splitter.part(p));
    runAsThreads(count, [&](Ranks& ranks) {
        check(ranks, find(Joined(ranks, parts[static_cast<std::size_t>(ranks.rank())])));
    });
}

Found onOneRank() {
    Found result;
    onRanks(1, [&](Ranks&, const Found& found) { result = found; });
    return result;
}

}  // namespace

TEST(LineShapes, plane_is_cut_out_once) {
    const LineMesh cut = onOneRank().cut;
    int weld = 0;
    for (const int line : cut.line) weld += line > 0 ? 1 : 0;
    EXPECT_EQ(weld, 11 * 4);
    // The sides and diagonals of 10 x 3 squares.
    EXPECT_EQ(cut.links.size(), 10U * 4 + 11 * 3 + 2 * 30);
    EXPECT_EQ(cut.surface.count(), 30);
    // Of each side of the block the two rows of faces beside the plane.
    EXPECT_EQ(cut.skin.count(), 2 * (2 * kWide + 2 * kHigh));
}

TEST(LineShapes, length_is_that_of_the_middle) {
    const auto shapes = onOneRank().shapes;
    ASSERT_EQ(shapes.size(), 1U);
    EXPECT_NEAR(shapes[0].length, 10.0, 0.5);
    EXPECT_EQ(shapes[0].branchLength, 0.0);
    for (const Vec3 point : shapes[0].path[0].points) {
        EXPECT_EQ(point.x, 4.0);
        EXPECT_NEAR(point.z, 1.5, 0.6);
    }
}

// Round the block: two sides of 10 and two of 3; each corner is rounded by about a cell.
TEST(LineShapes, skin_curve_goes_round_and_stays_on_the_skin) {
    const auto shapes = onOneRank().shapes;
    ASSERT_EQ(shapes[0].skin.size(), 1U);
    EXPECT_TRUE(shapes[0].skin[0].isClosed);
    EXPECT_NEAR(shapes[0].skinLength, 26.0, 5.2);
    for (const Vec3 p : shapes[0].skin[0].points) {
        EXPECT_NEAR(p.x, 4.0, 1e-12);
        const double depth = std::min({p.y, kWide - p.y, p.z, kHigh - p.z});
        EXPECT_NEAR(depth, 0.0, 1e-12);
    }
}

TEST(LineShapes, curves_carry_angle_and_time) {
    const LineCurve curve = onOneRank().shapes[0].path[0];
    for (std::size_t p = 0; p < curve.points.size(); ++p) {
        EXPECT_EQ(curve.angle[p], 20.0);
        EXPECT_NEAR(curve.time[p], 3.5, 1e-6);
    }
}

TEST(LineShapes, do_not_depend_on_the_ranks) {
    const Found whole = onOneRank();
    for (const int count : {2, 5})
        onRanks(count, [&](Ranks& ranks, const Found& found) {
            const WeldLine& line = found.lines.lines.at(0);
            EXPECT_EQ(line.length, whole.lines.lines[0].length);
            EXPECT_EQ(line.skinLength, whole.lines.lines[0].skinLength);
            EXPECT_EQ(line.patch, "gate");
            EXPECT_EQ(line.carried.at(0).mean, 3.5);
            if (ranks.rank() != 0) {
                EXPECT_TRUE(found.cut.points.empty());
                return;
            }
            EXPECT_EQ(found.cut.number, whole.cut.number);
            EXPECT_EQ(found.cut.links, whole.cut.links);
            EXPECT_EQ(found.cut.skin.entries, whole.cut.skin.entries);
            EXPECT_EQ(found.cut.surface.entries, whole.cut.surface.entries);
        });
}

TEST(LineDetails, nearest_patch_is_no_wall) {
    const WeldLine line = onOneRank().lines.lines.at(0);
    // From (4, 5, 1.5) to the middle of a face at x = 0, half an edge aside.
    EXPECT_EQ(line.patch, "gate");
    EXPECT_NEAR(line.patchDistance, std::sqrt(16.25), 1e-12);
}

TEST(LineDetails, carried_values_are_those_of_the_cells_around) {
    const CarriedValue value = onOneRank().lines.lines.at(0).carried.at(0);
    EXPECT_EQ(value.name, "column");
    EXPECT_EQ(value.smallest, 3.0);
    EXPECT_EQ(value.mean, 3.5);
    EXPECT_EQ(value.largest, 4.0);
}

TEST(LineDetails, class_follows_from_the_mean_angle) {
    OneRank alone;
    WeldLines lines;
    lines.lines.resize(2);
    lines.lines[0].id = 1;
    lines.lines[0].meanAngle = 134.9;
    lines.lines[1].id = 2;
    lines.lines[1].meanAngle = 135.0;
    addShapes(alone, {}, 135.0, lines);
    EXPECT_EQ(lines.lines[0].kind, LineClass::Weld);
    EXPECT_EQ(lines.lines[1].kind, LineClass::Meld);
    EXPECT_EQ(nameOf(lines.lines[1].kind), "meld");
}

TEST(LineDetails, noise_goes_and_ids_stay) {
    WeldLines lines;
    for (int id = 1; id <= 3; ++id) {
        WeldLine line;
        line.id = id;
        line.nodeCount = 10 - 3 * id;  // 7, 4, 1
        line.length = id == 2 ? 0.5 : 2.0;
        lines.lines.push_back(line);
    }
    lines.nodeLine = {1, 2, 3, 0};
    lines.weldNodes = 12;
    const DroppedLines dropped = dropNoise({1.0, 2}, lines);
    EXPECT_EQ(dropped.lines, 2);
    EXPECT_EQ(dropped.nodes, 5);
    ASSERT_EQ(lines.lines.size(), 1U);
    EXPECT_EQ(lines.lines[0].id, 1);
    EXPECT_EQ(lines.nodeLine, (std::vector<int>{1, 0, 0, 0}));
    EXPECT_EQ(lines.weldNodes, 7);
}

TEST(LineDetails, lines_at_the_limits_stay) {
    WeldLines lines;
    lines.lines.resize(1);
    lines.lines[0].id = 1;
    lines.lines[0].nodeCount = 2;
    lines.lines[0].length = 1.0;
    EXPECT_EQ(dropNoise({1.0, 2}, lines).lines, 0);
}

TEST(SkinProjection, nearest_point_of_a_triangle) {
    const Vec3 a{0, 0, 0};
    const Vec3 b{4, 0, 0};
    const Vec3 c{0, 4, 0};
    const auto expect = [&](Vec3 x, Vec3 nearest) {
        const Vec3 found = nearestOnTriangle(x, a, b, c);
        EXPECT_NEAR(norm(found - nearest), 0.0, 1e-12);
    };
    expect({1, 1, 5}, {1, 1, 0});    // above the inside
    expect({2, -3, 1}, {2, 0, 0});   // beside an edge
    expect({9, -1, 0}, {4, 0, 0});   // beyond a corner
    expect({3, 3, -2}, {2, 2, 0});   // beside the long edge
    expect({-1, -1, 0}, {0, 0, 0});  // beyond the right angle
}

TEST(SkinProjection, flat_triangle_is_its_edges) {
    const Vec3 found = nearestOnTriangle({1, 2, 0}, {0, 0, 0}, {2, 0, 0}, {1, 0, 0});
    EXPECT_NEAR(norm(found - Vec3{1, 0, 0}), 0.0, 1e-12);
}

TEST(SkinProjection, point_without_skin_around_stays) {
    LineMesh mesh;
    mesh.points = {{0, 0, 0}};
    const Vec3 found = SkinProjection(mesh).onSkin({1, 2, 3}, {0});
    EXPECT_EQ(found.z, 3.0);
}

}  // namespace weldline::test
