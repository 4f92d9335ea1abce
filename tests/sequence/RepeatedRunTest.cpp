#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Solver.h"

// Runs that follow each other on one handle, through the public class.

namespace weldline::test {

namespace {

const std::string kDefault = section({"", ""});

const std::string kOnePass =
    section({"", "GradMethodMFT = 0", "nSmooth_beforeGrad = 1", "nSmooth_afterGrad = 0"});

std::vector<double> everyNode(double angle) {
    std::vector<double> angles(28, angle);
    angles[0] = 0.0;
    return angles;
}

}  // namespace

TEST(RepeatedRun, smoothing_starts_from_what_the_last_run_left) {
    Solver twice;
    twice.start();
    twice.run(kOnePass);
    twice.run(kOnePass);
    Solver once;
    once.start();
    once.run(section({"", "GradMethodMFT = 0", "nSmooth_beforeGrad = 2", "nSmooth_afterGrad = 0"}));
    ASSERT_EQ(twice.host.exchanges.size(), 2U);
    ASSERT_EQ(once.host.exchanges.size(), 2U);
    EXPECT_EQ(twice.exchanged(0), once.exchanged(0));
    EXPECT_EQ(twice.exchanged(1), once.exchanged(1));
    EXPECT_NE(twice.exchanged(1), twice.exchanged(0));
}

TEST(RepeatedRun, binding_again_starts_from_the_loaded_variable) {
    Solver solver;
    solver.start();
    solver.run(kOnePass);
    solver.bind();
    solver.run(kOnePass);
    ASSERT_EQ(solver.host.exchanges.size(), 2U);
    EXPECT_EQ(solver.exchanged(1), solver.exchanged(0));
}

TEST(RepeatedRun, binding_again_repeats_the_angles_of_the_first_run) {
    Solver solver(3, 3, 2);
    setField(solver.host, [](Point x) { return 1.0 + (x[0] - 1.4) * (x[0] - 1.4) + 0.1 * x[1]; });
    solver.start();
    solver.run(kDefault);
    const std::vector<double> first = solver.angles();
    solver.bind();
    solver.run(kDefault);
    EXPECT_EQ(solver.angles(), first);
}

// In a uniform field nothing meets: each run replaces every angle by 180 minus itself, and
// angles of 0 are each other's neighbours, so truncation lets them stand.
TEST(RepeatedRun, keeps_angles_of_the_last_run_without_binding) {
    Solver solver;
    setField(solver.host, [](Point) { return 1.0; });
    solver.start();
    EXPECT_EQ(solver.angles(), everyNode(0.0));
    solver.run(kDefault);
    EXPECT_EQ(solver.angles(), everyNode(180.0));
    solver.run(kDefault);
    EXPECT_EQ(solver.angles(), everyNode(0.0));
    solver.run(kDefault);
    EXPECT_EQ(solver.angles(), everyNode(180.0));
    solver.bind();
    EXPECT_EQ(solver.angles(), everyNode(0.0));
}

TEST(RepeatedRun, method_5_writes_no_angle) {
    Solver solver;
    setField(solver.host, [](Point) { return 1.0; });
    solver.start();
    solver.run(kDefault);
    EXPECT_EQ(solver.run(section({"WeldlingAngleMethod = 5"})), 0);
    EXPECT_EQ(solver.angles(), everyNode(180.0));
}

TEST(RepeatedRun, the_result_array_stays_where_it_is) {
    Solver solver;
    solver.start();
    const double* angles = solver.handle->getMeetingAngle();
    solver.run(kDefault);
    solver.bind();
    solver.run(section({"WeldlingAngleMethod = 2"}));
    EXPECT_EQ(solver.handle->getMeetingAngle(), angles);
}

TEST(RepeatedRun, settings_of_an_earlier_run_stay_when_the_file_is_silent) {
    Solver solver;
    solver.start();
    solver.run(
        section({"", "GradMethodMFT = 4", "nSmooth_beforeGrad = 0", "nSmooth_afterGrad = 0"}));
    const std::vector<std::string> gradient{"array 0", "array 1", "array 2"};
    EXPECT_EQ(solver.calls(), gradient);
    callLog().clear();
    solver.host.exchanges.clear();
    solver.run("");  // a file without the section: no method defaults either
    EXPECT_EQ(solver.calls(), gradient);
}

TEST(RepeatedRun, two_handles_do_not_know_each_other) {
    Solver first;
    Solver second;
    first.start();
    second.start();
    first.run(
        section({"", "GradMethodMFT = 4", "nSmooth_beforeGrad = 0", "nSmooth_afterGrad = 0"}));
    EXPECT_EQ(first.host.exchanges.size(), 3U);
    second.run(kDefault);
    EXPECT_EQ(second.host.exchanges.size(), 2U + 6U + 120U);
    EXPECT_EQ(first.host.exchanges.size(), 3U);
}

}  // namespace weldline::test
