#include "WorkStorage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace weldline::test {

namespace {

using core::ArrayOwner;

// Small ones, and one of more than the 4 MiB from which on large pages are asked for.
TEST(WorkStorage, arrays_are_zeros_and_can_be_written_to_their_ends) {
    ArrayOwner owner;
    for (const std::size_t count : {std::size_t{1}, std::size_t{1000}, std::size_t{700001}}) {
        double* array = owner.zeros<double>(count);
        EXPECT_EQ(std::count(array, array + count, 0.0), static_cast<std::ptrdiff_t>(count));
        std::fill_n(array, count, 1.0);
        double* second = owner.zeros<double>(count);
        EXPECT_EQ(std::count(second, second + count, 0.0), static_cast<std::ptrdiff_t>(count));
    }
}

TEST(WorkStorage, an_array_of_nothing_is_an_array) {
    ArrayOwner owner;
    EXPECT_NE(owner.zeros<int>(0), nullptr);
}

TEST(WorkStorage, counts_beyond_any_array_are_refused_and_leave_the_owner_usable) {
    ArrayOwner owner;
    for (const std::size_t count :
         {std::numeric_limits<std::size_t>::max(), std::numeric_limits<std::size_t>::max() / 8 + 2,
          static_cast<std::size_t>(PTRDIFF_MAX) / 8 + 1})
        EXPECT_THROW(owner.zeros<double>(count), std::bad_alloc) << count;
    EXPECT_EQ(owner.zeros<double>(3)[2], 0.0);
}

}  // namespace

}  // namespace weldline::test
