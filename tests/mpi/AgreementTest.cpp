// How near a cut mesh comes to the uncut one, by method and scheme; what is promised and why stands
// in docs/decisions/parallel-agreement.md. The ranks are threads. The environment variable
// WELDLINE_AGREEMENT_DATA may name further data sets, separated by colons.

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "Comparison.h"
#include "ControlText.h"
#include "GridMesh.h"
#include "PrivateFile.h"
#include "bind/Analysis.h"
#include "bind/FillTime.h"
#include "io/DataSet.h"
#include "partition/CutMesh.h"

namespace weldline::test {

namespace {

struct Setting {
    int method;
    int gradient;
    int smoothAfter;  // passes; few, so that cells out of reach remain
    const char* name;
};

// A filling result, its uncut mesh, and runs on it.
struct Part {
    explicit Part(MeshPart part) : whole(std::move(part)), mesh(buildFvMesh(whole.mesh)) {}

    WholeOutcome run(const Setting& setting, const std::vector<int>& partOfCell, int ranks) const {
        const PrivateFile control(
            section({"WeldlingAngleMethod = " + std::to_string(setting.method),
                     "GradMethodMFT = " + std::to_string(setting.gradient),
                     "nSmooth_afterGrad = " + std::to_string(setting.smoothAfter)}));
        return assemble(runCut(whole, partOfCell, ranks, control.path()));
    }
    WholeOutcome run(const Setting& setting) const {
        return run(setting, std::vector<int>(whole.cellNumber.size(), 0), 1);
    }

    MeshPart whole;
    FvMesh mesh;
};

MeshPart withStreams(CellMesh mesh) {
    const std::vector<float> times = meetingStreams(mesh);
    MeshPart whole = wholePart(std::move(mesh));
    whole.cellFields.emplace_back(times.begin(), times.end());
    return whole;
}

MeshPart fillingResult(const std::string& file) {
    const DataSet data = readDataSet(file, {});
    MeshPart whole;
    whole.mesh = data.mesh;
    whole.patches = data.patches;
    for (int c = 0; c < data.mesh.cellCount(); ++c) whole.cellNumber.push_back(c);
    for (std::size_t n = 0; n < data.mesh.points.size(); ++n)
        whole.nodeNumber.push_back(static_cast<std::int64_t>(n));
    const FvMesh mesh = buildFvMesh(whole.mesh);
    const auto times =
        prepareFillTime(data.fillTime, mesh, groupBoundaryFaces(mesh, data.patches, {})).values;
    whole.cellFields.emplace_back(times.begin(), times.end());
    return whole;
}

const std::vector<Part>& parts() {
    static const std::vector<Part> all = [] {
        std::vector<Part> list;
        list.emplace_back(withStreams(gridMesh(18, 10, 7, 0.2, 3)));
        list.emplace_back(withStreams(hexahedraMesh(20, 12, 8)));
        list.emplace_back(fillingResult(WELDLINE_EXAMPLE));
        const char* more = std::getenv("WELDLINE_AGREEMENT_DATA");
        std::istringstream files(more == nullptr ? "" : more);
        for (std::string file; std::getline(files, file, ':');)
            list.emplace_back(fillingResult(file));
        return list;
    }();
    return all;
}

// Calls `check` for every data set and from 2 to 8 ranks. It answers how many weld nodes it
// compared; there have to be some.
template <class Check>
void forAllCuts(const Setting& setting, Check check) {
    int weldNodes = 0;
    for (std::size_t i = 0; i < parts().size(); ++i) {
        const Part& part = parts()[i];
        const WholeOutcome one = part.run(setting);
        for (int ranks = 2; ranks <= 8; ++ranks) {
            SCOPED_TRACE("data set " + std::to_string(i) + ", " + std::to_string(ranks) + " ranks");
            const std::vector<int> partOfCell = cutMesh(part.whole.mesh, ranks);
            weldNodes +=
                check(CutMap(part.mesh, partOfCell), one, part.run(setting, partOfCell, ranks));
        }
    }
    EXPECT_GT(weldNodes, 50);
}

std::vector<bool> either(std::vector<bool> a, const std::vector<bool>& b) {
    for (std::size_t i = 0; i < a.size(); ++i) a[i] = a[i] || b[i];
    return a;
}

constexpr double rounding = 1e-12;  // of the largest gradient

std::vector<bool> within(const CutMap& map, int layers) {
    std::vector<bool> cells;
    for (const int layer : map.layers()) cells.push_back(layer <= layers);
    return cells;
}

class FaceMethods : public testing::TestWithParam<Setting> {};
class OwnCellMethods : public testing::TestWithParam<Setting> {};

}  // namespace

// Gradients agree to rounding but where a flat cell lies at an interface, and so do angles, where
// the limits of method 2 do not take away cells of a rank; no weld node is lost or gained.
TEST_P(FaceMethods, agree_to_rounding) {
    const Setting setting = GetParam();
    forAllCuts(setting, [&](const CutMap& map, const WholeOutcome& one, const WholeOutcome& cut) {
        const std::vector<bool> reached = map.reachedByFlags(one.cells, setting.smoothAfter);
        EXPECT_LT(gradientDifference(one, cut, reached), rounding);
        const std::vector<bool> differing =
            setting.method == 4 ? reached : either(reached, map.nearLargestOfRank(one.cells));
        const AngleDifference angles = angleDifference(one, cut, map.nodesAround(differing));
        EXPECT_EQ(angles, (AngleDifference{angles.weldNodes, 0, 0, 0, 0}));
        return angles.weldNodes;
    });
}

INSTANTIATE_TEST_SUITE_P(Agreement, FaceMethods,
                         testing::Values(Setting{2, 1, 4, "method_2"},
                                         Setting{4, 1, 4, "method_4_default_gradient"},
                                         Setting{4, 3, 4, "method_4_least_squares"},
                                         Setting{4, 4, 4, "method_4_upwind"}),
                         [](const auto& test) { return test.param.name; });

// Methods 1 and 3 compare own cells only: at nodes of several ranks some pairs are never judged, so
// that angles there are larger or missing. Elsewhere all is as in the uncut mesh.
TEST_P(OwnCellMethods, agree_to_rounding_away_from_interfaces) {
    const Setting setting = GetParam();
    forAllCuts(setting, [&](const CutMap& map, const WholeOutcome& one, const WholeOutcome& cut) {
        const std::vector<bool> reached = map.reachedByFlags(one.cells, setting.smoothAfter);
        EXPECT_LT(gradientDifference(one, cut, reached), rounding);
        if (setting.method == 1) {
            const AngleDifference angles = angleDifference(one, cut, map.nodesAround(reached));
            EXPECT_EQ(angles.gained, 0);
            EXPECT_EQ(angles.smaller, 0);
        }
        const std::vector<bool> differing =
            either(within(map, 0), map.nearLargestOfRank(one.cells));
        const AngleDifference away = angleDifference(one, cut, map.nodesAround(differing));
        EXPECT_EQ(away, (AngleDifference{away.weldNodes, 0, 0, 0, 0}));
        return away.weldNodes;
    });
}

INSTANTIATE_TEST_SUITE_P(Agreement, OwnCellMethods,
                         testing::Values(Setting{1, 1, 4, "method_1"},
                                         Setting{3, 1, 4, "method_3"}),
                         [](const auto& test) { return test.param.name; });

// The RBF gradient takes the mean of both sides at an interface, and the stencils there miss the
// cells behind the halo: the cells of the first two layers differ, and smoothing carries that on.
TEST(Agreement, of_the_rbf_gradient_begins_behind_the_layers_that_smoothing_reaches) {
    const Setting setting{4, 2, 1, ""};
    forAllCuts(setting, [&](const CutMap& map, const WholeOutcome& one, const WholeOutcome& cut) {
        const std::vector<bool> near = within(map, 1 + setting.smoothAfter);
        EXPECT_LT(gradientDifference(one, cut, near), rounding);
        const AngleDifference away = angleDifference(one, cut, map.nodesAround(near));
        EXPECT_EQ(away, (AngleDifference{away.weldNodes, 0, 0, 0, 0}));
        return away.weldNodes;
    });
}

// A run of one rank is the run of one process.
TEST(Agreement, of_one_rank_is_to_the_last_bit) {
    const Part& part = parts()[0];
    for (const int method : {1, 2, 3, 4}) {
        const PrivateFile control(section({"WeldlingAngleMethod = " + std::to_string(method)}));
        HostOptions options;
        options.controlFile = control.path();
        const auto& times = part.whole.cellFields[0];
        HostModel model(part.mesh, groupBoundaryFaces(part.mesh, part.whole.patches, {}),
                        {times.begin(), times.end()}, options);
        const std::vector<int> partOfCell(times.size(), 0);
        EXPECT_EQ(runCut(part.whole, partOfCell, 1, control.path())[0].angles, runWeldLine(model));
    }
}

}  // namespace weldline::test
