#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "rbf/FaceWeights.h"

namespace weldline::test {

namespace {

struct Solution {
    WeightKind kind;
    std::vector<double> weights;
};

Solution solve(const std::vector<Vec3>& centres, Vec3 face, double lambda = 0.5) {
    Solution solution{WeightKind::TwoCell, std::vector<double>(centres.size(), NAN)};
    solution.kind = faceWeights(centres, face, lambda, solution.weights);
    return solution;
}

// Interpolates a + b.x exactly where the weights reproduce linear functions.
void expectLinearExact(const std::vector<Vec3>& centres, Vec3 face, const Solution& solution) {
    double sum = 0.0;
    Vec3 point;
    for (std::size_t i = 0; i < centres.size(); ++i) {
        sum += solution.weights[i];
        point = point + solution.weights[i] * centres[i];
    }
    EXPECT_NEAR(sum, 1.0, 1e-14);
    EXPECT_NEAR(norm(point - face), 0.0, 1e-14);
}

// The cells around a face of a cube mesh, moved at random:
//
//            6  7
//        2  [0][1]  3      and 10, 11 in front, 8, 9 behind
//            4  5
std::vector<Vec3> cubeStencil(unsigned seed, double jitter) {
    std::mt19937 generator(seed);
    const auto u = [&] { return jitter * (generator() / 2147483648.0 - 1.0); };
    std::vector<Vec3> centres;
    for (const Vec3 p : {Vec3{-0.5, 0, 0}, Vec3{0.5, 0, 0}, Vec3{-1.5, 0, 0}, Vec3{1.5, 0, 0},
                         Vec3{-0.5, -1, 0}, Vec3{0.5, -1, 0}, Vec3{-0.5, 1, 0}, Vec3{0.5, 1, 0},
                         Vec3{-0.5, 0, -1}, Vec3{0.5, 0, -1}, Vec3{-0.5, 0, 1}, Vec3{0.5, 0, 1}})
        centres.push_back(p + Vec3{u(), u(), u()});
    return centres;
}

// Gaussian elimination with row exchange, in place; the solution stands in the last column.
void eliminate(std::vector<std::vector<double>>& a) {
    const std::size_t n = a.size();
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t pivot = k;
        for (std::size_t i = k + 1; i < n; ++i)
            if (std::abs(a[i][k]) > std::abs(a[pivot][k])) pivot = i;
        std::swap(a[k], a[pivot]);
        for (std::size_t i = 0; i < n; ++i) {
            if (i == k) continue;
            const double factor = a[i][k] / a[k][k];
            for (std::size_t j = k; j <= n; ++j) a[i][j] -= factor * a[k][j];
        }
    }
    for (std::size_t k = 0; k < n; ++k) a[k][n] /= a[k][k];
}

// The whole system in plain coordinates, distances with the inverse covariance matrix.
std::vector<double> naiveWeights(const std::vector<Vec3>& x, Vec3 face) {
    const std::size_t n = x.size();
    Vec3 mean;
    for (const Vec3& p : x) mean = mean + (1.0 / static_cast<double>(n)) * p;
    std::vector<std::vector<double>> covariance(3, std::vector<double>(4, 0.0));
    for (const Vec3& p : x) {
        const std::array<double, 3> d{p.x - mean.x, p.y - mean.y, p.z - mean.z};
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) covariance[i][j] += d[i] * d[j];
    }
    const auto cubedDistance = [&](Vec3 p, Vec3 q) {
        auto system = covariance;
        const std::array<double, 3> d{p.x - q.x, p.y - q.y, p.z - q.z};
        for (int i = 0; i < 3; ++i) system[i][3] = d[i];
        eliminate(system);
        double square = 0.0;
        for (int i = 0; i < 3; ++i) square += d[i] * system[i][3];
        return std::pow(square, 1.5);
    };
    std::vector<std::vector<double>> a(n + 4, std::vector<double>(n + 5, 0.0));
    const auto terms = [](Vec3 p) { return std::array<double, 4>{1.0, p.x, p.y, p.z}; };
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j) a[i][j] = cubedDistance(x[i], x[j]);
        for (std::size_t k = 0; k < 4; ++k) a[i][n + k] = a[n + k][i] = terms(x[i])[k];
        a[i][n + 4] = cubedDistance(x[i], face);
    }
    for (std::size_t k = 0; k < 4; ++k) a[n + k][n + 4] = terms(face)[k];
    eliminate(a);
    std::vector<double> weights;
    for (std::size_t i = 0; i < n; ++i) weights.push_back(a[i][n + 4]);
    return weights;
}

}  // namespace

TEST(RbfWeights, two_cells_interpolate_with_lambda) {
    const Solution s = solve({{0, 0, 0}, {1, 0, 0}}, {0.3, 5, 0}, 0.375);
    EXPECT_EQ(s.kind, WeightKind::TwoCell);
    EXPECT_EQ(s.weights, (std::vector<double>{0.625, 0.375}));
}

// Centres at 0, 1, 2 on a line, face at 1/2: r^3 with linear terms is the natural cubic spline.
// M1 = 3/2 (f0 - 2 f1 + f2), s(1/2) = (f0 + f1)/2 - M1/16
//    = f0 (1/2 - 3/32) + f1 (1/2 + 3/16) - f2 3/32.
TEST(RbfWeights, three_collinear_cells_give_the_natural_spline) {
    const Vec3 direction{2.0, -1.0, 0.5};
    const Solution s = solve({{0, 0, 0}, direction, 2.0 * direction}, 0.5 * direction);
    EXPECT_EQ(s.kind, WeightKind::Axial);
    EXPECT_NEAR(s.weights[0], 0.40625, 1e-14);
    EXPECT_NEAR(s.weights[1], 0.6875, 1e-14);
    EXPECT_NEAR(s.weights[2], -0.09375, 1e-14);
}

// Four centres that span space leave no freedom beyond linear fields: barycentric coordinates.
TEST(RbfWeights, four_cells_give_barycentric_coordinates) {
    const std::vector<Vec3> corners{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const Solution s = solve(corners, {0.5, 0.25, 0.125});
    EXPECT_EQ(s.kind, WeightKind::Spatial);
    EXPECT_NEAR(s.weights[0], 0.125, 1e-15);
    EXPECT_NEAR(s.weights[1], 0.5, 1e-15);
    EXPECT_NEAR(s.weights[2], 0.25, 1e-15);
    EXPECT_NEAR(s.weights[3], 0.125, 1e-15);
}

TEST(RbfWeights, solve_the_whole_interpolation_system) {
    const Vec3 face{0.05, -0.02, 0.03};
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const std::vector<Vec3> centres = cubeStencil(seed, 0.2);
        const std::vector<double> expected = naiveWeights(centres, face);
        const Solution s = solve(centres, face);
        EXPECT_EQ(s.kind, WeightKind::Spatial);
        for (std::size_t i = 0; i < centres.size(); ++i)
            EXPECT_NEAR(s.weights[i], expected[i], 1e-11) << "seed " << seed << " cell " << i;
    }
}

TEST(RbfWeights, reproduce_linear_fields) {
    for (unsigned seed = 1; seed <= 50; ++seed) {
        const std::vector<Vec3> centres = cubeStencil(seed, 0.3);
        expectLinearExact(centres, {0, 0, 0}, solve(centres, {0, 0, 0}));
    }
}

// A mirror-symmetric stencil has mirror-symmetric weights.
TEST(RbfWeights, are_symmetric_on_cubes) {
    const Solution s = solve(cubeStencil(1, 0.0), {0, 0, 0});
    EXPECT_NEAR(s.weights[0], s.weights[1], 1e-15);
    EXPECT_NEAR(s.weights[2], s.weights[3], 1e-15);
    for (std::size_t i = 5; i < 12; ++i) EXPECT_NEAR(s.weights[i], s.weights[4], 1e-15);
}

TEST(RbfWeights, do_not_change_by_a_bit_with_a_power_of_two) {
    std::vector<Vec3> centres = cubeStencil(7, 0.2);
    const Vec3 face{0.1, 0.05, -0.02};
    const Solution unit = solve(centres, face);
    for (Vec3& p : centres) p = 0x1p-20 * p;
    EXPECT_EQ(solve(centres, 0x1p-20 * face).weights, unit.weights);
}

TEST(RbfWeights, do_not_depend_on_the_unit_of_length) {
    const std::vector<Vec3> centres = cubeStencil(7, 0.2);
    const Vec3 face{0.1, 0.05, -0.02};
    const Solution unit = solve(centres, face);
    for (const double scale : {1e-6, 1e-3, 1e3}) {
        std::vector<Vec3> scaled;
        for (const Vec3& p : centres) scaled.push_back(scale * p);
        const Solution s = solve(scaled, scale * face);
        EXPECT_EQ(s.kind, WeightKind::Spatial);
        for (std::size_t i = 0; i < centres.size(); ++i)
            EXPECT_NEAR(s.weights[i], unit.weights[i], 1e-12) << "scale " << scale;
    }
}

// Cells a thousandth as thick as wide interpolate as cubes do.
TEST(RbfWeights, do_not_depend_on_a_stretching) {
    const std::vector<Vec3> centres = cubeStencil(3, 0.2);
    const Solution cubes = solve(centres, {0, 0, 0});
    std::vector<Vec3> thin;
    for (const Vec3& p : centres) thin.push_back({p.x, p.y, 1e-3 * p.z});
    const Solution s = solve(thin, {0, 0, 0});
    EXPECT_EQ(s.kind, WeightKind::Spatial);
    for (std::size_t i = 0; i < centres.size(); ++i)
        EXPECT_NEAR(s.weights[i], cubes.weights[i], 1e-11);
}

// One layer of cells in a tilted plane, the face centre off the plane: the value is that at the
// foot of the perpendicular.
//
//     3  4
//  2 [0][1] 5      in the plane of e1 = (1, 0, 1)/sqrt 2 and e2 = (0, 1, 0)
//     6  7
TEST(RbfWeights, coplanar_cells_project_the_face_centre) {
    const double r = std::sqrt(0.5);
    const Vec3 e1{r, 0, r}, e2{0, 1, 0}, normal{r, 0, -r};
    std::vector<Vec3> centres;
    for (const auto& [x, y] : {std::pair{-0.5, 0.0},
                               {0.5, 0.0},
                               {-1.5, 0.1},
                               {-0.5, 1.0},
                               {0.6, 1.1},
                               {1.4, 0.0},
                               {-0.5, -0.9},
                               {0.5, -1.0}})
        centres.push_back(x * e1 + y * e2);
    const Vec3 foot = 0.1 * e1 + 0.05 * e2;
    const Solution on = solve(centres, foot);
    EXPECT_EQ(on.kind, WeightKind::Planar);
    expectLinearExact(centres, foot, on);
    const Solution off = solve(centres, foot + 0.3 * normal);
    EXPECT_EQ(off.kind, WeightKind::Planar);
    for (std::size_t i = 0; i < centres.size(); ++i)
        EXPECT_NEAR(off.weights[i], on.weights[i], 1e-12);
}

// A layer of thickness 1e-3 with the face centre at height 1: linear terms across the layer would
// multiply the values by a thousand.
TEST(RbfWeights, give_up_a_direction_that_would_extrapolate) {
    const double t = 1e-3;
    const std::vector<Vec3> centres{{-0.5, 0, t}, {0.5, 0, -t}, {-1.5, 0, 0},  {1.5, 0, t},
                                    {-0.5, 1, 0}, {0.5, 1, t},  {-0.5, -1, 0}, {0.5, -1, -t}};
    const Solution s = solve(centres, {0, 0, 1});
    EXPECT_EQ(s.kind, WeightKind::Planar);
    double size = 0.0;
    for (const double w : s.weights) size += std::abs(w);
    EXPECT_LE(size, kLargestWeightSum);
}

TEST(RbfWeights, survive_coinciding_centres) {
    const std::vector<Vec3> centres{{-1, 0, 0}, {1, 0, 0},  {0, 1, 0},
                                    {0, 1, 0},  {0, -1, 1}, {0, -1, -1}};
    const Solution s = solve(centres, {0, 0, 0});
    EXPECT_EQ(s.kind, WeightKind::Spatial);
    expectLinearExact(centres, {0, 0, 0}, s);
}

TEST(RbfWeights, fall_back_to_lambda_where_all_centres_coincide) {
    const Solution s = solve({{1, 2, 3}, {1, 2, 3}, {1, 2, 3}}, {1, 2, 3}, 0.25);
    EXPECT_EQ(s.kind, WeightKind::TwoCell);
    EXPECT_EQ(s.weights, (std::vector<double>{0.75, 0.25, 0.0}));
}

}  // namespace weldline::test
