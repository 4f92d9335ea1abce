#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CKVR3DWeldLine.h"
#include "TestHost.h"

namespace weldline::test {

// 2^53: the first power of two whose neighbour above is two away. Adding 1 to it leaves it as it
// is (a tie, rounded to even), so (big + 1) - big is 0 where (big - big) + 1 is 1: sums of these
// numbers tell in which order they were formed.
inline constexpr double big = 9007199254740992.0;

// Three cell arrays of 1-based slots; slot 0 is NaN and means nothing.
struct Vectors {
    std::vector<double> x, y, z;
};

// Equality to the last bit, the sign of zero included; not-a-number equals not-a-number.
bool sameBits(double first, double second);

// The same for slots 1 to the end of `expected`; the message names the first slot that differs.
::testing::AssertionResult sameSlots(const std::vector<double>& expected, const double* actual);
::testing::AssertionResult sameSlots(const Vectors& expected, const Vectors& actual);

// A calculator on a test host. A test builds its cells in `host`, calls bind() and then the
// operations of `calc`; arrays from slots() are of the host's size.
class NumericsTest : public ::testing::Test {
  protected:
    NumericsTest();
    ~NumericsTest() override;

    void bind();  // host.finish() and the setters

    std::vector<double> slots(double value) const;
    Vectors vectors(double value) const;

    // Switches the trace on, as the control file would; trace() answers what was written since.
    void startTrace();
    std::string trace();

    TestHost host;
    CKVR3DWeldLine calc;
};

}  // namespace weldline::test
