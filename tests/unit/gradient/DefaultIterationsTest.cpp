#include <cmath>

#include "NumericsTest.h"

// The default scheme: how iterations follow each other, exchanges, and the final zero test.

namespace weldline::test {

namespace {

class DefaultIterations : public NumericsTest {
  protected:
    // Two cells of volume 1, centres (0, 0, 0) and (2, 0, 0), and walls that give them gradients
    // along y:
    //
    //   w1     w2      area (0, 1, 0) each, slot values 4 and 8
    //  [1] -- [2]      area (1, 0, 0), lambda 0.5, face centre (1, 1, 0)
    //
    // Cell values 2 and 4. Plain face value 3: gradients (3, 4, 0) and (-3, 8, 0).
    // Their mean is (0, 6, 0), and the face centre lies (0, 1, 0) from the middle of the cells: the
    // corrected face value is 3 + 1*6 = 9 as soon as the mean is carried over.
    void build() {
        host.addCell({0, 0, 0}, 1.0, {});
        host.addCell({2, 0, 0}, 1.0, {});
        host.addInner(1, 2, {1, 0, 0}, {1, 1, 0}, 0.5);
        host.addBoundary(Group::Wall, 1, {0, 1, 0}, {0, 1, 0});
        host.addBoundary(Group::Wall, 2, {0, 1, 0}, {2, 1, 0});
        bind();
        phi = {NaN, 2.0, 4.0, 4.0, 8.0};
    }

    void run(int iterations) {
        g = vectors(7.5);
        calc.GradVarb(iterations, phi.data(), g.x.data(), g.y.data(), g.z.data());
    }

    void expectGradients(double x1, double x2) {
        EXPECT_TRUE(sameSlots({NaN, x1, x2, x1, x2}, g.x.data()));
        EXPECT_TRUE(sameSlots({NaN, 4.0, 8.0, 4.0, 8.0}, g.y.data()));
        EXPECT_TRUE(sameSlots({NaN, 0.0, 0.0, 0.0, 0.0}, g.z.data()));
    }

    std::vector<double> phi;
    Vectors g;
};

TEST_F(DefaultIterations, one_and_two_iterations_agree) {
    build();
    run(1);
    expectGradients(3.0, -3.0);
    run(2);
    expectGradients(3.0, -3.0);
}

// The correction works from the third iteration on; the y gradients stay, so the fourth agrees.
TEST_F(DefaultIterations, the_third_iteration_is_the_first_corrected_one) {
    build();
    run(3);
    expectGradients(9.0, -9.0);
    run(4);
    expectGradients(9.0, -9.0);
}

TEST_F(DefaultIterations, the_last_gradient_is_carried_over_but_for_a_single_iteration) {
    build();
    run(3);
    EXPECT_TRUE(sameSlots(g.x, calc.m_pWork1X));
    EXPECT_TRUE(sameSlots(g.y, calc.m_pWork1Y));
    EXPECT_TRUE(sameSlots(g.z, calc.m_pWork1Z));
    run(1);
    for (const double* work : {calc.m_pWork1X, calc.m_pWork1Y, calc.m_pWork1Z})
        for (int slot = 0; slot <= host.slots(); ++slot) EXPECT_EQ(work[slot], 0.0) << slot;
}

// What an earlier call left in the work arrays has no influence.
TEST_F(DefaultIterations, calls_start_from_a_zero_previous_gradient) {
    build();
    run(3);
    run(2);
    expectGradients(3.0, -3.0);
}

TEST_F(DefaultIterations, the_loop_bound_names_the_iteration_that_is_not_carried_over) {
    build();
    calc.m_nGradLoopBound = 2;
    run(2);
    expectGradients(9.0, -9.0);
    EXPECT_EQ(calc.m_pWork1X[1], 3.0);
}

// An undefined face centre makes every corrected face value undefined from the first iteration
// on, although the previous gradient is zero.
TEST_F(DefaultIterations, keeps_the_product_with_the_zero_gradient) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addCell({2, 0, 0}, 1.0, {});
    host.addInner(1, 2, {1, 0, 0}, {1, HUGE_VAL, 0}, 0.5);
    bind();
    phi = {NaN, 2.0, 4.0};
    run(2);
    EXPECT_TRUE(std::isnan(g.x[1]));
    EXPECT_TRUE(std::isnan(g.x[2]));
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 0);
    run(1);
    EXPECT_EQ(g.x[1], 3.0);
}

TEST_F(DefaultIterations, exchanges_run_per_iteration_and_at_the_end) {
    build();
    run(3);
    const std::vector<const double*> expected{calc.m_pWork1X, calc.m_pWork1Y, calc.m_pWork1Z,
                                              calc.m_pWork1X, calc.m_pWork1Y, calc.m_pWork1Z,
                                              g.x.data(),     g.y.data(),     g.z.data()};
    ASSERT_EQ(host.exchanges.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(host.exchanges[i].array, expected[i]) << i;
    // The boundary slots are copied before the exchange.
    EXPECT_TRUE(sameSlots({NaN, 3.0, -3.0, 3.0, -3.0}, host.exchanges[0].before.data()));
    EXPECT_TRUE(sameSlots({NaN, 9.0, -9.0, 9.0, -9.0}, host.exchanges[3].before.data()));
    host.exchanges.clear();
    run(1);
    ASSERT_EQ(host.exchanges.size(), 3U);
    EXPECT_EQ(host.exchanges[0].array, g.x.data());
}

// [1] -- h: the halo's gradient along y comes from the exchange of the work array. Plain value 3;
// mean (0, (4 + 20)/2, 0), offset (0, 1, 0): 3 + 12 = 15. The wall adds (0, 4, 0).
TEST_F(DefaultIterations, halo_gradients_come_from_the_exchange) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addBoundary(Group::Wall, 1, {0, 1, 0}, {0, 1, 0});
    host.addInterface(1, {1, 0, 0}, {1, 1, 0}, 0.5, {2, 0, 0}, 1.0, {});
    bind();
    const int halo = host.haloSlot(1);
    host.exchange = [&](double* array) { array[halo] = array == calc.m_pWork1Y ? 20.0 : 0.0; };
    phi = {NaN, 2.0, 4.0, 4.0};
    run(3);
    EXPECT_EQ(g.x[1], 15.0);
    EXPECT_EQ(g.y[1], 4.0);
    EXPECT_EQ(g.y[halo], 0.0);
}

// The host cannot tell that the result of the first iteration is not used: count, two cells, three
// areas, three centres and a weight, and the count again, in each iteration.
TEST_F(DefaultIterations, every_iteration_asks_for_the_interface_faces) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addInterface(1, {1, 0, 0}, {1, 1, 0}, 0.5, {2, 0, 0}, 1.0, {});
    bind();
    phi = {NaN, 2.0, 4.0};
    for (const int iterations : {1, 2, 3}) {
        host.partitionCalls = 0;
        run(iterations);
        EXPECT_EQ(host.partitionCalls, iterations * 11) << iterations;
    }
}

TEST_F(DefaultIterations, no_iteration_only_exchanges_and_tests_for_zero) {
    build();
    for (const int iterations : {0, -2}) {
        host.exchanges.clear();
        calc.m_pWork1X[2] = 5.0;
        run(iterations);
        EXPECT_TRUE(sameSlots(vectors(7.5), g));
        EXPECT_TRUE(std::isnan(g.x[0]));
        EXPECT_EQ(calc.m_pWork1X[2], 0.0);
        ASSERT_EQ(host.exchanges.size(), 3U);
        EXPECT_EQ(host.exchanges[0].array, g.x.data());
        EXPECT_EQ(host.exchanges[1].array, g.y.data());
        EXPECT_EQ(host.exchanges[2].array, g.z.data());
    }
}

// With no iteration the result arrays go straight into the zero test. The square root of a
// number's square is the number, so a single component is compared as it is.
TEST_F(DefaultIterations, gradients_below_1e_30_are_zeroed_and_flagged) {
    const double limit = 1e-30, below = std::nextafter(limit, 0.0);
    for (int c = 0; c < 6; ++c) host.addCell({1.0 * c, 0, 0}, 1.0, {});
    host.addBoundary(Group::Wall, 1, {1, 0, 0}, {});
    bind();
    g = {{NaN, below, limit, 0.0, 0.0, NaN, 1e-200, below},
         {NaN, 0.0, 0.0, -below, 0.6 * limit, 0.0, 1e-180, 0.0},
         {NaN, 0.0, 0.0, 0.0, 0.9 * limit, 0.0, 1e-170, 0.0}};
    calc.m_pZeroGradFlag[2] = 1;
    phi = slots(1.0);
    calc.GradVarb(0, phi.data(), g.x.data(), g.y.data(), g.z.data());
    EXPECT_TRUE(sameSlots({NaN, 0.0, limit, 0.0, 0.0, NaN, 0.0, below}, g.x.data()));
    EXPECT_TRUE(sameSlots({NaN, 0.0, 0.0, 0.0, 0.6 * limit, 0.0, 0.0, 0.0}, g.y.data()));
    EXPECT_TRUE(sameSlots({NaN, 0.0, 0.0, 0.0, 0.9 * limit, 0.0, 0.0, 0.0}, g.z.data()));
    const std::vector<int> flags(calc.m_pZeroGradFlag + 1, calc.m_pZeroGradFlag + 8);
    EXPECT_EQ(flags, (std::vector<int>{1, 1, 1, 0, 0, 1, 0}));
}

// A closed cell (areas +1 and -1) in a uniform field has no gradient: flagged, and the flag stays
// when a later field has one.
TEST_F(DefaultIterations, a_vanishing_gradient_leaves_a_flag_that_stays) {
    host.addCell({0, 0, 0}, 1.0, {});
    host.addBoundary(Group::Wall, 1, {1, 0, 0}, {});
    host.addBoundary(Group::Wall, 1, {-1, 0, 0}, {});
    bind();
    phi = slots(2.0);
    run(1);
    EXPECT_EQ(g.x[1], 0.0);
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 1);
    EXPECT_EQ(calc.m_pZeroGradFlag[2], 0);
    phi[2] = 5.0;
    run(1);
    EXPECT_EQ(g.x[1], 3.0);
    EXPECT_EQ(calc.m_pZeroGradFlag[1], 1);
}

TEST_F(DefaultIterations, traces_once_a_call) {
    build();
    startTrace();
    run(3);
    EXPECT_EQ(trace(), "calWeldLine: GradVarb\n");
    host.processNumber = 2;
    run(1);
    EXPECT_EQ(trace(), "calWeldLine: GradVarb\n");
}

}  // namespace

}  // namespace weldline::test
