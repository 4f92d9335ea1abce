// Weights w of sum_j w_j u(x_j) = value at x_f, interpolation with r^3 and linear terms:
//
//     | Phi  Q | | w |   | phi |      Phi_ij = |y_i - y_j|^3,  phi_i = |y_i - y_f|^3
//     | Q^T  0 | | v | = |  q  |
//
// The columns of Q are an orthonormal basis, over the stencil, of the linear functions; q are the
// same functions at the face centre. The columns after the constant one are at the same time the
// coordinates y in which the centres have covariance 1 (up to a rotation, which r does not see).
//
// Null-space solution: w = Q q + n with Q^T n = 0 and P Phi (Q q + n) = P phi, P = 1 - Q Q^T. Phi
// is positive definite on the range of P, hence P Phi P + Q Q^T is positive definite and shares n.

#include "FaceWeights.h"

#include <Eigen/Core>
#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>
#include <utility>

#include "StencilSolver.h"

namespace weldline {

namespace {

constexpr double kFlatSpread = 1e-8;

// Centres relative to the face centre, the farthest component at distance 1; by axis.
template <std::size_t N>
using Local = std::array<typename Stencil<N>::Column, 3>;

template <std::size_t N>
struct LinearTerms {
    std::array<typename Stencil<N>::Column, 4> atCells;  // orthonormal columns, the constant first
    std::array<double, 4> atFace;
    std::size_t columns = 1;
    std::size_t directions() const { return columns - 1; }
};

template <std::size_t N>
Local<N> localCoordinates(std::span<const Vec3> centres, Vec3 faceCentre) {
    Local<N> local{};
    double size = 0.0;
    for (std::size_t i = 0; i < N; ++i) {
        const Vec3 d = centres[i] - faceCentre;
        local[0][i] = d.x;
        local[1][i] = d.y;
        local[2][i] = d.z;
        size = std::max({size, std::abs(d.x), std::abs(d.y), std::abs(d.z)});
    }
    if (size > 0.0)
        for (auto& axis : local)
            for (double& x : axis) x /= size;
    return local;
}

// Gram-Schmidt, the widest direction first, each column orthogonalised twice. The face centre is
// the origin of `local`; it undergoes the same operations as a further row.
template <std::size_t N>
LinearTerms<N> linearTerms(Local<N> local, std::size_t largestDirections) {
    using Cells = Stencil<N>;
    LinearTerms<N> terms;
    terms.atCells[0] = {};
    std::fill_n(terms.atCells[0].begin(), N, 1.0 / std::sqrt(static_cast<double>(N)));
    terms.atFace[0] = terms.atCells[0][0];
    std::array<double, 3> face{};
    std::array<bool, 3> taken{};
    const auto orthogonalise = [&](std::size_t axis, std::size_t column) {
        const double share = Cells::dot(terms.atCells[column], local[axis]);
        Cells::add(local[axis], -share, terms.atCells[column]);
        face[axis] -= share * terms.atFace[column];
    };
    for (std::size_t axis = 0; axis < 3; ++axis) orthogonalise(axis, 0);

    double widest = 0.0;
    for (; terms.columns <= largestDirections; ++terms.columns) {
        std::size_t axis = 0;
        double square = 0.0;
        for (std::size_t other = 0; other < 3; ++other) {
            const double its = taken[other] ? 0.0 : Cells::dot(local[other], local[other]);
            if (its > square) std::tie(square, axis) = std::pair(its, other);
        }
        if (terms.columns == 1) widest = std::sqrt(square);
        if (!(square > 0.0) || std::sqrt(square) <= kFlatSpread * widest) break;
        for (std::size_t k = 0; k < terms.columns; ++k) orthogonalise(axis, k);
        const double spread = std::sqrt(Cells::dot(local[axis], local[axis]));
        if (!(spread > kFlatSpread * widest)) break;
        for (std::size_t i = 0; i < Cells::rows; ++i)
            terms.atCells[terms.columns][i] = local[axis][i] / spread;
        terms.atFace[terms.columns] = face[axis] / spread;
        taken[axis] = true;
        for (std::size_t other = 0; other < 3; ++other)
            if (!taken[other]) orthogonalise(other, terms.columns);
    }
    return terms;
}

// r^3 between each of the cells and one point, of which the terms are `at`. The constant term has
// no part in the distance.
template <std::size_t N>
typename Stencil<N>::Column kernel(const LinearTerms<N>& terms, const std::array<double, 4>& at) {
    typename Stencil<N>::Column square{};
    for (std::size_t k = 1; k < terms.columns; ++k)
        for (std::size_t i = 0; i < Stencil<N>::rows; ++i) {
            const double d = terms.atCells[k][i] - at[k];
            square[i] += d * d;
        }
    for (double& s : square) s = s * std::sqrt(s);
    return square;
}

template <std::size_t N>
typename Stencil<N>::Square kernelMatrix(const LinearTerms<N>& terms) {
    typename Stencil<N>::Square phi;
    for (std::size_t j = 0; j < N; ++j) {
        std::array<double, 4> at{};
        for (std::size_t k = 1; k < terms.columns; ++k) at[k] = terms.atCells[k][j];
        phi[j] = kernel<N>(terms, at);
    }
    return phi;
}

// P Phi P + Q Q^T with P Phi P = Phi - G Q^T - Q G^T and G = Phi Q - Q (Q^T Phi Q) / 2.
template <std::size_t N>
typename Stencil<N>::Square projected(const LinearTerms<N>& terms,
                                      const typename Stencil<N>::Square& phi) {
    using Cells = Stencil<N>;
    const auto& q = terms.atCells;
    std::array<typename Cells::Column, 4> g;
    for (std::size_t l = 0; l < terms.columns; ++l) {
        const typename Cells::Column whole = Cells::product(phi, q[l]);
        typename Cells::Column inside{};
        for (std::size_t k = 0; k < terms.columns; ++k)
            Cells::add(inside, Cells::dot(q[k], whole), q[k]);
        for (std::size_t i = 0; i < Cells::rows; ++i) g[l][i] = whole[i] - 0.5 * inside[i];
    }
    typename Cells::Square matrix = phi;
    for (std::size_t j = 0; j < N; ++j)
        for (std::size_t k = 0; k < terms.columns; ++k)
            for (std::size_t i = j / 2 * 2; i < Cells::rows; ++i)
                matrix[j][i] += (q[k][j] * q[k][i] - q[k][j] * g[k][i]) - g[k][j] * q[k][i];
    return matrix;
}

// The complement part is left out where the factorisation fails (coinciding centres): what
// remains is the least-squares interpolation with linear terms.
template <std::size_t N>
typename Stencil<N>::Column solve(const LinearTerms<N>& terms) {
    using Cells = Stencil<N>;
    using Column = typename Cells::Column;
    // Sum over the terms of q_k t_k.
    const auto combined = [&](const std::array<double, 4>& t) {
        Column sum{};
        for (std::size_t k = 0; k < terms.columns; ++k) Cells::add(sum, t[k], terms.atCells[k]);
        return sum;
    };
    Column weights = combined(terms.atFace);
    if (N == terms.columns) return weights;

    const typename Cells::Square phi = kernelMatrix<N>(terms);
    Column rest = kernel<N>(terms, terms.atFace);
    Cells::add(rest, -1.0, Cells::product(phi, weights));
    std::array<double, 4> share{};
    for (std::size_t k = 0; k < terms.columns; ++k) share[k] = Cells::dot(terms.atCells[k], rest);
    Cells::add(rest, -1.0, combined(share));

    typename Cells::Square matrix = projected<N>(terms, phi);
    if (!Cells::factor(matrix)) return weights;
    Cells::solve(matrix, rest);
    Cells::add(weights, 1.0, rest);
    // Rounding left a trace of the linear functions in `rest`: take it out.
    for (std::size_t k = 0; k < terms.columns; ++k)
        share[k] = terms.atFace[k] - Cells::dot(terms.atCells[k], weights);
    Cells::add(weights, 1.0, combined(share));
    return weights;
}

// Rotates to the principal axes of the cell centres, the widest first.
template <std::size_t N>
Local<N> principalCoordinates(const Local<N>& from) {
    using Coordinates = Eigen::Matrix<double, Eigen::Dynamic, 3, Eigen::ColMajor, kMaxStencil, 3>;
    Coordinates local(N, 3);
    for (Eigen::Index axis = 0; axis < 3; ++axis)
        std::copy_n(from[static_cast<std::size_t>(axis)].begin(), N, local.col(axis).data());
    const Eigen::RowVector3d mean = local.colwise().mean();
    const Coordinates centred = local.rowwise() - mean;
    const Eigen::Matrix3d covariance = centred.transpose() * centred;
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> axes(covariance);
    const Coordinates turned = local * axes.eigenvectors().rowwise().reverse();
    Local<N> to{};
    for (Eigen::Index axis = 0; axis < 3; ++axis)
        std::copy_n(turned.col(axis).data(), N, to[static_cast<std::size_t>(axis)].begin());
    return to;
}

// Answers whether the weights are usable; NaN is not.
template <std::size_t N>
bool solveInto(const LinearTerms<N>& terms, double* weights) {
    const auto solution = solve<N>(terms);
    const double sum = Stencil<N>::sum([&](std::size_t i) { return std::abs(solution[i]); });
    if (!(sum <= kLargestWeightSum)) return false;
    std::copy_n(solution.begin(), N, weights);
    return true;
}

template <std::size_t N>
WeightKind weightsOf(std::span<const Vec3> centres, Vec3 faceCentre, double* weights) {
    const Local<N> local = localCoordinates<N>(centres, faceCentre);
    const LinearTerms<N> terms = linearTerms<N>(local, 3);
    if (terms.directions() == 3 && solveInto<N>(terms, weights)) return WeightKind::Spatial;

    // Principal axes make the projection orthogonal and the weakest direction well defined.
    const Local<N> principal = principalCoordinates<N>(local);
    if (terms.directions() >= 2 && solveInto<N>(linearTerms<N>(principal, 2), weights))
        return WeightKind::Planar;
    if (terms.directions() >= 1 && solveInto<N>(linearTerms<N>(principal, 1), weights))
        return WeightKind::Axial;
    return WeightKind::TwoCell;
}

// By the number of cells, from 3.
template <std::size_t... I>
constexpr auto solversFrom3(std::index_sequence<I...>) {
    return std::array{&weightsOf<I + 3>...};
}
constexpr auto kSolvers = solversFrom3(std::make_index_sequence<kMaxStencil - 2>());

}  // namespace

WeightKind faceWeights(std::span<const Vec3> centres, Vec3 faceCentre, double lambda,
                       std::span<double> weights) {
    if (centres.size() > 2) {
        const WeightKind kind = kSolvers[centres.size() - 3](centres, faceCentre, weights.data());
        if (kind != WeightKind::TwoCell) return kind;
    }
    std::fill(weights.begin(), weights.end(), 0.0);
    weights[0] = 1.0 - lambda;
    weights[1] = lambda;
    return WeightKind::TwoCell;
}

}  // namespace weldline
