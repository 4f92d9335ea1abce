#include "NumericsTest.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace weldline::test {

bool sameBits(double first, double second) {
    if (std::isnan(first) || std::isnan(second)) return std::isnan(first) && std::isnan(second);
    return std::bit_cast<std::uint64_t>(first) == std::bit_cast<std::uint64_t>(second);
}

::testing::AssertionResult sameSlots(const std::vector<double>& expected, const double* actual) {
    for (std::size_t i = 1; i < expected.size(); ++i) {
        if (sameBits(expected[i], actual[i])) continue;
        return ::testing::AssertionFailure() << "slot " << i << ": expected " << std::hexfloat
                                             << expected[i] << ", got " << actual[i];
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult sameSlots(const Vectors& expected, const Vectors& actual) {
    auto result = sameSlots(expected.x, actual.x.data());
    if (!result) return result << " (x)";
    result = sameSlots(expected.y, actual.y.data());
    if (!result) return result << " (y)";
    result = sameSlots(expected.z, actual.z.data());
    if (!result) return result << " (z)";
    return result;
}

NumericsTest::NumericsTest() {
    callLog().clear();
    rbfRows() = RbfRows{};
}

NumericsTest::~NumericsTest() {
    rbfRows() = RbfRows{};
}

void NumericsTest::bind() {
    host.finish();
    calc.setPartitionInterface(host.partition());
    calc.setKVRCom(host.communication(), host.collective());
    calc.setFlowData(host.gv(), host.mesh());
}

std::vector<double> NumericsTest::slots(double value) const {
    std::vector<double> array(static_cast<std::size_t>(host.slots()) + 1, value);
    array[0] = NaN;
    return array;
}

Vectors NumericsTest::vectors(double value) const {
    return {slots(value), slots(value), slots(value)};
}

void NumericsTest::startTrace() {
    calc.m_pDebugFile = std::fopen(host.tracePath().c_str(), "w");
    ASSERT_NE(calc.m_pDebugFile, nullptr);
    calc.m_FlagDebugOutput = true;
}

std::string NumericsTest::trace() {
    std::fflush(calc.m_pDebugFile);
    return TestHost::readFile(host.tracePath());
}

}  // namespace weldline::test
