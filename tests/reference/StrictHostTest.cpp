// The strict host itself: what must hurt does hurt.
#include <gtest/gtest.h>

#include <cmath>

#include "HostArrays.h"
#include "StrictHost.h"

namespace weldline::reference {
namespace {

const std::vector<double> threeReals = {poisonReal, 1.0, 2.0, 3.0};
const std::vector<int> threeInts = {poisonInt, 1, 2, 3};

template <class T>
T elementOf(const Memory& memory, int index) {
    return static_cast<const volatile T*>(memory.address())[index];
}

template <class T>
void readInside(const std::vector<T>& values) {
    for (Placing placing : {Placing::heap, Placing::endOfPage, Placing::startOfPage}) {
        const Memory memory(values, First::meaningless, placing);
        for (int i = 1; i <= 3; ++i) EXPECT_EQ(elementOf<T>(memory, i), values[i]);
    }
}

TEST(StrictHostMemory, gives_its_elements) {
    readInside(threeReals);
    readInside(threeInts);
}

// [page nobody may touch][... 0 1 2 3][page nobody may touch]
TEST(StrictHostMemory, ends_the_process_behind_the_last_element) {
    const Memory reals(threeReals, First::meaningless, Placing::endOfPage);
    const Memory ints(threeInts, First::meaningful, Placing::endOfPage);
    EXPECT_DEATH(elementOf<double>(reals, 4), "");
    EXPECT_DEATH(elementOf<int>(ints, 4), "");
}

// A count is read, a meaningless element 0 is not: it lies in the page before.
TEST(StrictHostMemory, ends_the_process_before_the_first_element) {
    const Memory reals(threeReals, First::meaningless, Placing::startOfPage);
    const Memory ints(threeInts, First::meaningless, Placing::startOfPage);
    const Memory row(std::vector<int>{3, 1, 2, 3}, First::meaningful, Placing::startOfPage);
    EXPECT_DEATH(elementOf<double>(reals, 0), "");
    EXPECT_DEATH(elementOf<int>(ints, 0), "");
    EXPECT_EQ(elementOf<int>(row, 0), 3);
    EXPECT_DEATH(elementOf<int>(row, -1), "");
}

// Two places in turn: the array of the call before is poisoned.
TEST(StrictHostMemory, moves_at_every_access) {
    PartitionArray<double> array;
    array.set(threeReals, poisonReal, {Placing::heap, 1, false});
    const double* const first = array.access();
    const double* const second = array.access();
    EXPECT_NE(first, second);
    EXPECT_TRUE(std::isnan(first[1]));
    EXPECT_EQ(second[3], 3.0);
}

// Rows with a poisoned tail of 2, 3, 4, 1 elements.
TEST(StrictHostMemory, poisons_the_tails_of_rows) {
    ArrayStore store(Placing::heapTails);
    int** const rows =
        store.placeRows<int>({{}, {1, 7}, {0}, {2, 8, 9}}, First::meaningful, poisonInt);
    EXPECT_EQ(rows[1][1], 7);
    EXPECT_EQ(rows[1][2], poisonInt);
    EXPECT_EQ(rows[2][1], poisonInt);
    EXPECT_EQ(rows[3][6], poisonInt);
}

}  // namespace
}  // namespace weldline::reference
