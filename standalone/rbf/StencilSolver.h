#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace weldline {

// Small dense algebra over the N cells of a stencil. N is a constant, so that every loop has a
// fixed length, and columns have an even number of entries, so that all work runs on pairs; the
// entry beyond an odd N starts at zero and never enters a sum over the cells.
//
// Weights are part of results that hold to the last bit: the order of every sum below is one.

template <std::size_t N>
struct Stencil {
    static constexpr std::size_t rows = (N + 1) / 2 * 2;
    struct alignas(16) Column : std::array<double, rows> {};
    using Square = std::array<Column, N>;  // by columns

    // Sum over all cells: four running sums, of every fourth term, where all four get one more;
    // then crosswise together, and what is left at the end.
    template <class Term>
    static double sum(Term term) {
        constexpr std::size_t quads = N / 4 * 4;
        constexpr std::size_t pairs = N / 2 * 2;
        double even = term(0);
        double odd = term(1);
        if constexpr (quads > 0) {
            double even2 = term(2);
            double odd2 = term(3);
            for (std::size_t i = 4; i < quads; i += 4) {
                even += term(i);
                odd += term(i + 1);
                even2 += term(i + 2);
                odd2 += term(i + 3);
            }
            even += even2;
            odd += odd2;
            if constexpr (pairs > quads) {
                even += term(quads);
                odd += term(quads + 1);
            }
        }
        return pairs < N ? even + odd + term(N - 1) : even + odd;
    }

    static double dot(const Column& a, const Column& b) {
        return sum([&](std::size_t i) { return a[i] * b[i]; });
    }

    // a += factor * b.
    static void add(Column& a, double factor, const Column& b) {
        for (std::size_t i = 0; i < rows; ++i) a[i] += factor * b[i];
    }

    // Sum over j of m(:, j) x[j], in order of j.
    static Column product(const Square& m, const Column& x) {
        Column sum{};
        for (std::size_t j = 0; j < N; ++j) add(sum, x[j], m[j]);
        return sum;
    }

    // Cholesky factor in the lower triangle; false where the matrix is not positive definite.
    static bool factor(Square& m) {
        for (std::size_t k = 0; k < N; ++k) {
            double pivot = m[k][k];
            if (k > 0) {
                double square = m[0][k] * m[0][k];
                for (std::size_t j = 1; j < k; ++j) square += m[j][k] * m[j][k];
                pivot -= square;
            }
            if (pivot <= 0.0) return false;
            pivot = std::sqrt(pivot);
            const std::size_t first = k / 2 * 2;
            Column before{};
            for (std::size_t j = 0; j < k; ++j)
                for (std::size_t i = first; i < rows; ++i) before[i] += m[j][i] * m[j][k];
            for (std::size_t i = first; i < rows; ++i) m[k][i] = (m[k][i] - before[i]) / pivot;
            m[k][k] = pivot;
        }
        return true;
    }

    // Solves with the factor and its transpose, by blocks of eight rows: what the rows outside of a
    // block contribute is summed first.
    static void solve(const Square& l, Column& x) {
        solveLower(l, x);
        solveUpper(l, x);
    }

  private:
    static constexpr std::size_t block = 8;

    static void solveLower(const Square& l, Column& x) {
        for (std::size_t begin = 0; begin < N; begin += block) {
            const std::size_t end = begin + block < N ? begin + block : N;
            for (std::size_t i = begin; i < end; ++i) {
                x[i] /= l[i][i];
                for (std::size_t k = i + 1; k < end; ++k) x[k] -= x[i] * l[i][k];
            }
            if (end == N) return;
            Column sum{};
            for (std::size_t j = begin; j < end; ++j)
                for (std::size_t i = end; i < rows; ++i) sum[i] += l[j][i] * x[j];
            for (std::size_t i = end; i < rows; ++i) x[i] -= sum[i];
        }
    }

    static void solveUpper(const Square& l, Column& x) {
        for (std::size_t end = N; end > 0;) {
            const std::size_t begin = end > block ? end - block : 0;
            if (end < N)
                for (std::size_t i = begin; i < end; ++i) x[i] -= pairedSum(l[i], x, end);
            for (std::size_t i = end; i-- > begin;) {
                if (i + 1 < end) x[i] -= rangeSum(l[i], x, i + 1, end);
                x[i] /= l[i][i];
            }
            end = begin;
        }
    }

    // Sum over i from `begin` of a[i] b[i]: every second term, then both together, then the last.
    static double pairedSum(const Column& a, const Column& b, std::size_t begin) {
        double even = 0.0;
        double odd = 0.0;
        std::size_t i = begin;
        for (; i + 1 < N; i += 2) {
            even += a[i] * b[i];
            odd += a[i + 1] * b[i + 1];
        }
        double sum = even + odd;
        if (i < N) sum += a[i] * b[i];
        return sum;
    }

    // The sum of `dot` over the terms from `begin` to `end`, at most seven.
    static double rangeSum(const Column& a, const Column& b, std::size_t begin, std::size_t end) {
        const auto term = [&](std::size_t i) { return a[begin + i] * b[begin + i]; };
        const std::size_t count = end - begin;
        if (count == 1) return term(0);
        double even = term(0);
        double odd = term(1);
        if (count >= 4) {
            even += term(2);
            odd += term(3);
            if (count >= 6) {
                even += term(4);
                odd += term(5);
            }
        }
        const double sum = even + odd;
        return count % 2 == 1 ? sum + term(count - 1) : sum;
    }
};

}  // namespace weldline
