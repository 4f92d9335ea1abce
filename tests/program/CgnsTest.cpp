#include "ProgramTest.h"

// A CGNS file from reading to the result.

namespace weldline::test {

namespace {

class Cgns : public ProgramTest {
  protected:
    std::string sample(const std::string& name) const {
        return write(name, read(std::string(WELDLINE_CORPUS "/import/") + name));
    }
};

// Two boxes with a family, an outflow and a wall at one face each.
TEST_F(Cgns, patches_of_every_type_of_condition) {
    for (const char* name : {"hdf5.cgns", "adf.cgns"}) {
        const Outcome outcome = weldline({"analyze", sample(name), "-o", at("result.vtu")});
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_TRUE(contains(outcome.out, "wall 8 (wallside, no patch), inlet 1 (Inlet), outlet 1"))
            << outcome.out;
        EXPECT_TRUE(std::filesystem::exists(at("result.vtu")));
    }
}

}  // namespace

}  // namespace weldline::test
