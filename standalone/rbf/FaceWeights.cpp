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

#include <Eigen/Cholesky>
#include <Eigen/Core>
#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>

namespace weldline {

namespace {

constexpr double kFlatSpread = 1e-8;

using Coordinates = Eigen::Matrix<double, Eigen::Dynamic, 3, Eigen::ColMajor, kMaxStencil, 3>;
using Basis =
    Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::ColMajor, kMaxStencil, 4>;
using Square = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::ColMajor, kMaxStencil,
                             kMaxStencil>;
using Column = Eigen::Matrix<double, Eigen::Dynamic, 1, Eigen::ColMajor, kMaxStencil, 1>;
using Terms = Eigen::Matrix<double, Eigen::Dynamic, 1, Eigen::ColMajor, 4, 1>;

struct LinearTerms {
    Basis atCells;  // orthonormal columns, the constant first
    Terms atFace;
    int directions() const { return static_cast<int>(atCells.cols()) - 1; }
};

// Cell centres relative to the face centre, the farthest component at distance 1.
Coordinates localCoordinates(std::span<const Vec3> centres, Vec3 faceCentre) {
    const auto count = static_cast<Eigen::Index>(centres.size());
    Coordinates local(count, 3);
    for (Eigen::Index i = 0; i < count; ++i) {
        const Vec3 d = centres[static_cast<std::size_t>(i)] - faceCentre;
        local.row(i) << d.x, d.y, d.z;
    }
    const double size = local.cwiseAbs().maxCoeff();
    if (size > 0.0) local /= size;
    return local;
}

// Gram-Schmidt, the widest direction first, each column orthogonalised twice. The face centre is
// the origin of `local`; it undergoes the same operations as a further row.
LinearTerms linearTerms(Coordinates local, int largestDirections) {
    const Eigen::Index count = local.rows();
    LinearTerms terms{Basis(count, 4), Terms(4)};
    terms.atCells.col(0).setConstant(1.0 / std::sqrt(static_cast<double>(count)));
    terms.atFace[0] = terms.atCells(0, 0);
    Eigen::Vector3d face = Eigen::Vector3d::Zero();
    const auto orthogonalise = [&](Eigen::Index axis, Eigen::Index column) {
        const double share = terms.atCells.col(column).dot(local.col(axis));
        local.col(axis) -= share * terms.atCells.col(column);
        face[axis] -= share * terms.atFace[column];
    };
    for (Eigen::Index axis = 0; axis < 3; ++axis) orthogonalise(axis, 0);

    double widest = 0.0;
    Eigen::Index columns = 1;
    for (; columns <= largestDirections; ++columns) {
        Eigen::Index axis = 0;
        const double square = local.colwise().squaredNorm().maxCoeff(&axis);
        if (columns == 1) widest = std::sqrt(square);
        if (!(square > 0.0) || std::sqrt(square) <= kFlatSpread * widest) break;
        for (Eigen::Index k = 0; k < columns; ++k) orthogonalise(axis, k);
        const double spread = local.col(axis).norm();
        if (!(spread > kFlatSpread * widest)) break;
        terms.atCells.col(columns) = local.col(axis) / spread;
        terms.atFace[columns] = face[axis] / spread;
        local.col(axis).setZero();
        for (Eigen::Index other = 0; other < 3; ++other) orthogonalise(other, columns);
    }
    terms.atCells.conservativeResize(Eigen::NoChange, columns);
    terms.atFace.conservativeResize(columns);
    return terms;
}

double cube(double square) {
    return square * std::sqrt(square);
}

Square kernelMatrix(const Basis& q) {
    const Eigen::Index count = q.rows();
    const Eigen::Index directions = q.cols() - 1;
    Square phi(count, count);
    for (Eigen::Index j = 0; j < count; ++j) {
        phi(j, j) = 0.0;
        for (Eigen::Index i = j + 1; i < count; ++i) {
            double square = 0.0;
            for (Eigen::Index k = 1; k <= directions; ++k) {
                const double d = q(i, k) - q(j, k);
                square += d * d;
            }
            phi(i, j) = cube(square);
            phi(j, i) = phi(i, j);
        }
    }
    return phi;
}

// The complement part is left out where the factorisation fails (coinciding centres): what
// remains is the least-squares interpolation with linear terms.
Column solve(const LinearTerms& terms) {
    const Basis& q = terms.atCells;
    Column weights = q * terms.atFace;
    if (q.rows() == q.cols()) return weights;

    const Square phi = kernelMatrix(q);
    Column rest(q.rows());
    for (Eigen::Index i = 0; i < q.rows(); ++i)
        rest[i] = cube((q.row(i).transpose() - terms.atFace).squaredNorm());
    rest -= phi * weights;
    rest -= q * (q.transpose() * rest).eval();

    // P Phi P = Phi - G Q^T - Q G^T with G = Phi Q - Q (Q^T Phi Q) / 2.
    Basis g = phi.lazyProduct(q);
    g -= 0.5 * q.lazyProduct(q.transpose().lazyProduct(g).eval());
    Square matrix = phi;
    for (Eigen::Index j = 0; j < q.rows(); ++j)
        for (Eigen::Index k = 0; k < q.cols(); ++k)
            matrix.col(j) += (q(j, k) * q.col(k) - q(j, k) * g.col(k)) - g(j, k) * q.col(k);

    const Eigen::LLT<Eigen::Ref<Square>> factor(matrix);
    if (factor.info() != Eigen::Success) return weights;
    factor.solveInPlace(rest);
    weights += rest;
    // Rounding left a trace of the linear functions in `rest`: take it out.
    weights += q * (terms.atFace - q.transpose() * weights).eval();
    return weights;
}

// Rotates to the principal axes of the cell centres, the widest first.
Coordinates principalCoordinates(const Coordinates& local) {
    const Eigen::RowVector3d mean = local.colwise().mean();
    const Coordinates centred = local.rowwise() - mean;
    const Eigen::Matrix3d covariance = centred.transpose() * centred;
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> axes(covariance);
    return local * axes.eigenvectors().rowwise().reverse();
}

// Answers whether the weights are usable; NaN is not.
bool solveInto(const LinearTerms& terms, std::span<double> weights) {
    const Column solution = solve(terms);
    if (!(solution.cwiseAbs().sum() <= kLargestWeightSum)) return false;
    std::copy_n(solution.data(), solution.size(), weights.begin());
    return true;
}

}  // namespace

WeightKind faceWeights(std::span<const Vec3> centres, Vec3 faceCentre, double lambda,
                       std::span<double> weights) {
    if (centres.size() > 2) {
        const Coordinates local = localCoordinates(centres, faceCentre);
        const LinearTerms terms = linearTerms(local, 3);
        if (terms.directions() == 3 && solveInto(terms, weights)) return WeightKind::Spatial;

        // Principal axes make the projection orthogonal and the weakest direction well defined.
        const Coordinates principal = principalCoordinates(local);
        if (terms.directions() >= 2 && solveInto(linearTerms(principal, 2), weights))
            return WeightKind::Planar;
        if (terms.directions() >= 1 && solveInto(linearTerms(principal, 1), weights))
            return WeightKind::Axial;
    }
    std::fill(weights.begin(), weights.end(), 0.0);
    weights[0] = 1.0 - lambda;
    weights[1] = lambda;
    return WeightKind::TwoCell;
}

}  // namespace weldline
