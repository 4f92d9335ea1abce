#include <gtest/gtest.h>

#include "BindBoxMesh.h"
#include "results/NodeReasons.h"

namespace weldline::test {

namespace {

NodeExplanation with(NodeVerdict verdict, const std::vector<Refusal>& refusals) {
    NodeExplanation e;
    e.verdict = verdict;
    for (const Refusal refusal : refusals) {
        PairAtNode pair;
        pair.judgement.refusal = refusal;
        e.pairs.push_back(pair);
    }
    return e;
}

}  // namespace

TEST(NodeReasons, tell_the_verdict) {
    const std::vector<Refusal> pairs{Refusal::Alike, Refusal::None};
    EXPECT_EQ(reasonOf(with(NodeVerdict::Kept, pairs)), 0);
    EXPECT_EQ(reasonOf(with(NodeVerdict::AboveLimit, pairs)), 11);
    EXPECT_EQ(reasonOf(with(NodeVerdict::Isolated, pairs)), 12);
}

TEST(NodeReasons, tell_the_pair_that_passes_most_tests) {
    EXPECT_EQ(reasonOf(with(NodeVerdict::NothingMeets,
                            {Refusal::NotReached, Refusal::OutsideCone, Refusal::Alike})),
              9);
    EXPECT_EQ(reasonOf(with(NodeVerdict::NothingMeets, {})), 14);
}

// Three cubes in a row, streams from both ends: nodes at x = 0 and 3 have one cell alone, those at
// x = 1 see the head-on pair of the first two cells, those at x = 2 two streams that run alike.
// The last cell keeps its nodes free.
TEST(NodeReasons, of_a_row_of_cubes) {
    const FvMesh fv = boxMesh(3, 1, 1);
    LibraryFields fields;
    fields.fillTime = {1.0F, 1.0F, 1.0F};
    fields.smoothed = {1.0, 1.0, 1.0};
    fields.gradient = {{1, 0, 0}, {-1, 0, 0}, {-1, 0, 0}};
    fields.steepness = {1.0, 1.0, 1.0};
    const NodeExplainer explainer(fv, fields, Settings{}, 0);
    const double headOn = explainer.explain(1, 0.0).pairAngle;
    EXPECT_NEAR(headOn, 0.0, 1e-6);
    std::vector<double> angles;
    for (const Vec3 p : fv.points) angles.push_back(p.x == 1.0 ? headOn : 180.0);
    const std::vector<int> none = nodeReasons(fv, explainer, angles, {});
    const std::vector<int> state = nodeReasons(fv, explainer, angles, {0, 0, -1});
    for (int n = 0; n < fv.pointCount(); ++n) {
        const double x = fv.points[static_cast<std::size_t>(n)].x;
        const int expected = x == 1.0 ? 0 : x == 2.0 ? 5 : 14;
        EXPECT_EQ(none[static_cast<std::size_t>(n)], expected);
        EXPECT_EQ(state[static_cast<std::size_t>(n)], x >= 2.0 ? 13 : expected);
    }
}

}  // namespace weldline::test
