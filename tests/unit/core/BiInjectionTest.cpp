#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "Rig.h"

namespace weldline::test {

namespace {

constexpr int kBiInjectionMode = 11;

// Cells 1 to 8 of a box of 2 x 2 x 2 hold `value`; the bi-injection array holds 0.1, 0.2, ...
class BiInjection : public ::testing::Test {
  protected:
    BiInjection() : m_bi(m_rig.host.slots() + 1) {
        m_bi[0] = std::nanf("");
        for (std::size_t i = 1; i < m_bi.size(); ++i) m_bi[i] = 0.1F * static_cast<float>(i);
    }

    void bindWith(float value, int mode) {
        for (int slot = 1; slot <= m_rig.host.slots(); ++slot) m_rig.host.setValue(slot, value);
        m_rig.host.analysisMode = mode;
        m_rig.calculator.setBiIMFlowData(m_bi.data());
        m_rig.bind();
    }

    void expectLoaded(const std::vector<float>& expected) {
        for (int slot = 1; slot <= m_rig.host.slots(); ++slot) {
            EXPECT_EQ(m_rig.calculator.m_pVariable[slot], expected[slot]) << "slot " << slot;
            EXPECT_EQ(m_rig.calculator.m_pVariableOrg[slot], expected[slot]) << "slot " << slot;
        }
        EXPECT_EQ(m_rig.calculator.m_pVariable[0], 0.0);
    }

    std::vector<float> everywhere(float value) { return std::vector<float>(m_bi.size(), value); }

    Rig m_rig;
    std::vector<float> m_bi;
};

}  // namespace

TEST_F(BiInjection, unreached_slots_take_the_second_melt) {
    for (float unreached : {0.0F, -0.0F, -1.0F, 1.0e-38F, 9.9e-31F}) {
        bindWith(unreached, kBiInjectionMode);
        expectLoaded(m_bi);
    }
}

// The float nearest to 1.0e-30 widens to 1.0000000031710769e-30, a little more than the double
// 1.0e-30, and still means exactly 1.0e-30.
TEST_F(BiInjection, keeps_the_limit_itself_as_unreached) {
    ASSERT_GT(static_cast<double>(1.0e-30F), 1.0e-30);
    bindWith(1.0e-30F, kBiInjectionMode);
    expectLoaded(m_bi);
}

TEST_F(BiInjection, values_above_the_limit_stay) {
    for (float reached : {std::nextafter(1.0e-30F, 1.0F), 2.0e-30F, 1.0F}) {
        bindWith(reached, kBiInjectionMode);
        expectLoaded(everywhere(reached));
    }
}

TEST_F(BiInjection, the_float_below_the_limit_is_unreached) {
    bindWith(std::nextafter(1.0e-30F, 0.0F), kBiInjectionMode);
    expectLoaded(m_bi);
}

TEST_F(BiInjection, an_undefined_value_is_not_replaced) {
    bindWith(std::nanf(""), kBiInjectionMode);
    EXPECT_TRUE(std::isnan(m_rig.calculator.m_pVariable[1]));
    EXPECT_TRUE(std::isnan(m_rig.calculator.m_pVariableOrg[1]));
}

TEST_F(BiInjection, only_unreached_slots_are_replaced) {
    bindWith(5.0F, kBiInjectionMode);
    m_rig.host.setValue(3, 0.0F);
    m_rig.bind();
    std::vector<float> expected = everywhere(5.0F);
    expected[3] = m_bi[3];
    expectLoaded(expected);
}

TEST_F(BiInjection, the_host_array_keeps_its_values) {
    bindWith(0.0F, kBiInjectionMode);
    EXPECT_EQ(m_rig.host.gv()->m_pFlowVariable[1], 0.0F);
    EXPECT_EQ(m_bi[1], 0.1F);
}

TEST_F(BiInjection, other_modes_leave_the_array_alone) {
    for (int mode : {0, 1, 10, 12, -11}) {
        bindWith(0.0F, mode);
        expectLoaded(everywhere(0.0F));
    }
}

TEST_F(BiInjection, other_modes_need_no_array) {
    m_rig.host.analysisMode = 10;
    m_rig.host.setValue(1, 0.0F);
    m_rig.calculator.setBiIMFlowData(nullptr);
    m_rig.bind();
    EXPECT_EQ(m_rig.calculator.m_pVariable[1], 0.0);
}

}  // namespace weldline::test
