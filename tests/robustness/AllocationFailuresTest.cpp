#include <gtest/gtest.h>

#include <memory>
#include <new>

#include "CountedMemory.h"
#include "QuietHost.h"
#include "ShakenBox.h"

// Memory runs out at every single allocation in turn: the first, the second, ... until there are
// no more. Each time std::bad_alloc reaches the host, nothing is lost, and the handle can be bound
// again, run again and destroyed.

namespace weldline::test {

namespace {

// The boundary angle is given, so that a second run starts from the same settings.
void choose(QuietHost& host, const Choice& choice) {
    host.choose(choice, {"FlagDebugOutput = 1", "BoundaryAngle = 75"});
}

// Runs `action` with the n-th allocation failing; says whether it came through.
template <class Action>
bool comesThrough(long n, const Action& action) {
    const FailingAllocation failing(n);
    try {
        action();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

// Calls attempt(n) for n = 1, 2, ... until it comes through; how many failed.
template <class Attempt>
long failEachInTurn(const Attempt& attempt) {
    for (long n = 1;; ++n)
        if (attempt(n)) return n - 1;
}

class AllocationFailures : public ::testing::TestWithParam<int> {
  protected:
    AllocationFailures() : m_host(addShakenBox) {
        choose(m_host, everyChoice()[GetParam()]);
        m_expected = m_host.roomForAngles();
        m_angles = m_expected;
        m_host.calculate(m_expected);
    }

    QuietHost m_host;
    std::vector<double> m_expected;
    std::vector<double> m_angles;
};

std::string nameOfChoice(const ::testing::TestParamInfo<int>& choice) {
    const Choice c = everyChoice()[choice.param];
    return "method_" + std::to_string(c.method) + "_gradient_" + std::to_string(c.gradientMethod) +
           (c.gradSetSwitch == 0.0 ? "_first_set" : "");
}

}  // namespace

TEST_P(AllocationFailures, of_a_whole_life_leave_nothing_behind) {
    const MemoryInUse before = memoryInUse();
    const long failures = failEachInTurn([&](long n) {
        const bool through = comesThrough(n, [&] { m_host.calculate(m_angles); });
        EXPECT_EQ(memoryInUse(), before) << "allocation " << n;
        return through;
    });
    EXPECT_GT(failures, 20);
    EXPECT_EQ(m_angles, m_expected);
}

TEST_P(AllocationFailures, leave_a_handle_that_works_when_it_is_bound_again) {
    failEachInTurn([&](long n) {
        CKVR3D_WeldLine_Manipulator handle;
        const bool through = comesThrough(n, [&] {
            m_host.bind(handle);
            handle.calWeldLine();
        });
        m_host.bind(handle);
        EXPECT_EQ(handle.calWeldLine(), 0);
        m_host.read(handle, m_angles);
        EXPECT_EQ(m_angles, m_expected) << "allocation " << n;
        return through;
    });
}

// After a failure and two runs the handle holds what any handle holds after a run, and nothing of
// the attempt that failed.
TEST_P(AllocationFailures, do_not_pile_up_in_a_handle) {
    const auto bindAndRun = [&](CKVR3D_WeldLine_Manipulator& handle) {
        m_host.bind(handle);
        handle.calWeldLine();
    };
    bool through = false;
    const auto memoryAfterFailure = [&](long n) {
        const MemoryInUse before = memoryInUse();
        CKVR3D_WeldLine_Manipulator handle;
        through = comesThrough(n, [&] { bindAndRun(handle); });
        bindAndRun(handle);
        bindAndRun(handle);
        const MemoryInUse after = memoryInUse();
        return MemoryInUse{after.blocks - before.blocks, after.bytes - before.bytes};
    };
    const MemoryInUse untroubled = memoryAfterFailure(0);
    failEachInTurn([&](long n) {
        const MemoryInUse troubled = memoryAfterFailure(n);
        EXPECT_EQ(troubled.blocks, untroubled.blocks) << "allocation " << n;
        EXPECT_EQ(troubled.bytes, untroubled.bytes) << "allocation " << n;
        return through;
    });
}

// A host that goes on without binding gets a run on what the failed one left.
TEST_P(AllocationFailures, in_a_run_leave_a_handle_that_runs_again) {
    const long failures = failEachInTurn([&](long n) {
        CKVR3D_WeldLine_Manipulator handle;
        m_host.bind(handle);
        const bool through = comesThrough(n, [&] { handle.calWeldLine(); });
        EXPECT_EQ(handle.calWeldLine(), 0);
        return through;
    });
    EXPECT_GT(failures, 4);
}

INSTANTIATE_TEST_SUITE_P(EveryChoice, AllocationFailures,
                         ::testing::Range(0, static_cast<int>(everyChoice().size())), nameOfChoice);

TEST(AllocationFailure, of_the_construction_gives_no_handle) {
    const MemoryInUse before = memoryInUse();
    const long failures = failEachInTurn([&](long n) {
        const bool through = comesThrough(n, [] { const CKVR3D_WeldLine_Manipulator handle; });
        EXPECT_EQ(memoryInUse(), before);
        return through;
    });
    EXPECT_EQ(failures, 1);  // the calculator
}

// All arrays or none: without them there is no result to read, and the next binding makes them,
// with the counts that it finds then.
TEST(AllocationFailure, of_the_first_binding_leaves_a_handle_without_arrays) {
    QuietHost host(addTwoCells);
    QuietHost larger(addShakenBox);
    choose(larger, {4, 4});
    std::vector<double> expected = larger.roomForAngles();
    larger.calculate(expected);
    CKVR3D_WeldLine_Manipulator handle;
    EXPECT_FALSE(comesThrough(5, [&] { host.bind(handle); }));
    EXPECT_EQ(handle.getMeetingAngle(), nullptr);
    larger.bind(handle);
    handle.calWeldLine();
    std::vector<double> angles = larger.roomForAngles();
    larger.read(handle, angles);
    EXPECT_EQ(angles, expected);
}

// A mesh that has outgrown the arrays: each exchange then has a copy of its own.
TEST(AllocationFailure, of_an_outgrown_mesh_leaves_nothing_behind) {
    QuietHost small(addTwoCells);
    QuietHost large(addShakenBox);
    choose(small, {4, 3});
    choose(large, {4, 3});
    const MemoryInUse before = memoryInUse();
    const long failures = failEachInTurn([&](long n) {
        const bool through = comesThrough(n, [&] {
            CKVR3D_WeldLine_Manipulator handle;
            small.bind(handle);
            large.bind(handle);
            handle.calWeldLine();
        });
        EXPECT_EQ(memoryInUse(), before) << "allocation " << n;
        return through;
    });
    EXPECT_GT(failures, 40);
}

TEST(AllocationFailure, with_bi_injection_data_leaves_nothing_behind) {
    QuietHost host(addShakenBox);
    choose(host, {4, 3});
    host.host.analysisMode = 11;
    const MemoryInUse before = memoryInUse();
    std::vector<double> expected = host.roomForAngles();
    std::vector<double> angles = expected;
    host.calculate(expected);
    failEachInTurn([&](long n) { return comesThrough(n, [&] { host.calculate(angles); }); });
    EXPECT_EQ(angles, expected);
    EXPECT_EQ(memoryInUse().blocks, before.blocks + 2);  // the two results
}

}  // namespace weldline::test
