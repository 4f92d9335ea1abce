// Two unit cubes side by side along x, centres at x = 0.5 and 1.5, judged at their face:
//
//   | -> | <- |

#include <gtest/gtest.h>

#include <cmath>

#include "BindBoxMesh.h"
#include "results/ExplainNode.h"

namespace weldline::test {

namespace {

struct TwoCubes {
    FvMesh fv = boxMesh(2, 1, 1);
    LibraryFields fields;
    Settings settings;

    TwoCubes(Vec3 left, Vec3 right) {
        fields.fillTime = {1.0F, 1.0F};
        fields.smoothed = {1.0, 1.0};
        fields.gradient = {left, right};
        fields.steepness = {1.0, 1.0};
        fields.flatLimit = 0.001;
        settings.truncateAngle = 145.0;
    }
    Judgement converging() const {
        return convergingPairs(fv, fields, settings)->judge(0, 1, {1.0, 0.5, 0.5});
    }
    Judgement meeting(int method = 2) const {
        Settings s = settings;
        s.method = method;
        return meetingPairs(fv, fields, s, 0)->judge(0, 1, {1.0, 0.5, 0.5});
    }
};

void expect(const Judgement& j, Refusal refusal, int cell, double value, double limit) {
    EXPECT_EQ(nameOf(j.refusal), nameOf(refusal));
    EXPECT_EQ(j.cell, cell);
    EXPECT_NEAR(j.value, value, 1e-6);
    EXPECT_NEAR(j.limit, limit, 1e-6);
}

const Vec3 right{1.0, 0.0, 0.0};
const Vec3 left{-1.0, 0.0, 0.0};

}  // namespace

// Both centres come to the face: 1 apart before, 0 after.
TEST(ConvergingPairs, head_on) {
    const Judgement j = TwoCubes(right, left).converging();
    expect(j, Refusal::None, -1, 0.0, 1.0);
    EXPECT_NEAR(j.angle, 180.0, 1e-6);
}

TEST(ConvergingPairs, unreached_before_flat) {
    TwoCubes cubes(right, left);
    cubes.fields.smoothed[1] = 0.0;
    cubes.fields.steepness[1] = 0.0;
    expect(cubes.converging(), Refusal::NotReached, 1, 0.0, 1e-30);
    cubes.fields.smoothed[1] = 1.0;
    cubes.fields.steepness[1] = 0.0005;
    expect(cubes.converging(), Refusal::Flat, 1, 0.0005, 0.001);
}

// The smoothed fill time counts here, the loaded one there.
TEST(Pairs, keeps_two_fill_times) {
    TwoCubes cubes(right, {-0.9, 0.0, 0.0});
    cubes.fields.smoothed[0] = 0.0;
    EXPECT_EQ(cubes.converging().refusal, Refusal::NotReached);
    EXPECT_NE(cubes.meeting().refusal, Refusal::NotReached);
    cubes.fields.smoothed[0] = 1.0;
    cubes.fields.fillTime[0] = 0.0F;
    EXPECT_EQ(cubes.converging().refusal, Refusal::None);
    EXPECT_EQ(cubes.meeting().refusal, Refusal::NotReached);
}

// 30 degrees between the gradients leave a meeting angle of 150.
TEST(ConvergingPairs, streams_that_run_alike) {
    const double c = std::sqrt(0.75);
    expect(TwoCubes({0.5, c, 0.0}, {0.0, 1.0, 0.0}).converging(), Refusal::Alike, -1, 150.0, 145.0);
}

// (1, 1, 1) and (4, 1, 1) have the cosine 6 / sqrt(3 * 18) and 35.26 degrees between them.
TEST(ConvergingPairs, same_signs_though_not_quite_alike) {
    const Judgement j = TwoCubes({1, 1, 1}, {4, 1, 1}).converging();
    EXPECT_EQ(nameOf(j.refusal), nameOf(Refusal::SameSigns));
    EXPECT_NEAR(j.angle, std::acos(6.0 / std::sqrt(54.0)) * 180.0 / std::acos(-1.0), 1e-6);
}

// The right cell flows away from the face, 180 degrees off.
TEST(ConvergingPairs, outside_the_cone) {
    expect(TwoCubes({0.0, 1.0, 0.0}, right).converging(), Refusal::OutsideCone, 1, 180.0, 120.0);
    TwoCubes narrow(right, {-1.0, 1.0, 0.0});
    narrow.settings.boundaryAngle = 40.0;
    expect(narrow.converging(), Refusal::OutsideCone, 1, 45.0, 40.0);
}

// Up and down: the centres, 1 apart, become sqrt(1 + 1) apart.
TEST(ConvergingPairs, parting) {
    expect(TwoCubes({0, 1, 0}, {0, -1, 0}).converging(), Refusal::Parting, -1, std::sqrt(2.0), 1.0);
}

// The steeper left cell takes the whole half step, the right one half of it: from 1 to 0.25.
TEST(ConvergingPairs, the_flatter_cell_moves_less) {
    expect(TwoCubes({2, 0, 0}, {-1, 0, 0}).converging(), Refusal::None, -1, 0.25, 1.0);
}

// Lengths 1 and 0.9: upper limit 0.99, lower limit 0.95e-4 times the factor.
TEST(MeetingPairs, lengths_of_gradients) {
    TwoCubes cubes(right, {-0.9, 0.0, 0.0});
    expect(cubes.meeting(), Refusal::Steep, 0, 1.0, 0.99);
    cubes.settings.gradientFilter = 10000.0;
    cubes.fields.gradient = {{0.9, 0, 0}, left};
    expect(cubes.meeting(), Refusal::Shallow, 0, 0.9, 0.95);
}

// A third cell takes the largest gradient, so that the first two count.
struct ThreeCubes : TwoCubes {
    ThreeCubes(Vec3 first, Vec3 second) : TwoCubes(first, second) {
        fields.gradient.push_back({0.0, 0.0, 9.0});
    }
};

TEST(MeetingPairs, head_on) {
    const Judgement j = ThreeCubes(right, left).meeting();
    EXPECT_EQ(nameOf(j.refusal), nameOf(Refusal::None));
    EXPECT_NEAR(j.angle, 180.0, 1e-6);
}

TEST(MeetingPairs, what_refuses_a_pair) {
    EXPECT_EQ(ThreeCubes({1, 1, 1}, {2, 1, 1}).meeting().refusal, Refusal::SameSigns);
    EXPECT_EQ(ThreeCubes(left, right).meeting().refusal, Refusal::NotTowardsEachOther);
    ThreeCubes cubes(right, left);
    cubes.fv.cellVolume = {1.0, 10.0};
    expect(cubes.meeting(), Refusal::Volumes, -1, 0.1, 0.2);
    cubes.fv.cellVolume = {10.0, 1.0};
    expect(cubes.meeting(), Refusal::Volumes, -1, 0.1, 0.2);
    cubes.fv.cellVolume = {0.0, 1.0};
    EXPECT_EQ(cubes.meeting().refusal, Refusal::None);
}

// Five up for one along: 78.69 degrees off the way to the face; the cone of method 2 is 75 wide,
// that of method 1 is 65.
TEST(MeetingPairs, outside_the_cone) {
    const double off = std::atan(5.0) * 180.0 / std::acos(-1.0);
    expect(ThreeCubes({1, 5, 0}, left).meeting(2), Refusal::OutsideCone, 0, off, 75.0);
    expect(ThreeCubes({1, 5, 0}, left).meeting(1), Refusal::OutsideCone, 0, off, 65.0);
}

TEST(LibraryFields, come_from_the_last_sets) {
    Settings settings;  // method 4, upwind and least squares
    RecordedArrays arrays(7);
    for (std::size_t i = 0; i < arrays.size(); ++i)
        arrays[i] = {{0.01 * static_cast<double>(i)}, {10.0 * static_cast<double>(i)}};
    const LibraryFields second = libraryFields(arrays, {3.0F}, settings, true);
    EXPECT_EQ(second.smoothed[0], 0.0);
    EXPECT_EQ(second.gradient[0].x, 40.0);
    EXPECT_EQ(second.gradient[0].z, 60.0);
    EXPECT_DOUBLE_EQ(second.steepness[0], 0.01 * std::sqrt(1.0 + 4.0 + 9.0));
    EXPECT_EQ(second.flatLimit, 0.001);
    EXPECT_EQ(libraryFields(arrays, {3.0F}, settings, false).gradient[0].x, 10.0);
}

TEST(LibraryFields, flat_gradients_are_zero_where_no_smoothing_follows) {
    Settings settings;
    settings.gradientMethod = 4;
    settings.smoothBefore = 0;
    settings.smoothAfter = 0;
    const RecordedArrays arrays{{{0.0009, 5.0}, {0.0009, 5.0}}, {{0, 0}, {0, 0}}, {{0, 0}, {0, 0}}};
    const LibraryFields fields = libraryFields(arrays, {3.0F, 4.0F}, settings, true);
    EXPECT_EQ(fields.smoothed, (std::vector<double>{3.0, 4.0}));
    EXPECT_TRUE(isFlat(fields, 0));
    EXPECT_EQ(fields.gradient[0].x, 0.0);
    EXPECT_FALSE(isFlat(fields, 1));
    EXPECT_EQ(fields.gradient[1].x, 5.0);
}

TEST(LibraryFields, too_few_arrays_are_refused) {
    EXPECT_ANY_THROW(libraryFields(RecordedArrays(6), {3.0F}, Settings{}, true));
}

}  // namespace weldline::test
