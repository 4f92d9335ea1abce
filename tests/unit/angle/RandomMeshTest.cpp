// All methods on random boxes against the naive ones, to the last bit.

#include "NaiveAngles.h"
#include "RandomBox.h"

namespace weldline::test {

namespace {

constexpr unsigned kBoxes = 600;

class RandomMesh : public testing::TestWithParam<int> {
  protected:
    static void expectSame(const NaiveAngles& naive, const RandomBox& box) {
        for (int n = 1; n <= box.line.m_nNode; ++n)
            EXPECT_TRUE(sameBits(box.angle(n), naive.angles[n]))
                << "node " << n << ": " << box.angle(n) << " instead of " << naive.angles[n];
        for (int slot = 1; slot <= box.line.m_nCV_Total; ++slot) {
            EXPECT_TRUE(sameBits(box.line.m_pGradX[slot], naive.gx[slot])) << "slot " << slot;
            EXPECT_TRUE(sameBits(box.line.m_pGradY[slot], naive.gy[slot])) << "slot " << slot;
            EXPECT_TRUE(sameBits(box.line.m_pGradZ[slot], naive.gz[slot])) << "slot " << slot;
        }
        EXPECT_TRUE(sameBits(box.line.m_BoundaryAngle, naive.boundaryAngle));
        EXPECT_TRUE(sameBits(box.line.m_GradMagUpper, naive.upper));
        EXPECT_TRUE(sameBits(box.line.m_GradMagLower, naive.lower));
    }
};

}  // namespace

TEST_P(RandomMesh, equals_the_naive_method) {
    int met = 0;
    for (unsigned seed = 1; seed <= kBoxes && !HasFailure(); ++seed) {
        SCOPED_TRACE("box " + std::to_string(seed));
        RandomBox box(seed);
        NaiveAngles naive(box);
        naive.run(GetParam());
        box.run(GetParam());
        expectSame(naive, box);
        for (int n = 1; n <= box.line.m_nNode; ++n) met += box.met(n) ? 1 : 0;
    }
    // The boxes are worth something only if streams meet in them.
    EXPECT_GT(met, 1000);
}

// Angles and boundary angle of the first run go into the second, gradients into neither.
TEST_P(RandomMesh, equals_the_naive_method_in_a_second_run) {
    for (unsigned seed = 1; seed <= kBoxes / 6 && !HasFailure(); ++seed) {
        SCOPED_TRACE("box " + std::to_string(seed));
        RandomBox box(seed);
        NaiveAngles naive(box);
        for (int run = 0; run < 2; ++run) {
            naive.run(GetParam());
            box.run(GetParam());
        }
        expectSame(naive, box);
    }
}

INSTANTIATE_TEST_SUITE_P(All, RandomMesh, testing::Values(1, 2, 3, 4), methodName);

}  // namespace weldline::test
