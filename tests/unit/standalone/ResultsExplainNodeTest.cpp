// Each node's angle as explained against the library's own, on meshes of all cell kinds.

#include <gtest/gtest.h>

#include <bit>
#include <set>

#include "BindBoxMesh.h"
#include "GridMesh.h"
#include "bind/Analysis.h"
#include "results/ExplainNode.h"
#include "settings/ControlSection.h"

namespace weldline::test {

namespace {

std::string section(const std::string& lines) {
    return "[WeldLinePlotCtrl]\n" + lines + "[/WeldLinePlotCtrl]\n";
}

struct Case {
    std::string control;
    double gradientSetSwitch = 1.0;
    int meshFileType = 0;
};

struct Moulding {
    FvMesh fv;
    BoundaryGroups groups;
    std::vector<float> fillTime;
    TemporaryFolder folder;
    HostOptions options;
    Settings settings;

    Moulding(const Case& test, unsigned seed) {
        const MeshPart part = wholePart(gridMesh(9, 5, 4, 0.2, seed));
        fv = buildFvMesh(part.mesh);
        groups = groupBoundaryFaces(fv, part.patches, {});
        fillTime = meetingStreams(part.mesh);
        options.controlFile = folder.write("run.cmp", section(test.control));
        options.gradientSetSwitch = test.gradientSetSwitch;
        options.meshFileType = test.meshFileType;
        settings = readControlText(section(test.control)).settings;
    }

    RecordedRun record() const {
        HostModel model(fv, groups, fillTime, options);
        return recordWeldLine(model);
    }
    std::vector<double> angles() const {
        HostModel model(fv, groups, fillTime, options);
        return runWeldLine(model);
    }
    std::vector<NodeExplanation> explainAll() const {
        const RecordedRun run = record();
        const LibraryFields fields =
            libraryFields(run.arrays, fillTime, settings, options.gradientSetSwitch == 1.0);
        const NodeExplainer explainer(fv, fields, settings, options.meshFileType);
        std::vector<NodeExplanation> nodes;
        for (int n = 0; n < fv.pointCount(); ++n)
            nodes.push_back(explainer.explain(n, run.angles[static_cast<std::size_t>(n)]));
        return nodes;
    }
};

bool hasNeighbourBelow(const FvMesh& fv, const std::vector<double>& angles, int node,
                       double limit) {
    for (int c = 0; c < fv.cellCount(); ++c) {
        const auto nodes = fv.cellNodes[c];
        if (std::find(nodes.begin(), nodes.end(), node) == nodes.end()) continue;
        for (const int other : nodes)
            if (other != node && angles[static_cast<std::size_t>(other)] < limit) return true;
    }
    return false;
}

// What the library does with the angles of the pairs.
std::vector<double> truncated(const FvMesh& fv, std::vector<double> angles, double limit) {
    for (double& angle : angles)
        if (angle >= limit) angle = 180.0;
    for (int n = 0; n < fv.pointCount(); ++n) {
        double& angle = angles[static_cast<std::size_t>(n)];
        if (angle <= limit && !hasNeighbourBelow(fv, angles, n, limit)) angle = 180.0;
    }
    return angles;
}

class Explained : public testing::TestWithParam<Case> {};

}  // namespace

TEST_P(Explained, pairs_give_the_angles_of_the_library) {
    int meeting = 0;
    for (const unsigned seed : {1U, 2U, 3U}) {
        SCOPED_TRACE(seed);
        const Moulding part(GetParam(), seed);
        const std::vector<double> angles = part.angles();
        const std::vector<NodeExplanation> nodes = part.explainAll();
        std::vector<double> pairAngles;
        for (const NodeExplanation& e : nodes) pairAngles.push_back(e.pairAngle);
        const std::vector<double> expected =
            truncated(part.fv, pairAngles, part.settings.truncateAngle);
        for (std::size_t n = 0; n < angles.size(); ++n) {
            ASSERT_EQ(std::bit_cast<std::uint64_t>(expected[n]),
                      std::bit_cast<std::uint64_t>(angles[n]))
                << "node " << n;
            ASSERT_EQ(std::bit_cast<std::uint64_t>(nodes[n].angle),
                      std::bit_cast<std::uint64_t>(angles[n]));
            ASSERT_NE(nodes[n].verdict, NodeVerdict::Different);
            ASSERT_EQ(nodes[n].verdict == NodeVerdict::Kept, angles[n] != 180.0);
            meeting += angles[n] < 180.0 ? 1 : 0;
        }
    }
    EXPECT_GT(meeting, 0);
}

TEST_P(Explained, exactly_one_pair_is_kept_where_streams_meet) {
    const Moulding part(GetParam(), 4);
    for (const NodeExplanation& e : part.explainAll()) {
        int kept = 0;
        for (const PairAtNode& pair : e.pairs) {
            kept += pair.isKept ? 1 : 0;
            if (pair.isKept) {
                EXPECT_EQ(180.0 - pair.judgement.angle, e.pairAngle);
            }
            EXPECT_LT(pair.a, pair.b);
        }
        EXPECT_EQ(kept, e.verdict == NodeVerdict::NothingMeets ? 0 : 1);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Settings, Explained,
    testing::Values(Case{"WeldlingAngleMethod = 4\n"}, Case{"WeldlingAngleMethod = 40\n"},
                    Case{"WeldlingAngleMethod = 4\nTruncateAngle = 1\n"},
                    Case{"WeldlingAngleMethod = 4\nGradMethodMFT = 1\n"},
                    Case{"WeldlingAngleMethod = 4\nGradMethodMFT = 2\n"},
                    Case{"WeldlingAngleMethod = 4\nGradMethodMFT = 4\n"},
                    Case{"WeldlingAngleMethod = 4\n", 0.0},
                    Case{"WeldlingAngleMethod = 4\nBoundaryAngle = 90\n"},
                    Case{"WeldlingAngleMethod = 4\nnSmooth_beforeGrad = 0\n"},
                    Case{"WeldlingAngleMethod = 40\nnSmooth_afterGrad = 0\n"},
                    Case{"WeldlingAngleMethod = 1\n"},
                    Case{"WeldlingAngleMethod = 1\nTruncateAngle = 1\n", 1.0, 2},
                    Case{"WeldlingAngleMethod = 2\n"},
                    Case{"WeldlingAngleMethod = 2\nnGrad = 1\nVolumeFilter = 0.8\n", 1.0, 2},
                    Case{"WeldlingAngleMethod = 2\nGradValueFilterPara = 300\n"}));

// All pieces of the tests take part in the comparison above.
TEST(Explanation, every_test_refuses_somewhere) {
    std::set<Refusal> seen;
    for (const char* control :
         {"WeldlingAngleMethod = 4\n", "WeldlingAngleMethod = 4\nBoundaryAngle = 40\n",
          "WeldlingAngleMethod = 4\nTruncateAngle = 1\n",
          "WeldlingAngleMethod = 2\nVolumeFilter = 0.8\n",
          "WeldlingAngleMethod = 2\nGradValueFilterPara = 9000\n"})
        for (const NodeExplanation& e : Moulding({control}, 1).explainAll())
            for (const PairAtNode& pair : e.pairs) seen.insert(pair.judgement.refusal);
    for (const Refusal refusal :
         {Refusal::None, Refusal::NotReached, Refusal::Steep, Refusal::Shallow, Refusal::Alike,
          Refusal::SameSigns, Refusal::NotTowardsEachOther, Refusal::Volumes, Refusal::OutsideCone,
          Refusal::Parting})
        EXPECT_TRUE(seen.contains(refusal)) << nameOf(refusal);
}

TEST(Explanation, knows_methods_1_2_and_4) {
    EXPECT_TRUE(canExplain(1) && canExplain(2) && canExplain(4));
    EXPECT_FALSE(canExplain(0) || canExplain(3));
}

TEST(NearestNode, is_the_first_of_equally_near_ones) {
    const FvMesh fv = boxMesh(2, 1, 1);
    EXPECT_EQ(nearestNode(fv, {1.2, 0.9, -3.0}), 4);
    EXPECT_EQ(nearestNode(fv, {0.5, 0.0, 0.0}), 0);
}

}  // namespace weldline::test
