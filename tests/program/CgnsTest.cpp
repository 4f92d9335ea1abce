#include "ProgramTest.h"

// A CGNS file from reading to the result; what is wrong with one ends in one line, whatever its
// libraries do about it.

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

TEST_F(Cgns, files_that_end_too_early) {
    for (const char* name : {"hdf5.cgns", "adf.cgns"}) {
        const std::string whole = read(sample(name));
        for (const std::size_t size : {1000U, 9000U, 20000U}) {
            const std::string file = write("cut.cgns", whole.substr(0, size));
            expectError(weldline({"info", file}), 3, {"cut.cgns"});
        }
    }
}

}  // namespace

}  // namespace weldline::test
