#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Solver.h"

// The order of all calls to host objects through the public class. Exchanges are collective, so a
// run that made one more or one less would leave the processes of a partitioned run waiting.

namespace weldline::test {

namespace {

using Calls = std::vector<std::string>;

void append(Calls& calls, const Calls& more) {
    calls.insert(calls.end(), more.begin(), more.end());
}

Calls times(int array, int count) {
    return Calls(count, "array " + std::to_string(array));
}

Calls once(const std::vector<int>& arrays) {
    Calls calls;
    for (int array : arrays) append(calls, times(array, 1));
    return calls;
}

// Array 0 is the variable, 1 to 3 the first gradient set, 4 to 6 the second.
Calls smoothedSets(int passes, int sets) {
    Calls calls;
    for (int array = 1; array <= 3 * sets; ++array) append(calls, times(array, passes));
    return calls;
}

std::optional<Group> openSides(Point, Point) {
    return std::nullopt;
}

// Two processes' meshes look like this one: two cubes in a row, and on the far side of the second a
// halo cell of the neighbouring partition.
//
//   +-----+-----+ . . .
//   |  1  |  2  |  12   .     12: halo slot behind 2 own cells and 9 wall slots
//   +-----+-----+ . . .
class Partitioned {
  public:
    Partitioned() {
        TestHost& host = m_host;
        addBox(host, 2, 1, 1, 1.0, [](Point normal, Point) {
            return normal[0] > 0.0 ? std::nullopt : std::optional(Group::Wall);
        });
        host.addInterface(2, {1.0, 0.0, 0.0}, {2.0, 0.5, 0.5}, 0.5, {2.5, 0.5, 0.5}, 1.0,
                          {3, 6, 9, 12});
        host.finish();
        setField(host, [](Point x) { return 1.0 + x[0]; });
    }

    Calls run(const std::string& control) {
        CKVR3D_WeldLine_Manipulator handle;
        handle.setPartitionInterface(m_host.partition());
        handle.setKVRCom(m_host.communication(), m_host.collective());
        handle.setFlowData(m_host.gv(), m_host.mesh());
        callLog().clear();
        m_host.setControl(control);
        handle.calWeldLine();
        return callLog();
    }

    TestHost& host() { return m_host; }

  private:
    TestHost m_host;
};

}  // namespace

TEST(HostCalls, construction_and_destruction_call_only_the_rbf_objects) {
    resetRbfObjects();
    callLog().clear();
    { const CKVR3D_WeldLine_Manipulator handle; }
    EXPECT_EQ(callLog(), (Calls{"RBF0 construct", "RBF1 construct", "RBF2 construct",
                                "RBF3 construct", "RBF4 construct", "RBF4 destroy", "RBF3 destroy",
                                "RBF2 destroy", "RBF1 destroy", "RBF0 destroy"}));
}

TEST(HostCalls, setters_and_result_call_no_host_object) {
    Solver solver;
    solver.start();
    solver.bind();
    solver.handle->getMeetingAngle();
    EXPECT_EQ(callLog(), Calls());
    EXPECT_EQ(solver.host.partitionCalls, 0);
}

TEST(HostCalls, default_run_exchanges_in_order) {
    Solver solver;
    solver.start();
    EXPECT_EQ(solver.run(section({"", ""})), 0);
    Calls expected = times(0, 2);       // two passes on the variable
    append(expected, once({1, 2, 3}));  // upwind gradient
    append(expected, {"AllMax 0"});
    append(expected, once({4, 5, 6}));      // least-squares gradient
    append(expected, smoothedSets(20, 2));  // both sets, component by component
    EXPECT_EQ(solver.calls(), expected);
}

TEST(HostCalls, run_without_control_file_uses_the_first_settings) {
    Solver solver;
    solver.start();
    standardOutputOf([&] { EXPECT_EQ(solver.handle->calWeldLine(), 0); });
    Calls expected = times(0, 2);
    append(expected, once({1, 2, 3}));
    append(expected, {"AllMax 0"});
    append(expected, once({4, 5, 6}));
    append(expected, smoothedSets(4, 2));
    EXPECT_EQ(solver.calls(), expected);
}

TEST(HostCalls, singular_mesh_prepares_all_rbf_objects_before_the_exchange) {
    Solver solver(3, 1, 1, openSides);
    solver.start();
    solver.run(section({"", "nSmooth_afterGrad = 1"}));
    Calls expected = times(0, 2);
    append(expected, once({1, 2, 3}));
    append(expected, {"AllMax 1", "RBF0 getKvr3dGV", "RBF0 getPartitionFace", "RBF0 Initialize 1",
                      "RBF1 getKvr3dGV", "RBF1 getPartitionFace", "RBF1 Initialize 2",
                      "RBF2 getKvr3dGV", "RBF2 getPartitionFace", "RBF2 Initialize 3",
                      "RBF4 getKvr3dGV", "RBF4 getPartitionFace", "RBF4 Initialize 5",
                      "RBF3 getKvr3dGV", "RBF3 getPartitionFace", "RBF3 Initialize 6"});
    append(expected, once({4, 5, 6}));
    append(expected, smoothedSets(1, 2));
    EXPECT_EQ(solver.calls(), expected);
}

// The previous gradient (arrays 1 to 3) is exchanged after iterations 2 to 6, the result (arrays 4
// to 6) once at the end.
TEST(HostCalls, default_gradient_exchanges_from_its_second_iteration_on) {
    Solver solver;
    solver.start();
    solver.run(section({"WeldlingAngleMethod = 1", "nSmooth_afterGrad = 1"}));
    Calls expected = times(0, 2);
    for (int iteration = 2; iteration <= 6; ++iteration) append(expected, once({1, 2, 3}));
    append(expected, once({4, 5, 6}));
    append(expected, once({4, 5, 6}));
    EXPECT_EQ(solver.calls(), expected);
}

TEST(HostCalls, default_gradient_of_few_iterations_exchanges_only_its_result) {
    for (const char* iterations : {"nGrad = 1", "nGrad = 0", "nGrad = -1"}) {
        Solver solver;
        solver.start();
        solver.run(section({"WeldlingAngleMethod = 1", "nSmooth_afterGrad = 0",
                            "nSmooth_beforeGrad = 0", iterations}));
        EXPECT_EQ(solver.calls(), once({0, 1, 2})) << iterations;
    }
}

TEST(HostCalls, without_smoothing_only_the_gradients_exchange) {
    Solver solver;
    solver.start();
    solver.run(section({"", "nSmooth_afterGrad = 0", "nSmooth_beforeGrad = 0"}));
    EXPECT_EQ(solver.calls(), (Calls{"array 0", "array 1", "array 2", "AllMax 0", "array 3",
                                     "array 4", "array 5"}));
}

TEST(HostCalls, every_exchange_gets_an_array_of_all_slots) {
    Solver solver;
    solver.start();
    solver.run(section({"", ""}));
    for (const Exchange& exchange : solver.host.exchanges)
        EXPECT_EQ(exchange.before.size(), static_cast<std::size_t>(solver.host.slots()) + 1);
}

TEST(HostCalls, a_partition_with_interface_makes_the_same_calls_as_one_without) {
    for (const char* method : {"1", "2", "3", "4", "40", "5"}) {
        const std::string control = section({std::string("WeldlingAngleMethod = ") + method, ""});
        Partitioned partitioned;
        Solver alone;
        alone.start();
        alone.run(control);
        const Calls callsAlone = callLog();
        EXPECT_EQ(partitioned.run(control), callsAlone) << method;
        EXPECT_GT(partitioned.host().partitionCalls, 0);
    }
}

// What the exchange writes is what the next pass reads: the halo value 7 enters the mean of cell 2,
// whose six faces of area 1 lead to cell 1, to the halo and to four walls that hold its own value.
TEST(HostCalls, an_exchange_feeds_the_halo_of_the_next_pass) {
    Partitioned partitioned;
    TestHost& host = partitioned.host();
    const int halo = host.haloSlot(1);
    host.exchange = [halo](double* array) { array[halo] = 7.0; };
    partitioned.run(
        section({"", "GradMethodMFT = 0", "nSmooth_beforeGrad = 2", "nSmooth_afterGrad = 0"}));
    ASSERT_EQ(host.exchanges.size(), 2U);
    const std::vector<double>& first = host.exchanges[0].before;
    double sum = 0.5 * first[1] + 0.5 * first[2];
    sum += 0.5 * first[2] + 0.5 * 7.0;
    for (int wall = 1; wall <= 4; ++wall) sum += first[2];
    EXPECT_EQ(host.exchanges[1].before[2], sum / 6.0);
}

TEST(HostCalls, a_process_other_than_the_master_makes_the_same_calls) {
    Solver master;
    master.start();
    master.run(section({"FlagDebugOutput = 1", ""}));
    const Calls calls = callLog();
    Solver other;
    other.host.processNumber = 5;
    other.start();
    other.run(section({"FlagDebugOutput = 1", ""}));
    EXPECT_EQ(callLog(), calls);
}

}  // namespace weldline::test
