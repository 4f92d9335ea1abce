#include "ProgramTest.h"

// A machine that is too small. Not part of sanitizer builds, which need an address space of their
// own.

namespace weldline::test {

namespace {

class Memory : public ProgramTest {};

// A run on 108000 cells takes about 255 MB of address space, one on a few cells less than 140 MB:
// the libraries of all forms of input take 110 MB.
TEST_F(Memory, exhausted_is_one_line_and_leaves_nothing_behind) {
    const std::string input = write("part.vtu", plateWithTwoFronts(60, 60, 30));
    Setting setting;
    setting.memoryLimit = 205'000'000;
    expectError(weldline({"analyze", input, "-o", at("result.vtu")}, setting), 1,
                {"part.vtu", "out of memory"});
    EXPECT_EQ(entries(), std::vector<std::string>{"part.vtu"});
    EXPECT_TRUE(temporaries().empty());
}

}  // namespace

}  // namespace weldline::test
