#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "CKvrFaceRBFInternalObject.h"
#include "RbfMeshes.h"

namespace weldline::test {

namespace {

using Object = CKvrFaceRBFInternalObject;
using Field = std::function<double(Point)>;

void prepare(Object& object, TestHost& host, int code = 1) {
    EXPECT_EQ(object.getKvr3dGV(host.gv(), nullptr, nullptr, host.mesh()), 0);
    EXPECT_EQ(object.getPartitionFace(host.partition()), 0);
    EXPECT_EQ(object.Initialize_FaceInterpolateData(code), 0);
}

Point slotCentre(TestHost& host, int slot) {
    return {host.mesh()->m_pXc[slot], host.mesh()->m_pYc[slot], host.mesh()->m_pZc[slot]};
}

Point faceCentre(TestHost& host, int face) {
    const double* row = host.mesh()->m_ppInnerFace[face];
    return {row[6], row[7], row[8]};
}

double interpolate(const Object& object, TestHost& host, int face, const Field& field) {
    double value = 0.0;
    for (int j = 1; j <= object.m_ppFaceStencil[face][0]; ++j)
        value += object.m_ppFaceWeight[face][j] *
                 field(slotCentre(host, object.m_ppFaceStencil[face][j]));
    return value;
}

// Root mean square over the inner faces, against the field at the face centre.
double interpolationError(const Object& object, TestHost& host, const Field& field) {
    double sum = 0.0;
    const int faces = host.mesh()->m_nInnerFace;
    for (int f = 1; f <= faces; ++f) {
        const double e = interpolate(object, host, f, field) - field(faceCentre(host, f));
        sum += e * e;
    }
    return std::sqrt(sum / faces);
}

// Relative to the largest value that the field takes on the block.
void expectLinearExact(const Object& object, TestHost& host, const Field& field, double largest) {
    for (int f = 1; f <= host.mesh()->m_nInnerFace; ++f) {
        const double expected = field(faceCentre(host, f));
        ASSERT_NEAR(interpolate(object, host, f, field), expected, 1e-12 * largest)
            << "face " << f << ", " << object.m_ppFaceStencil[f][0] << " cells";
    }
}

double linear(Point p) {
    return 3.0 + 2.0 * p[0] - 5.0 * p[1] + 0.5 * p[2];
}

// Every row of the tables, face by face.
std::vector<double> tables(const Object& object, int faces) {
    std::vector<double> all;
    for (int f = 1; f <= faces; ++f) {
        const int n = object.m_ppFaceStencil[f][0];
        all.push_back(n);
        for (int j = 1; j <= n; ++j) {
            all.push_back(object.m_ppFaceStencil[f][j]);
            all.push_back(object.m_ppFaceWeight[f][j]);
        }
    }
    return all;
}

}  // namespace

TEST(RbfObject, weights_sum_to_one) {
    TestHost host;
    fillHost(host, tetrahedra(4, 4, 4, 0.1));
    Object object;
    prepare(object, host);
    for (int f = 1; f <= host.mesh()->m_nInnerFace; ++f)
        ASSERT_NEAR(interpolate(object, host, f, [](Point) { return 1.0; }), 1.0, 1e-14);
}

// Largest value of `linear` on the block of edge 5: 3 + 10 + 2.5, smallest 3 - 25.
TEST(RbfObject, reproduces_linear_fields_on_hexahedra) {
    TestHost host;
    fillHost(host, hexahedra(5, 5, 5, 0.25));
    Object object;
    prepare(object, host);
    expectLinearExact(object, host, linear, 22.0);
}

TEST(RbfObject, reproduces_linear_fields_on_tetrahedra) {
    TestHost host;
    fillHost(host, tetrahedra(5, 5, 5, 0.1));
    Object object;
    prepare(object, host);
    expectLinearExact(object, host, linear, 22.0);
}

// A block of 4 units of 1e-6 to 1e3 m, up to 1e3 units away from the origin: the position costs
// three digits of the coordinates, hence of the weights.
TEST(RbfObject, does_not_depend_on_unit_and_position) {
    TestHost unitHost;
    fillHost(unitHost, hexahedra(4, 4, 4, 0.2));
    Object unit;
    prepare(unit, unitHost);
    const int faces = unitHost.mesh()->m_nInnerFace;
    const std::vector<double> expected = tables(unit, faces);
    for (const double scale : {1e-6, 1e-3, 1e3}) {
        TestHost host;
        fillHost(host, hexahedra(4, 4, 4, 0.2), scale, {1e3 * scale, -500 * scale, 0});
        Object object;
        prepare(object, host);
        const std::vector<double> got = tables(object, faces);
        ASSERT_EQ(got.size(), expected.size());
        for (std::size_t i = 0; i < got.size(); ++i)
            ASSERT_NEAR(got[i], expected[i], 1e-10) << "scale " << scale;
    }
}

// One layer of cubes, moved in its plane only: linear fields of x and y.
TEST(RbfObject, single_layer_of_cells) {
    TestHost host;
    fillHost(host, hexahedra(6, 6, 1, 0.25));
    Object object;
    prepare(object, host);
    const auto planar = [](Point p) { return 3.0 + 2.0 * p[0] - 5.0 * p[1]; };
    expectLinearExact(object, host, planar, 27.0);
}

// [1][2] with the face at 0.3 between them.
TEST(RbfObject, two_cells_only) {
    TestHost host;
    host.addCell({0, 0, 0}, NaN, {});
    host.addCell({1, 0, 0}, NaN, {});
    host.addInner(1, 2, {1, 0, 0}, {0.3, 0, 0}, 0.3);
    host.finish();
    Object object;
    prepare(object, host);
    EXPECT_EQ(object.m_ppFaceStencil[1][0], 2);
    EXPECT_EQ(object.m_ppFaceStencil[1][1], 1);
    EXPECT_EQ(object.m_ppFaceStencil[1][2], 2);
    EXPECT_EQ(object.m_ppFaceWeight[1][1], 1.0 - 0.3);
    EXPECT_EQ(object.m_ppFaceWeight[1][2], 0.3);
}

// Coinciding centres leave lambda, and then no further cell stands in the row.
TEST(RbfObject, a_row_without_usable_stencil_holds_the_two_cells) {
    TestHost host;
    for (int c = 0; c < 3; ++c) host.addCell({1, 1, 1}, NaN, {});
    host.addInner(1, 2, {1, 0, 0}, {1, 1, 1}, 0.25);
    host.addInner(2, 3, {1, 0, 0}, {1, 1, 1}, 0.25);
    host.finish();
    Object object;
    prepare(object, host);
    for (int f = 1; f <= 2; ++f) {
        EXPECT_EQ(object.m_ppFaceStencil[f][0], 2);
        EXPECT_EQ(object.m_ppFaceWeight[f][1], 0.75);
        EXPECT_EQ(object.m_ppFaceWeight[f][2], 0.25);
    }
}

//  |1 [1][2] |      the halo cell at -1, the cells at 0 and 1, face at 1/2: natural spline of
//                   three points as seen from the other end, -3/32, 11/16, 13/32
TEST(RbfObject, halo_cells_take_part) {
    TestHost host;
    host.addCell({0, 0, 0}, NaN, {});
    host.addCell({1, 0, 0}, NaN, {});
    host.addInner(1, 2, {1, 0, 0}, {0.5, 0, 0});
    host.addInterface(1, {-1, 0, 0}, {-0.5, 0, 0}, 0.5, {-1, 0, 0}, NaN, {});
    host.finish();
    Object object;
    prepare(object, host);
    ASSERT_EQ(object.m_ppFaceStencil[1][0], 3);
    EXPECT_EQ(object.m_ppFaceStencil[1][3], host.haloSlot(1));
    EXPECT_NEAR(object.m_ppFaceWeight[1][1], 0.6875, 1e-14);
    EXPECT_NEAR(object.m_ppFaceWeight[1][2], 0.40625, 1e-14);
    EXPECT_NEAR(object.m_ppFaceWeight[1][3], -0.09375, 1e-14);
}

// In a 4 x 4 x 4 block one corner cell is empty: its mark reaches no face between filled cells.
TEST(RbfObject, empty_cells_do_not_pull_the_face_value) {
    TestHost host;
    fillHost(host, hexahedra(4, 4, 4, 0.1));
    host.setValue(64, 0.0F);
    Object object;
    prepare(object, host);
    for (int f = 1; f <= host.mesh()->m_nInnerFace; ++f) {
        const double* row = host.mesh()->m_ppInnerFace[f];
        if (row[1] == 64 || row[2] == 64) continue;
        for (int j = 1; j <= object.m_ppFaceStencil[f][0]; ++j)
            ASSERT_NE(object.m_ppFaceStencil[f][j], 64);
    }
}

TEST(RbfObject, other_codes_prepare_nothing) {
    TestHost host;
    fillHost(host, hexahedra(2, 2, 2, 0.0));
    for (const int code : {0, 2, 3, 5, 6, -1}) {
        Object object;
        prepare(object, host, code);
        EXPECT_EQ(object.m_ppFaceStencil, nullptr);
        EXPECT_EQ(object.m_ppFaceWeight, nullptr);
    }
}

TEST(RbfObject, a_missing_mesh_is_reported) {
    Object object;
    EXPECT_EQ(object.Initialize_FaceInterpolateData(1), 1);
    EXPECT_EQ(object.getKvr3dGV(nullptr, nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(object.Initialize_FaceInterpolateData(1), 1);
    EXPECT_EQ(object.m_ppFaceStencil, nullptr);
}

// The second preparation sees another mesh and other values.
TEST(RbfObject, is_prepared_anew_each_time) {
    TestHost first, second;
    fillHost(first, hexahedra(3, 3, 3, 0.1));
    fillHost(second, tetrahedra(3, 3, 3, 0.05));
    second.setValue(5, 0.0F);
    Object fresh;
    prepare(fresh, second);
    Object object;
    prepare(object, first);
    prepare(object, second);
    const int faces = second.mesh()->m_nInnerFace;
    EXPECT_EQ(tables(object, faces), tables(fresh, faces));
    prepare(object, second);
    EXPECT_EQ(tables(object, faces), tables(fresh, faces));
}

TEST(RbfObject, objects_in_two_threads_do_not_disturb_each_other) {
    TestHost hosts[2];
    fillHost(hosts[0], hexahedra(5, 5, 5, 0.2));
    fillHost(hosts[1], tetrahedra(3, 3, 3, 0.1));
    std::vector<double> alone[2], together[2];
    const auto work = [&](int i, std::vector<double>& result) {
        for (int round = 0; round < 5; ++round) {
            Object object;
            prepare(object, hosts[i]);
            result = tables(object, hosts[i].mesh()->m_nInnerFace);
        }
    };
    for (int i = 0; i < 2; ++i) work(i, alone[i]);
    std::thread other([&] { work(1, together[1]); });
    work(0, together[0]);
    other.join();
    EXPECT_EQ(together[0], alone[0]);
    EXPECT_EQ(together[1], alone[1]);
}

// The tables of one object outlive other objects, in whatever order these go.
TEST(RbfObject, objects_end_in_any_order) {
    TestHost host;
    fillHost(host, hexahedra(3, 3, 3, 0.1));
    std::vector<std::unique_ptr<Object>> objects;
    for (int i = 0; i < 5; ++i) {
        objects.push_back(std::make_unique<Object>());
        prepare(*objects.back(), host);
    }
    const int faces = host.mesh()->m_nInnerFace;
    const std::vector<double> expected = tables(*objects[2], faces);
    for (const int i : {1, 4, 0, 3}) {
        objects[i].reset();
        EXPECT_EQ(tables(*objects[2], faces), expected);
    }
}

// x^2 + 2 y z on blocks of edge 1 with 4, 8 and 16 cells: the error is of second order, a quarter
// from mesh to mesh.
TEST(RbfObject, error_of_quadratics_falls_with_the_square_of_the_cell_size) {
    const auto quadratic = [](Point p) { return p[0] * p[0] + 2.0 * p[1] * p[2]; };
    double coarser = 0.0;
    for (const int n : {4, 8, 16}) {
        TestHost host;
        fillHost(host, hexahedra(n, n, n, 0.15), 1.0 / n);
        Object object;
        prepare(object, host);
        const double error = interpolationError(object, host, quadratic);
        EXPECT_GT(error, 0.0);
        if (n > 4) {
            EXPECT_LT(error, 0.3 * coarser) << n;
        }
        coarser = error;
    }
}

}  // namespace weldline::test
