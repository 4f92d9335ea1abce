#include <gtest/gtest.h>

#include "rbf/StencilSolver.h"

namespace weldline {
namespace {

template <std::size_t N>
typename Stencil<N>::Column column(std::initializer_list<double> values) {
    typename Stencil<N>::Column c{};
    std::copy(values.begin(), values.end(), c.begin());
    return c;
}

// From left to right the sum would be 3: 1e16 swallows a 1.
TEST(RbfSolver, keeps_four_running_sums) {
    const auto a = column<6>({1e16, 1, -1e16, 1, 1, 1});
    const auto ones = column<6>({1, 1, 1, 1, 1, 1});
    EXPECT_EQ(Stencil<6>::dot(a, ones), 4.0);
}

// Pairs first, 1e16 - 1e16 + 1 + 1; the last term at the end.
TEST(RbfSolver, keeps_the_odd_term_for_the_end) {
    const auto a = column<5>({1e16, 1, -1e16, 1, 0.5});
    const auto ones = column<5>({1, 1, 1, 1, 1});
    EXPECT_EQ(Stencil<5>::dot(a, ones), 2.5);
}

// m = l l^T with ones below and 2 on the diagonal of l: all numbers on the way are small integers.
template <std::size_t N>
void solvesExactly() {
    const auto l = [](std::size_t i, std::size_t k) { return i == k ? 2.0 : i > k ? 1.0 : 0.0; };
    typename Stencil<N>::Square m{};
    typename Stencil<N>::Column x{};
    for (std::size_t j = 0; j < N; ++j)
        for (std::size_t i = 0; i < N; ++i) {
            for (std::size_t k = 0; k < N; ++k) m[j][i] += l(i, k) * l(j, k);
            x[i] += m[j][i] * static_cast<double>(j + 1);
        }
    ASSERT_TRUE(Stencil<N>::factor(m));
    for (std::size_t k = 0; k < N; ++k)
        for (std::size_t i = k; i < N; ++i) EXPECT_EQ(m[k][i], l(i, k)) << i << " " << k;
    Stencil<N>::solve(m, x);
    for (std::size_t j = 0; j < N; ++j) EXPECT_EQ(x[j], static_cast<double>(j + 1)) << N;
}

TEST(RbfSolver, solves_within_one_block_and_across_two) {
    solvesExactly<3>();
    solvesExactly<8>();
    solvesExactly<9>();
    solvesExactly<12>();
    solvesExactly<15>();
    solvesExactly<16>();
}

TEST(RbfSolver, refuses_a_matrix_that_is_not_positive_definite) {
    typename Stencil<3>::Square m{};
    m[0][0] = m[0][1] = m[1][0] = m[1][1] = m[2][2] = 1.0;
    EXPECT_FALSE(Stencil<3>::factor(m));
}

}  // namespace
}  // namespace weldline
