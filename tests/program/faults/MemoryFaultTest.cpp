#include <cerrno>
#include <string>
#include <vector>

#include "FaultTest.h"

// No memory at one call, or from one call on, wherever that is between start and end of main. Not
// part of sanitizer builds, which have an allocator of their own.

namespace weldline::test {

namespace {

class MemoryFaults : public FaultTest {
  protected:
    // As many numbers as asked, or all; closer to each other at the start and at the end, where the
    // program's own small pieces are.
    static std::vector<int> spread(int all, int wanted) {
        std::vector<int> numbers;
        for (int i = 0; i < wanted; ++i) {
            const double x = static_cast<double>(i) / (wanted - 1);
            const int number = 1 + static_cast<int>((all - 1) * x * x * (3.0 - 2.0 * x));
            if (numbers.empty() || number > numbers.back()) numbers.push_back(number);
        }
        return numbers;
    }

    void fail(const Names& command, int runs) {
        prepare(command, {});
        const std::vector<int> numbers = spread(countCalls("malloc"), runs);
        failSome({"malloc", std::to_string(ENOMEM)}, numbers);
        failSome({"malloc", std::to_string(ENOMEM), true}, numbers);
    }

    std::string part() const { return write("part.vtu", plateWithTwoFronts(10, 2, 2)); }
};

TEST_F(MemoryFaults, analyze) {
    fail({"analyze", part(), "-o", at("result.vtu"), "--json", at("sum.json"), "--set",
          "FlagDebugOutput=1"},
         150);
}

TEST_F(MemoryFaults, info) {
    fail({"info", part(), "--json", at("info.json")}, 40);
}

TEST_F(MemoryFaults, settings) {
    fail({"settings"}, 10);
    fail({"settings", "--check",
          write("run.cmp", std::string("[WeldLinePlotCtrl]\nnGrad=3\n[/WeldLinePlotCtrl]\n"))},
         20);
}

TEST_F(MemoryFaults, tables_of_the_system) {
    prepare({"analyze", part(), "-o", at("result.vtu")}, {});
    EXPECT_GE(failEach({"mmap", std::to_string(ENOMEM)}), 0);
}

}  // namespace

}  // namespace weldline::test
