#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "Rig.h"

// What a run leaves in the record, and what the next run makes of it.

namespace weldline::test {

namespace {

double slope(Point x) {
    return 1.0 + x[0] + 2.0 * x[1] + 4.0 * x[2];
}

class Driver : public ::testing::Test {
  protected:
    Driver() { load(m_rig); }

    static void load(Rig& rig) {
        setField(rig.host, slope);
        rig.bind();
    }

    std::vector<double> cells(const double* array) const {
        return slotsOf(array, m_rig.host.slots());
    }

    // Marks an array so that any write shows.
    std::vector<double> mark(double* array) {
        for (int slot = 0; slot <= m_rig.host.slots(); ++slot) array[slot] = 7.0 + slot;
        return cells(array);
    }

    Rig m_rig{3, 2, 2};
    CKVR3DWeldLine& m_c = m_rig.calculator;
};

const std::string kNoGradient =
    section({"", "GradMethodMFT = 0", "nSmooth_beforeGrad = 0", "nSmooth_afterGrad = 0"});

}  // namespace

TEST_F(Driver, keeps_the_first_gradient_set_when_no_gradient_is_chosen) {
    const std::vector<double> x = mark(m_c.m_pGradX);
    const std::vector<double> y = mark(m_c.m_pGradY);
    const std::vector<double> z = mark(m_c.m_pGradZ);
    EXPECT_EQ(m_rig.run(kNoGradient), 0);
    EXPECT_TRUE(sameBits(cells(m_c.m_pGradX), x));
    EXPECT_TRUE(sameBits(cells(m_c.m_pGradY), y));
    EXPECT_TRUE(sameBits(cells(m_c.m_pGradZ), z));
}

// The twin does by hand what the run must do: three passes on each component, nothing else.
TEST_F(Driver, keeps_smoothing_the_first_set_when_no_gradient_is_chosen) {
    Rig twin(3, 2, 2);
    load(twin);
    double* const own[] = {m_c.m_pGradX, m_c.m_pGradY, m_c.m_pGradZ};
    double* const twins[] = {twin.calculator.m_pGradX, twin.calculator.m_pGradY,
                             twin.calculator.m_pGradZ};
    for (int axis = 0; axis < 3; ++axis) {
        const std::vector<double> marked = mark(own[axis]);
        std::copy(marked.begin(), marked.end(), twins[axis]);
        twin.calculator.Smooth_Variable(twins[axis], 3);
    }
    m_rig.run(
        section({"", "GradMethodMFT = 5", "nSmooth_beforeGrad = 0", "nSmooth_afterGrad = 3"}));
    for (int axis = 0; axis < 3; ++axis)
        EXPECT_TRUE(sameBits(cells(own[axis]), cells(twins[axis]))) << "axis " << axis;
}

// Two rows of cubes beside the plane x = 1 whose given gradients point at each other: the angle
// comes from the set that stood there, and the plane's nodes get 180 - 180.00000020568 degrees.
TEST_F(Driver, computes_angles_from_the_gradient_that_stood_there) {
    Rig rig(2, 2, 2);
    setField(rig.host, [](Point) { return 1.0; });
    rig.bind();
    for (int cell = 1; cell <= 8; ++cell)
        rig.calculator.m_pGradX[cell] = cell % 2 == 1 ? 1.0 : -1.0;
    rig.run(kNoGradient);
    const double headOn = 180.0 - std::acos(-1.0) * 180.0 / 3.14159265;
    for (int n = 1; n <= 27; ++n)
        EXPECT_EQ(rig.calculator.m_pMeetingAngle[n], n % 3 == 2 ? headOn : 180.0) << "node " << n;
}

TEST_F(Driver, second_set_is_left_alone_by_gradient_methods_1_and_4) {
    for (const char* choice : {"GradMethodMFT = 1", "GradMethodMFT = 4", "GradMethodMFT = 0"}) {
        const std::vector<double> x = mark(m_c.m_pGrad2X);
        const std::vector<double> y = mark(m_c.m_pGrad2Y);
        const std::vector<double> z = mark(m_c.m_pGrad2Z);
        m_rig.run(section({"", choice}));
        EXPECT_TRUE(sameBits(cells(m_c.m_pGrad2X), x)) << choice;
        EXPECT_TRUE(sameBits(cells(m_c.m_pGrad2Y), y)) << choice;
        EXPECT_TRUE(sameBits(cells(m_c.m_pGrad2Z), z)) << choice;
    }
}

TEST_F(Driver, other_methods_compute_a_gradient_and_keep_the_angles) {
    for (const char* method : {"WeldlingAngleMethod = 5", "WeldlingAngleMethod = 0"}) {
        std::fill_n(m_c.m_pMeetingAngle, 37, 42.0);
        std::fill_n(m_c.m_pGradX, m_rig.host.slots() + 1, 0.0);
        EXPECT_EQ(m_rig.run(section({method})), 0);
        EXPECT_TRUE(sameBits(slotsOf(m_c.m_pMeetingAngle, 36), std::vector<double>(37, 42.0)));
        EXPECT_NE(m_c.m_pGradX[1], 0.0);
    }
}

TEST_F(Driver, without_smoothing_the_variable_stays_as_loaded) {
    const std::vector<double> loaded = cells(m_c.m_pVariable);
    m_rig.run(section({"", "nSmooth_beforeGrad = 0"}));
    EXPECT_TRUE(sameBits(cells(m_c.m_pVariable), loaded));
    m_rig.run(section({"", "nSmooth_beforeGrad = -3"}));
    EXPECT_TRUE(sameBits(cells(m_c.m_pVariable), loaded));
}

TEST_F(Driver, smoothing_works_on_the_variable_and_not_on_the_loaded_copy) {
    const std::vector<double> loaded = cells(m_c.m_pVariableOrg);
    m_rig.run(section({"", "nSmooth_beforeGrad = 1"}));
    EXPECT_TRUE(sameBits(cells(m_c.m_pVariableOrg), loaded));
    EXPECT_FALSE(sameBits(cells(m_c.m_pVariable), loaded));
}

TEST_F(Driver, the_next_run_smooths_what_the_last_one_left) {
    const std::string onePass = section({"", "GradMethodMFT = 0", "nSmooth_beforeGrad = 1"});
    const std::string twoPasses = section({"", "GradMethodMFT = 0", "nSmooth_beforeGrad = 2"});
    Rig twin(3, 2, 2);
    load(twin);
    twin.run(twoPasses);
    m_rig.run(onePass);
    m_rig.run(onePass);
    EXPECT_TRUE(sameBits(cells(m_c.m_pVariable), cells(twin.calculator.m_pVariable)));
}

TEST_F(Driver, all_max_is_asked_once_a_run_and_only_for_gradient_method_3) {
    m_rig.run(section({"", "GradMethodMFT = 3"}));
    m_rig.run(section({"", "GradMethodMFT = 3"}));
    EXPECT_EQ(m_rig.host.allMaxArguments, (std::vector<int>{0, 0}));
    for (const char* choice : {"GradMethodMFT = 0", "GradMethodMFT = 1", "GradMethodMFT = 2",
                               "GradMethodMFT = 4", "WeldlingAngleMethod = 1"})
        m_rig.run(section({"", choice}));
    EXPECT_EQ(m_rig.host.allMaxArguments.size(), 2U);
}

TEST_F(Driver, other_gradient_methods_need_no_collective_object) {
    m_c.setKVRCom(m_rig.host.communication(), nullptr);
    EXPECT_EQ(m_rig.run(section({"", "GradMethodMFT = 2"})), 0);
    EXPECT_EQ(m_rig.run(section({"WeldlingAngleMethod = 1"})), 0);
}

// A uniform field has no gradient anywhere, so every own cell is marked; the slope that is loaded
// into the same calculator afterwards finds the marks gone only through setFlowData.
TEST_F(Driver, keeps_zero_gradient_flags_until_the_next_binding) {
    setField(m_rig.host, [](Point) { return 1.0; });
    m_rig.bind();
    m_rig.run(section({"", "GradMethodMFT = 4"}));
    EXPECT_EQ(std::count(m_c.m_pZeroGradFlag + 1, m_c.m_pZeroGradFlag + 13, 1), 12);
    m_rig.run(kNoGradient);
    EXPECT_EQ(std::count(m_c.m_pZeroGradFlag + 1, m_c.m_pZeroGradFlag + 13, 1), 12);
    m_rig.bind();
    EXPECT_EQ(std::count(m_c.m_pZeroGradFlag + 1, m_c.m_pZeroGradFlag + 13, 1), 0);
}

// Method 1 takes 65 degrees for a negative boundary angle and leaves the cosine, which the next run
// takes as degrees; method 4 leaves degrees.
TEST_F(Driver, keeps_the_cosine_of_the_boundary_angle_for_the_next_run) {
    m_rig.run(section({"WeldlingAngleMethod = 1"}));
    EXPECT_EQ(m_c.m_BoundaryAngle, 0.42261826291555904);
    m_rig.run(section({"WeldlingAngleMethod = 1"}));
    EXPECT_EQ(m_c.m_BoundaryAngle, std::cos(0.42261826291555904 / 180.0 * 3.14159265));
    m_rig.run(section({"WeldlingAngleMethod = 1", "BoundaryAngle = -1"}));
    EXPECT_EQ(m_c.m_BoundaryAngle, 0.42261826291555904);
}

TEST_F(Driver, method_4_leaves_the_boundary_angle_in_degrees) {
    m_rig.run(section({"WeldlingAngleMethod = 4"}));
    EXPECT_EQ(m_c.m_BoundaryAngle, 120.0);
    m_rig.run(section({"WeldlingAngleMethod = 4"}));
    EXPECT_EQ(m_c.m_BoundaryAngle, 120.0);
}

TEST_F(Driver, mesh_file_type_2_selects_another_boundary_angle_in_method_1) {
    m_c.setMeshFileType(2);
    m_rig.run(section({"WeldlingAngleMethod = 1"}));
    EXPECT_EQ(m_c.m_BoundaryAngle, 0.2588190465473015);
}

TEST_F(Driver, connectivity_tables_are_built_once) {
    m_rig.run(kNoGradient);
    int** const nodeCell = m_c.m_ppNodeCell;
    int** const cellFace = m_c.m_ppCellInnerFace;
    ASSERT_NE(nodeCell, nullptr);
    m_rig.run(kNoGradient);
    m_rig.bind();
    m_rig.run(kNoGradient);
    EXPECT_EQ(m_c.m_ppNodeCell, nodeCell);
    EXPECT_EQ(m_c.m_ppCellInnerFace, cellFace);
}

TEST_F(Driver, a_method_40_behind_the_defaults_is_no_method) {
    std::fill_n(m_c.m_pMeetingAngle, 37, 42.0);
    EXPECT_EQ(m_rig.run(section({"", "", "WeldlingAngleMethod = 40", "nGrad = 1",
                                 "nSmooth_beforeGrad = 0", "nSmooth_afterGrad = 0"})),
              0);
    EXPECT_EQ(m_rig.calls(),
              (std::vector<std::string>{"exchange gradX", "exchange gradY", "exchange gradZ"}));
    EXPECT_EQ(m_c.m_pMeetingAngle[1], 42.0);
}

}  // namespace weldline::test
