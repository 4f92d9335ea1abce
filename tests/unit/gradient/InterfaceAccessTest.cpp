#include <cmath>
#include <memory>

#include "NumericsTest.h"
#include "RestlessPartition.h"

// The partition object may answer with another array at each question, and its number of faces is
// asked before each face: every operation must see the answers of the moment.

namespace weldline::test {

namespace {

class InterfaceAccess : public NumericsTest {
  protected:
    // [1] with two interface faces of area (1, 0, 0) and (2, 0, 0) to halo cells at (1, 0, 0) and
    // (0, 1, 0) with the values 3 and 6, and a wall of area (0, 0, 1) at (0, 0, 1), value 4.
    void SetUp() override {
        host.addCell({0, 0, 0}, 1.0, {});
        host.addBoundary(Group::Wall, 1, {0, 0, 1}, {0, 0, 1});
        host.addInterface(1, {1, 0, 0}, {0.5, 0, 0}, 0.5, {1, 0, 0}, 1.0, {});
        host.addInterface(1, {2, 0, 0}, {0, 0.5, 0}, 0.5, {0, 1, 0}, 1.0, {});
        bind();
        phi = {NaN, 2.0, 4.0, 3.0, 6.0};
        g = vectors(0.0);
        restless = std::make_unique<RestlessPartition>(*host.partition());
        calc.setPartitionInterface(restless.get());
    }

    void loseSecondFace() {
        restless = std::make_unique<RestlessPartition>(*host.partition());
        restless->laterFaces = 1;
        calc.setPartitionInterface(restless.get());
    }

    std::unique_ptr<RestlessPartition> restless;
    std::vector<double> phi;
    Vectors g;
};

// Face values 2.5 and 4 with lengths 1 and 2, wall value 4 with length 1: (2.5 + 8 + 4) / 4.
TEST_F(InterfaceAccess, smoothing) {
    calc.Smooth_Variable(phi.data(), 1);
    EXPECT_EQ(phi[1], 3.625);
    loseSecondFace();
    phi = {NaN, 2.0, 4.0, 3.0, 6.0};
    calc.Smooth_Variable(phi.data(), 1);
    EXPECT_EQ(phi[1], 3.25);  // (2.5 + 4) / 2
}

// 2.5*1 + 4*2 = 10.5 in every iteration: the correction is zero in the first two, and in the third
// it is (0.5 - 0.5)*... + (0.5 - 0.5)*... = 0 as the face centres lie between the cell centres.
TEST_F(InterfaceAccess, default_gradient) {
    for (const int iterations : {1, 2, 3}) {
        calc.GradVarb(iterations, phi.data(), g.x.data(), g.y.data(), g.z.data());
        EXPECT_EQ(g.x[1], 10.5) << iterations;
        EXPECT_EQ(g.z[1], 4.0) << iterations;
    }
    loseSecondFace();
    calc.GradVarb(1, phi.data(), g.x.data(), g.y.data(), g.z.data());
    EXPECT_EQ(g.x[1], 2.5);
}

// The own 2 is the smaller value on both faces: 2*1 + 2*2.
TEST_F(InterfaceAccess, upwind_gradient) {
    calc.GradVarb_Upwind(phi.data(), g.x.data(), g.y.data(), g.z.data());
    EXPECT_EQ(g.x[1], 6.0);
    loseSecondFace();
    calc.GradVarb_Upwind(phi.data(), g.x.data(), g.y.data(), g.z.data());
    EXPECT_EQ(g.x[1], 2.0);
}

// Differences 1, 4 and 2 over unit distances along x, y and z.
TEST_F(InterfaceAccess, least_squares_gradient) {
    calc.GradVarb_Iterative(phi.data(), g.x.data(), g.y.data(), g.z.data());
    EXPECT_EQ(g.x[1], 1.0);
    EXPECT_EQ(g.y[1], 4.0);
    EXPECT_EQ(g.z[1], 2.0);
    loseSecondFace();
    calc.GradVarb_Iterative(phi.data(), g.x.data(), g.y.data(), g.z.data());
    EXPECT_TRUE(std::isnan(g.y[1]));
}

// Means 2.5 and 4: 2.5*1 + 4*2.
TEST_F(InterfaceAccess, rbf_gradient) {
    calc.GradVarb_RBF(phi.data(), g.x.data(), g.y.data(), g.z.data());
    EXPECT_EQ(g.x[1], 10.5);
    EXPECT_EQ(g.z[1], 4.0);
    loseSecondFace();
    calc.GradVarb_RBF(phi.data(), g.x.data(), g.y.data(), g.z.data());
    EXPECT_EQ(g.x[1], 2.5);
}

}  // namespace

}  // namespace weldline::test
