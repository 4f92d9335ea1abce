#include <limits>
#include <memory>

#include "RandomScene.h"
#include "gradient/Smoothing.h"

#include "NumericsTest.h"

// The components of a gradient set, smoothed one after another or, where no host object could see
// the difference, all at once: the same bits, trace lines and calls.

namespace weldline::test {

namespace {

constexpr int scenes = 300;
// Entry 0 of every array is nobody's slot: it is not written, and not read, which would leave a
// trace of the infinite one.
constexpr double unwritten = 7.0;
constexpr double unread = std::numeric_limits<double>::infinity();

// A calculator on a random scene, the same for the same seed.
struct Calculator {
    Calculator(int seed, bool hasCommunication, bool hasPartition)
        : dice(static_cast<std::uint64_t>(seed) + 1) {
        addRandomScene(host, dice);
        host.finish();
        calc.setPartitionInterface(hasPartition ? host.partition() : nullptr);
        calc.setKVRCom(hasCommunication ? host.communication() : nullptr, nullptr);
        calc.setFlowData(host.gv(), host.mesh());
        passes = dice.below(5);
        for (int c = 1; c <= host.slots(); ++c) {
            calc.m_pVariableOrg[c] = dice.below(3) == 0 ? dice.value() : 1.0;
            calc.m_pZeroGradFlag[c] = dice.below(8) == 0 ? 1 : 0;
        }
        for (double* component : {calc.m_pGradX, calc.m_pGradY, calc.m_pGradZ}) {
            component[0] = unread;
            for (int c = 1; c <= host.slots(); ++c)
                component[c] = seed % 4 == 3 ? dice.wildValue() : dice.value();
        }
        calc.m_pWork1Y[0] = unwritten;
    }

    core::CellVectors set() const { return {calc.m_pGradX, calc.m_pGradY, calc.m_pGradZ}; }

    Dice dice;
    TestHost host;
    CKVR3DWeldLine calc;
    int passes = 0;
};

std::vector<double> copy(const double* array, int slots) {
    return {array, array + slots + 1};
}

void expectSameSet(const Calculator& expected, const Calculator& actual) {
    const int slots = expected.host.slots();
    EXPECT_TRUE(sameSlots(copy(expected.calc.m_pGradX, slots), actual.calc.m_pGradX));
    EXPECT_TRUE(sameSlots(copy(expected.calc.m_pGradY, slots), actual.calc.m_pGradY));
    EXPECT_TRUE(sameSlots(copy(expected.calc.m_pGradZ, slots), actual.calc.m_pGradZ));
    EXPECT_TRUE(sameSlots(copy(expected.calc.m_pWork1Y, slots), actual.calc.m_pWork1Y));
    EXPECT_TRUE(sameSlots(copy(expected.calc.m_pWork1Z, slots), actual.calc.m_pWork1Z));
    for (const Calculator* each : {&expected, &actual}) {
        for (const double* component :
             {each->calc.m_pGradX, each->calc.m_pGradY, each->calc.m_pGradZ})
            EXPECT_EQ(component[0], unread);
        EXPECT_EQ(each->calc.m_pWork1Y[0], unwritten);
    }
}

TEST(SmoothingTogether, gives_what_the_components_give_one_by_one) {
    int byRows = 0;
    int byFaces = 0;
    for (int seed = 0; seed < scenes; ++seed) {
        SCOPED_TRACE(seed);
        Calculator each(seed, false, false);
        for (double* component : {each.calc.m_pGradX, each.calc.m_pGradY, each.calc.m_pGradZ})
            each.calc.Smooth_Variable(component, each.passes);
        Calculator together(seed, false, false);
        core::Smoothing(together.calc).smooth(together.set(), together.passes);
        expectSameSet(each, together);
        const core::SmoothingFaces faces(each.calc);
        ++(core::isScattered(faces.inner(), each.host.slots()) ? byRows : byFaces);
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(byRows, 50);
    EXPECT_GT(byFaces, 50);
}

// The same object again, with the faces or rows that it has packed and the sums that it has used.
TEST(SmoothingTogether, serves_one_set_after_another) {
    for (int seed = 0; seed < 30; ++seed) {
        SCOPED_TRACE(seed);
        Calculator twice(seed, false, false);
        core::Smoothing smoothing(twice.calc);
        smoothing.smooth(twice.set(), 1);
        smoothing.smooth(twice.set(), 2);
        Calculator once(seed, false, false);
        core::Smoothing(once.calc).smooth(once.set(), 3);
        expectSameSet(once, twice);
    }
}

// Sets first, then one array: the faces that the rows have replaced are packed again.
TEST(SmoothingTogether, leaves_single_arrays_smoothed_as_ever) {
    for (int seed = 0; seed < 30; ++seed) {
        SCOPED_TRACE(seed);
        Calculator both(seed, false, false);
        core::Smoothing smoothing(both.calc);
        smoothing.smooth(both.set(), 2);
        smoothing.smooth(both.calc.m_pGradX, 1);
        Calculator each(seed, false, false);
        core::Smoothing(each.calc).smooth(each.set(), 2);
        each.calc.Smooth_Variable(each.calc.m_pGradX, 1);
        expectSameSet(each, both);
    }
}

// With an exchange, each array goes through all of its passes before the next one.
TEST(SmoothingTogether, gives_way_to_the_order_of_exchanges) {
    for (const bool hasPartition : {true, false}) {
        Calculator one(7, true, hasPartition);
        core::Smoothing(one.calc).smooth(one.set(), 2);
        std::vector<const double*> arrays;
        for (const Exchange& exchange : one.host.exchanges) arrays.push_back(exchange.array);
        EXPECT_EQ(arrays, (std::vector<const double*>{one.calc.m_pGradX, one.calc.m_pGradX,
                                                      one.calc.m_pGradY, one.calc.m_pGradY,
                                                      one.calc.m_pGradZ, one.calc.m_pGradZ}));
    }
}

// [1] -- h without an exchange: the interface face is asked for in every pass of each component.
TEST(SmoothingTogether, gives_way_to_interface_faces) {
    TestHost host;
    host.addCell({0, 0, 0}, 1.0, {});
    host.addInterface(1, {2, 0, 0}, {1, 0, 0}, 0.5, {2, 0, 0}, 1.0, {});
    host.finish();
    CKVR3DWeldLine calc;
    calc.setPartitionInterface(host.partition());
    calc.setFlowData(host.gv(), host.mesh());
    for (double* component : {calc.m_pGradX, calc.m_pGradY, calc.m_pGradZ}) {
        component[1] = 2.0;
        component[host.haloSlot(1)] = 6.0;
    }
    core::Smoothing(calc).smooth({calc.m_pGradX, calc.m_pGradY, calc.m_pGradZ}, 1);
    EXPECT_EQ(calc.m_pGradX[1], 4.0);
    EXPECT_EQ(calc.m_pGradY[1], 4.0);
    EXPECT_EQ(calc.m_pGradZ[1], 4.0);
}

class SmoothingTrace : public NumericsTest {};

TEST_F(SmoothingTrace, has_a_line_per_component_with_and_without_passes) {
    host.addCell({0, 0, 0}, 1.0, {});
    bind();
    calc.setPartitionInterface(nullptr);
    calc.setKVRCom(nullptr, nullptr);
    const std::string line = "calWeldLine: Smooth_Variable\n";
    for (const int passes : {0, 2}) {
        startTrace();
        core::Smoothing(calc).smooth({calc.m_pGradX, calc.m_pGradY, calc.m_pGradZ}, passes);
        EXPECT_EQ(trace(), line + line + line) << passes;
    }
}

}  // namespace

}  // namespace weldline::test
