#include <gtest/gtest.h>

#include <vector>

#include "BoxMesh.h"

// The boxes that the tests of the library stand on.

namespace weldline::test {

namespace {

class BoxMesh : public ::testing::Test {
  protected:
    BoxMesh() {
        addBox(m_host, 3, 2, 2, 0.5,
               [](Point normal, Point) { return normal[0] < 0.0 ? Group::Inlet : Group::Wall; });
        m_host.finish();
    }

    TestHost m_host;
    const CKVR3DFiniteVolumeMesh& m_mesh = *m_host.mesh();
};

}  // namespace

TEST_F(BoxMesh, counts_of_3_by_2_by_2_cells) {
    EXPECT_EQ(m_mesh.m_nCV, 12);
    EXPECT_EQ(m_mesh.m_nNode, 4 * 3 * 3);
    EXPECT_EQ(m_mesh.m_nInnerFace, 2 * 4 + 6 + 6);
    EXPECT_EQ(m_mesh.m_nInletFace, 4);
    EXPECT_EQ(m_mesh.m_nWallFace, 4 + 12 + 12);
    EXPECT_EQ(m_mesh.m_nCV_Total, 12 + 32);
}

TEST_F(BoxMesh, every_cell_is_closed) {
    std::vector<Point> sum(13, Point{});
    const auto add = [&](int cell, double sign, double x, double y, double z) {
        sum[cell] = {sum[cell][0] + sign * x, sum[cell][1] + sign * y, sum[cell][2] + sign * z};
    };
    for (int f = 1; f <= m_mesh.m_nInnerFace; ++f) {
        const double* row = m_mesh.m_ppInnerFace[f];
        add(static_cast<int>(row[1]), 1.0, row[3], row[4], row[5]);
        add(static_cast<int>(row[2]), -1.0, row[3], row[4], row[5]);
    }
    for (int f = 1; f <= m_mesh.m_nWallFace; ++f)
        add(m_mesh.m_pWallFaceCV[f], 1.0, m_mesh.m_pWallFaceSx[f], m_mesh.m_pWallFaceSy[f],
            m_mesh.m_pWallFaceSz[f]);
    for (int f = 1; f <= m_mesh.m_nInletFace; ++f)
        add(m_mesh.m_pInletFaceCV[f], 1.0, m_mesh.m_pInletFaceSx[f], m_mesh.m_pInletFaceSy[f],
            m_mesh.m_pInletFaceSz[f]);
    for (int c = 1; c <= 12; ++c) EXPECT_EQ(sum[c], (Point{0.0, 0.0, 0.0})) << "cell " << c;
}

TEST_F(BoxMesh, inner_faces_lie_midway_and_point_to_the_higher_cell) {
    for (int f = 1; f <= m_mesh.m_nInnerFace; ++f) {
        const double* row = m_mesh.m_ppInnerFace[f];
        const int a = static_cast<int>(row[1]);
        const int b = static_cast<int>(row[2]);
        EXPECT_EQ(row[6], 0.5 * (m_mesh.m_pXc[a] + m_mesh.m_pXc[b]));
        EXPECT_EQ(row[7], 0.5 * (m_mesh.m_pYc[a] + m_mesh.m_pYc[b]));
        EXPECT_EQ(row[8], 0.5 * (m_mesh.m_pZc[a] + m_mesh.m_pZc[b]));
        EXPECT_EQ(row[3], 0.5 * (m_mesh.m_pXc[b] - m_mesh.m_pXc[a]));
        EXPECT_EQ(row[4], 0.5 * (m_mesh.m_pYc[b] - m_mesh.m_pYc[a]));
        EXPECT_EQ(row[5], 0.5 * (m_mesh.m_pZc[b] - m_mesh.m_pZc[a]));
        EXPECT_EQ(m_mesh.m_pInnerFaceLambda[f], 0.5);
    }
}

TEST_F(BoxMesh, cells_lie_in_the_middle_of_their_nodes) {
    for (int c = 1; c <= 12; ++c) {
        Point sum{};
        for (int k = 1; k <= m_mesh.m_ppCellNode[c][0]; ++k) {
            const int n = m_mesh.m_ppCellNode[c][k];
            sum = {sum[0] + m_mesh.m_pNodeX[n], sum[1] + m_mesh.m_pNodeY[n],
                   sum[2] + m_mesh.m_pNodeZ[n]};
        }
        EXPECT_EQ(sum,
                  (Point{8.0 * m_mesh.m_pXc[c], 8.0 * m_mesh.m_pYc[c], 8.0 * m_mesh.m_pZc[c]}));
        EXPECT_EQ(m_mesh.m_pVolume[c], 0.125);
    }
    EXPECT_EQ(boxCell(3, 2, 2, 1, 1), 12);
    EXPECT_EQ(boxNode(3, 2, 3, 2, 2), 36);
    EXPECT_EQ(m_mesh.m_pXc[boxCell(3, 2, 2, 1, 0)], 1.25);
    EXPECT_EQ(m_mesh.m_pNodeY[boxNode(3, 2, 0, 2, 1)], 1.0);
}

TEST_F(BoxMesh, field_reaches_boundary_slots_through_their_cell) {
    setField(m_host, [](Point x) { return x[0]; });
    const float* value = m_host.gv()->m_pFlowVariable;
    EXPECT_EQ(value[boxCell(3, 2, 1, 0, 0)], 0.75F);
    EXPECT_EQ(value[m_host.boundarySlot(Group::Inlet, 1)], 0.25F);
    for (int f = 1; f <= m_mesh.m_nWallFace; ++f)
        EXPECT_EQ(value[m_mesh.m_pWallFaceBnd[f]], value[m_mesh.m_pWallFaceCV[f]]);
}

}  // namespace weldline::test
