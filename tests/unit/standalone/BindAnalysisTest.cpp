#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "BindBoxMesh.h"
#include "base/Errors.h"
#include "bind/Analysis.h"

namespace weldline::test {

namespace {

const char* emptySection = "[WeldLinePlotCtrl]\n[/WeldLinePlotCtrl]\n";

// Two fronts from both ends of a bar of 8 x 3 x 3 cubes meet on the plane x = 4:
//
//   -> | 1 | 2 | 3 | 4 || 4 | 3 | 2 | 1 | <-      fill times, the same over y and z
struct Bar {
    FvMesh fv = boxMesh(8, 3, 3);
    BoundaryGroups groups = boxGroups(fv, "IIWWWW");
    std::vector<float> fillTime;
    TemporaryFolder folder;
    HostOptions options;

    explicit Bar(const std::string& control = emptySection) {
        for (const Vec3& c : fv.cellCentre)
            fillTime.push_back(static_cast<float>(0.5 + std::min(c.x, 8.0 - c.x)));
        options.controlFile = folder.write("run.cmp", control);
    }
    std::vector<double> angles() const {
        HostModel model(fv, groups, fillTime, options);
        return runWeldLine(model);
    }
};

// acos(-1) in degrees with the library's eight-digit pi is a little more than 180.
const double headOn = 180.0 - std::acos(-1.0) * 180.0 / 3.14159265;

void expectMidPlane(const Bar& bar, const std::vector<double>& angles) {
    ASSERT_EQ(angles.size(), bar.fv.points.size());
    for (std::size_t n = 0; n < angles.size(); ++n)
        EXPECT_EQ(angles[n], bar.fv.points[n].x == 4.0 ? headOn : 180.0) << "node " << n;
}

}  // namespace

TEST(Analysis, head_on_fronts_meet_on_the_middle_plane) {
    Bar bar;
    expectMidPlane(bar, bar.angles());
}

// The gradients are parallel to the bar in every scheme, so the pair tests find the whole plane.
TEST(Analysis, methods_1_2_and_4_find_the_whole_plane) {
    for (const char* method : {"1", "2", "4", "40"}) {
        Bar bar(std::string("[WeldLinePlotCtrl]\nWeldlingAngleMethod = ") + method +
                "\n[/WeldLinePlotCtrl]\n");
        SCOPED_TRACE(method);
        expectMidPlane(bar, bar.angles());
    }
}

// Method 3 looks for the face between two cells at a position beyond the cell's list, which reads
// as the origin; the left cell's gradient points away from it, so the two face neighbours never
// count. What it finds it finds between cells one step further out. Around a node on a long edge of
// the bar there are only two cells, and nothing further out that both touch.
TEST(Analysis, keeps_method_3_blind_on_the_edges_of_the_bar) {
    const Bar bar("[WeldLinePlotCtrl]\nWeldlingAngleMethod = 3\n[/WeldLinePlotCtrl]\n");
    const std::vector<double> angles = bar.angles();
    for (std::size_t n = 0; n < angles.size(); ++n) {
        const Vec3 p = bar.fv.points[n];
        const bool edge = (p.y == 0.0 || p.y == 3.0) && (p.z == 0.0 || p.z == 3.0);
        EXPECT_EQ(angles[n], p.x == 4.0 && !edge ? headOn : 180.0) << "node " << n;
    }
}

TEST(Analysis, runs_are_independent_of_earlier_runs) {
    Bar bar("[WeldLinePlotCtrl]\nWeldlingAngleMethod = 2\n[/WeldLinePlotCtrl]\n");
    HostModel model(bar.fv, bar.groups, bar.fillTime, bar.options);
    const std::vector<double> first = runWeldLine(model);
    EXPECT_EQ(runWeldLine(model), first);
}

// Nothing came from the right: no front meets another.
TEST(Analysis, one_front_alone_meets_nothing) {
    Bar bar;
    for (std::size_t c = 0; c < bar.fillTime.size(); ++c)
        bar.fillTime[c] = static_cast<float>(bar.fv.cellCentre[c].x);
    EXPECT_EQ(bar.angles(), std::vector<double>(bar.fv.points.size(), 180.0));
}

// The right half did not fill in this injection, but in the second one.
TEST(Analysis, bi_injection_fills_the_rest) {
    Bar bar;
    for (std::size_t c = 0; c < bar.fillTime.size(); ++c) {
        bar.options.biInjection.push_back(bar.fillTime[c]);
        if (bar.fv.cellCentre[c].x > 4.0) bar.fillTime[c] = 0.0F;
    }
    expectMidPlane(bar, bar.angles());
}

// Cells 0 to 7 lie on the edge y = z = 0; state 1 on cell 3 frees its nodes of weld lines.
TEST(Analysis, cell_state_keeps_nodes_free) {
    Bar bar;
    bar.options.cellState.assign(bar.fillTime.size(), 0);
    bar.options.cellState[3] = 1;
    const std::vector<double> angles = bar.angles();
    for (std::size_t n = 0; n < angles.size(); ++n) {
        const Vec3 p = bar.fv.points[n];
        const bool freed = p.x == 4.0 && p.y <= 1.0 && p.z <= 1.0;
        EXPECT_EQ(angles[n], p.x == 4.0 && !freed ? headOn : 180.0);
    }
}

TEST(Analysis, trace_goes_beside_the_control_file) {
    Bar bar(
        "[WeldLinePlotCtrl]\nWeldlingAngleMethod = 4\nFlagDebugOutput = 1\n"
        "[/WeldLinePlotCtrl]\n");
    bar.angles();
    EXPECT_EQ(bar.folder.read("run_KVRWDLineDebug.txt").substr(0, 26),
              "m_WeldlingAngleMethod = 4\n");
}

TEST(Analysis, unreadable_control_file_is_refused) {
    Bar bar;
    bar.options.controlFile = bar.folder.path("missing.cmp");
    EXPECT_THROW(bar.angles(), InputError);
}

}  // namespace weldline::test
