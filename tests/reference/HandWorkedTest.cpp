// The reference itself, on cases small enough to be worked out by hand.
#include <gtest/gtest.h>

#include <cmath>

#include "Reference.h"
#include "StrictHost.h"
#include "Workspace.h"

namespace weldline::reference {
namespace {

// A partition of a few cells with centres on the given places, volume 1, value 1, no faces.
PartitionData cellsAt(const std::vector<std::array<double, 3>>& centres) {
    PartitionData d;
    d.cells = d.slots = static_cast<int>(centres.size());
    d.xc = d.yc = d.zc = d.volume = d.nodeX = d.nodeY = d.nodeZ = d.lambda = {poisonReal};
    d.innerFace = {PartitionData::Reals(9, poisonReal)};
    d.cellNode = d.cellFace = d.cellFaceType = d.cellNeighbour = {{}};
    d.flow = d.biInjection = {0.0f};
    d.cellState = {poisonInt};
    for (const auto& [x, y, z] : centres) {
        d.xc.push_back(x);
        d.yc.push_back(y);
        d.zc.push_back(z);
        d.volume.push_back(1.0);
        d.flow.push_back(1.0f);
        d.biInjection.push_back(9.0f);
        d.cellState.push_back(0);
        d.cellNode.push_back({0});
        d.cellFace.push_back({0});
        d.cellFaceType.push_back({0});
        d.cellNeighbour.push_back({0});
    }
    return d;
}

void addFace(PartitionData& d, int a, int b, double lambda, std::array<double, 3> area) {
    d.innerFace.push_back({poisonReal, double(a), double(b), area[0], area[1], area[2], 0, 0, 0});
    d.lambda.push_back(lambda);
}

void addNode(PartitionData& d, double x, double y, double z, const std::vector<int>& cells) {
    ++d.nodes;
    d.nodeX.push_back(x);
    d.nodeY.push_back(y);
    d.nodeZ.push_back(z);
    for (int c : cells) {
        d.cellNode[c].push_back(d.nodes);
        ++d.cellNode[c][0];
    }
}

// A reference bound to such a partition.
class Bound {
  public:
    explicit Bound(const PartitionData& data, const CaseParameters& parameters = {})
        : case_{parameters, {{data}}, {}}, collective_(1), host_(case_, 0, collective_, log_) {
        host_.prepareBinding(controlPath);
        reference_.setPartitionInterface(&host_);
        reference_.setKVRCom(&host_, &host_);
        reference_.setBiIMFlowData(host_.biInjection());
        reference_.setFlowData(&host_.gv(), &host_.mesh());
    }
    Reference* operator->() { return &reference_; }

    static constexpr const char* controlPath = "run.cmp";

  private:
    Case case_;
    Log log_;
    Collective collective_;
    StrictHost host_;
    Reference reference_;
};

// [1 | 2] values 2 and 5, area (1, 0, 0), volumes 1 and 0.5: both sides take the smaller value 2.
// Cell 1: (1/1) * 1 * 2 = 2. Cell 2: -(1/0.5) * 1 * 2 = -4.
TEST(HandWorked, upwind_takes_the_smaller_value) {
    PartitionData d = cellsAt({{0, 0, 0}, {1, 0, 0}});
    d.flow = {0.0f, 2.0f, 5.0f};
    d.volume[2] = 0.5;
    addFace(d, 1, 2, 0.5, {1, 0, 0});
    Bound bound(d);
    bound->GradVarb_Upwind(bound->m_pVariable, bound->m_pGradX, bound->m_pGradY, bound->m_pGradZ);
    EXPECT_EQ(bound->m_pGradX[1], 2.0);
    EXPECT_EQ(bound->m_pGradX[2], -4.0);
    EXPECT_EQ(bound->m_pZeroGradFlag[1], 0);
}

// [1 | 2] phi 1 and 3, lambda 0.25, area 2: the face value is 0.75 * 1 + 0.25 * 3 = 1.5 and the
// only one of both cells. [3] has no face and becomes 0.
TEST(HandWorked, smoothing_averages_face_values) {
    PartitionData d = cellsAt({{0, 0, 0}, {1, 0, 0}, {5, 0, 0}});
    d.flow = {0.0f, 1.0f, 3.0f, 7.0f};
    addFace(d, 1, 2, 0.25, {0, 2, 0});
    Bound bound(d);
    bound->Smooth_Variable(bound->m_pVariable, 1);
    EXPECT_EQ(bound->m_pVariable[1], 1.5);
    EXPECT_EQ(bound->m_pVariable[2], 1.5);
    EXPECT_EQ(bound->m_pVariable[3], 0.0);
    EXPECT_EQ(bound->m_pVariableOrg[3], 7.0);
}

// Cell 1 with a neighbour at distance 1 along each axis and phi = 2x + 3y - z + 4: the normal
// matrix of cell 1 is the unit matrix, the right-hand side (2, 3, -1).
TEST(HandWorked, least_squares_reproduces_a_linear_field) {
    PartitionData d = cellsAt({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    d.flow = {0.0f, 4.0f, 6.0f, 7.0f, 3.0f};
    for (int b : {2, 3, 4}) addFace(d, 1, b, 0.5, {1, 1, 1});
    Bound bound(d);
    bound->GradVarb_Iterative(bound->m_pVariable, bound->m_pGrad2X, bound->m_pGrad2Y,
                              bound->m_pGrad2Z);
    EXPECT_EQ(bound->m_pGrad2X[1], 2.0);
    EXPECT_EQ(bound->m_pGrad2Y[1], 3.0);
    EXPECT_EQ(bound->m_pGrad2Z[1], -1.0);
}

// Three cells in a row along x: Syy - Sxy^2 / Sxx = 0, a zero second pivot. Three cells in the
// plane z = 0, each joined to the two others, pass: their first two pivots are at least 0.5, and
// the third, 0, is not tested.
TEST(HandWorked, singularity_test_looks_at_two_pivots) {
    PartitionData row = cellsAt({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
    addFace(row, 1, 2, 0.5, {1, 0, 0});
    addFace(row, 2, 3, 0.5, {1, 0, 0});
    EXPECT_EQ(Bound(row)->checkSingularLSMatrix(), 1);

    PartitionData triangle = cellsAt({{1, 0, 0}, {0, 0, 0}, {0, 1, 0}});
    addFace(triangle, 1, 2, 0.5, {1, 0, 0});
    addFace(triangle, 2, 3, 0.5, {1, 0, 0});
    addFace(triangle, 3, 1, 0.5, {1, 0, 0});
    EXPECT_EQ(Bound(triangle)->checkSingularLSMatrix(), 0);
}

//   1 --> n <-- 2        3 (largest gradient, elsewhere)
// Gradients (1, 0, 0) and (-1, 0, 0) head-on at two nodes half way. The planes xy and zx count, no
// axis has the same sign. The angle is acos(-1) * 180 / 3.14159265, a little above 180, so both
// nodes get a value just below 0 and hold each other below the limit. Cell 3 is there because the
// largest gradient is filtered out; its node meets nothing and gets 180.
TEST(HandWorked, head_on_streams_meet_at_zero_degrees) {
    PartitionData d = cellsAt({{-1, 0, 0}, {1, 0, 0}, {9, 9, 9}});
    addNode(d, 0, 0, 0, {1, 2});
    addNode(d, 0, 0.1, 0, {1, 2});
    addNode(d, 9, 9, 8, {3});
    Bound bound(d);
    bound->m_pGradX = {0.0, 1.0, -1.0, 10.0};
    bound->getMeshTopologyConn();
    bound->CalNodeVectorAngle_Modified_03Loop();
    const double expected = 180.0 - std::acos(-1.0) * 180.0 / 3.14159265;
    EXPECT_NEAR(expected, -2.0568e-07, 1e-11);
    EXPECT_EQ(bound->m_pMeetingAngle[1], expected);
    EXPECT_EQ(bound->m_pMeetingAngle[2], expected);
    EXPECT_EQ(bound->m_pMeetingAngle[3], 180.0);
    EXPECT_EQ(bound->m_BoundaryAngle, std::cos(65.0 / 180.0 * 3.14159265));
}

// The defaults come on the first two lines of the section, with the method as it stands there; a
// key without "=" reads as 0; TruncateAngle is 179 whatever is written; the rest is not read.
TEST(HandWorked, control_file_is_read_line_by_line) {
    const Workspace workspace;
    Bound bound(cellsAt({{0, 0, 0}}));
    writeFile(Bound::controlPath,
              "nGrad = 9\n[WeldLinePlotCtrl]\nWeldlingAngleMethod = 2\nnGrad 5\n"
              "TruncateAngle = 120\nWeldlingAngleMethod = 1\nGradMethodMFT = 2.9\n"
              "[/WeldLinePlotCtrl]\nnSmooth_beforeGrad = 9\n");
    bound->readControlFile();
    EXPECT_EQ(bound->m_WeldlingAngleMethod, 1);
    EXPECT_EQ(bound->m_nSmooth_afterGrad, 4);
    EXPECT_EQ(bound->m_nGrad, 0);
    EXPECT_EQ(bound->m_TruncateAngle, 179.0);
    EXPECT_EQ(bound->m_GradMethodMFT, 2);
    EXPECT_EQ(bound->m_nSmooth_beforeGrad, 2);
    EXPECT_EQ(bound->m_nDefaultPass, 2);
}

// Mode 11: the float nearest to 1e-30 takes the bi-injection value 9, 2e-30 is kept.
TEST(HandWorked, bi_injection_replaces_what_is_not_reached) {
    PartitionData d = cellsAt({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
    d.flow = {0.0f, 1e-30f, 2e-30f, 0.0f};
    CaseParameters parameters;
    parameters.mode11 = 1;
    Bound bound(d, parameters);
    EXPECT_EQ(bound->m_pVariable[1], 9.0);
    EXPECT_EQ(bound->m_pVariableOrg[1], 9.0);
    EXPECT_EQ(bound->m_pVariable[2], static_cast<double>(2e-30f));
    EXPECT_EQ(bound->m_pVariable[3], 9.0);
}

// [1 | 2] of the first binding, then [1 | 2 | 3] with values 2, 2, 8 on the same arrays: the face
// between 2 and 3 is left out, so both keep the mean 2 of their own face. The exchange sees three
// slots, the third unknown to the calculation and 0.
TEST(HandWorked, larger_second_mesh_is_worked_on_as_far_as_it_fits) {
    PartitionData two = cellsAt({{0, 0, 0}, {1, 0, 0}});
    addFace(two, 1, 2, 0.5, {1, 0, 0});
    PartitionData three = cellsAt({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
    three.flow = {0.0f, 2.0f, 2.0f, 8.0f};
    addFace(three, 1, 2, 0.5, {1, 0, 0});
    addFace(three, 2, 3, 0.5, {1, 0, 0});
    const Case bindings{{}, {{two}, {three}}, {}};
    Log log;
    Collective collective(1, 3);
    StrictHost host(bindings, 0, collective, log);
    Reference reference;
    reference.setPartitionInterface(&host);
    reference.setKVRCom(&host, &host);
    for (int i = 0; i < 2; ++i) {
        host.prepareBinding(Bound::controlPath);
        reference.setFlowData(&host.gv(), &host.mesh());
    }
    reference.Smooth_Variable(reference.m_pVariable, 1);
    EXPECT_EQ(reference.m_pVariable, (Reference::Array{0.0, 2.0, 2.0}));
    EXPECT_EQ(log.last("DDM_Exch"), (std::vector<double>{2.0, 2.0, 0.0}));
}

// The text of a case gives the case back, and what is no case is refused.
TEST(CaseParameters, text_and_case_are_the_same) {
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        const CaseParameters drawn = drawCase(seed);
        EXPECT_EQ(parseCase(inWords(drawn)), drawn);
    }
    EXPECT_FALSE(parseCase("seed=1 unknown=2").has_value());
    EXPECT_FALSE(parseCase("nx=two").has_value());
    EXPECT_FALSE(parseCase("nx").has_value());
}

// Equal up to the bits: NaN equals NaN, 0 does not equal -0.
TEST(Log, compares_bits) {
    const auto logged = [](double value) {
        Log log;
        log.number("value", value);
        return log;
    };
    EXPECT_FALSE(Log::difference(logged(NAN), logged(-NAN)).has_value());
    EXPECT_FALSE(Log::difference(logged(1.0), logged(1.0)).has_value());
    EXPECT_TRUE(Log::difference(logged(0.0), logged(-0.0)).has_value());
    EXPECT_TRUE(Log::difference(logged(1.0), logged(std::nextafter(1.0, 2.0))).has_value());
    EXPECT_TRUE(Log::difference(logged(1.0), Log{}).has_value());
}

// Smallest numbers: 3 calls where 2 are needed are fine, 1 is not, nor is 1 where none is needed.
TEST(Log, compares_smallest_numbers) {
    const auto logged = [](double count) {
        Log log;
        log.atLeast("calls", {count});
        return log;
    };
    EXPECT_FALSE(Log::difference(logged(3.0), logged(2.0)).has_value());
    EXPECT_TRUE(Log::difference(logged(1.0), logged(2.0)).has_value());
    EXPECT_TRUE(Log::difference(logged(1.0), logged(0.0)).has_value());
    EXPECT_FALSE(Log::difference(logged(0.0), logged(0.0)).has_value());
}

TEST(Log, survives_the_way_through_bytes) {
    Log log;
    log.number("number", NAN);
    log.text("text", std::string("a\0b", 3));
    log.atLeast("calls", {1.0, 0.0});
    const Log copy = Log::fromBytes(log.bytes());
    EXPECT_EQ(copy.size(), 3u);
    EXPECT_FALSE(Log::difference(copy, log).has_value());
}

}  // namespace
}  // namespace weldline::reference
