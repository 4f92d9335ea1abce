#include "FaceKinds.h"
#include "NumericsTest.h"
#include "RestlessPartition.h"

namespace weldline::test {

namespace {

class Connectivity : public NumericsTest {
  protected:
    // The first `width` entries of a row.
    static std::vector<int> row(const int* entries, int width) {
        return {entries, entries + width};
    }

    void addNodes(int count) {
        for (int n = 0; n < count; ++n) host.addNode({1.0 * n, 0, 0});
    }

    // Cells without nodes.
    void addCells(int count) {
        for (int c = 0; c < count; ++c) host.addCell({1.0 * c, 0, 0}, 1.0, {});
    }

    void addInner(int first, int second) { host.addInner(first, second, {1, 0, 0}, {}); }

    using Row = std::vector<int>;
};

// Cells (3 1 2), (4 3), (3 5); node 6 belongs to a halo cell only. Node 3 has three cells: rows of
// four entries.
TEST_F(Connectivity, node_rows_list_own_cells_in_ascending_order) {
    addNodes(6);
    host.addCell({0, 0, 0}, 1.0, {3, 1, 2});
    host.addCell({1, 0, 0}, 1.0, {4, 3});
    host.addCell({2, 0, 0}, 1.0, {3, 5});
    host.addInterface(3, {1, 0, 0}, {}, 0.5, {3, 0, 0}, 1.0, {5, 6});
    bind();
    calc.getInnerCell03Conn();
    const std::vector<Row> expected{{0, 0, 0, 0}, {1, 1, 0, 0}, {1, 1, 0, 0}, {3, 1, 2, 3},
                                    {1, 2, 0, 0}, {1, 3, 0, 0}, {0, 0, 0, 0}};
    for (std::size_t n = 0; n < expected.size(); ++n)
        EXPECT_EQ(row(calc.m_ppNodeCell[n], 4), expected[n]) << "node " << n;
}

// Cell 2 lists node 1 twice and node 1 is listed by cell 1 too: three entries.
TEST_F(Connectivity, keeps_repeated_nodes) {
    addNodes(2);
    host.addCell({0, 0, 0}, 1.0, {1, 2});
    host.addCell({1, 0, 0}, 1.0, {1, 2, 1});
    bind();
    calc.getInnerCell03Conn();
    EXPECT_EQ(row(calc.m_ppNodeCell[1], 4), (Row{3, 1, 2, 2}));
    EXPECT_EQ(row(calc.m_ppNodeCell[2], 4), (Row{2, 1, 2, 0}));
}

// Each own cell has one face, so rows have room for one, and slot 3 is named by two: the second one
// is left out instead of being written into the row of slot 4, which lies behind.
TEST_F(Connectivity, face_rows_of_slots_end_at_the_capacity) {
    addCells(2);
    addInner(1, 2);
    addInner(2, 1);
    for (int i = 0; i < 2; ++i) host.addBoundary(Group::Outlet, 1, {1, 0, 0}, {});
    bind();
    host.mesh()->m_ppInnerFace[1][2] = 3.0;
    host.mesh()->m_ppInnerFace[2][2] = 3.0;
    calc.getCell32Conn();
    EXPECT_EQ(row(calc.m_ppCellInnerFace[1], 2), (Row{1, 1}));
    EXPECT_EQ(row(calc.m_ppCellInnerFace[2], 2), (Row{1, 2}));
    EXPECT_EQ(row(calc.m_ppCellInnerFace[3], 2), (Row{1, 1}));
    EXPECT_EQ(row(calc.m_ppCellInnerFace[4], 2), (Row{0, 0}));
}

// Faces 1: [2][1], 2: [1][3], 3: [2][1] again. Cell 1 has three inner faces and, for the capacity
// only, one interface, one inlet, one symmetry and one wall face: rows of 8 entries for all slots.
TEST_F(Connectivity, face_rows_list_inner_faces_in_ascending_order) {
    addNodes(1);
    addCells(3);
    addInner(2, 1);
    addInner(1, 3);
    addInner(2, 1);
    for (const Kind kind : {Kind::Wall, Kind::Symm, Kind::Inlet, Kind::Interface})
        placeFace(host, kind, 1, {1, 0, 0}, {});
    bind();
    calc.getCell32Conn();
    EXPECT_EQ(calc.m_nMaxCellFace, 7);
    EXPECT_EQ(calc.m_nMinCellFace, 1);
    const std::vector<Row> expected{{0, 0, 0, 0, 0, 0, 0, 0},
                                    {3, 1, 2, 3, 0, 0, 0, 0},
                                    {2, 1, 3, 0, 0, 0, 0, 0},
                                    {1, 2, 0, 0, 0, 0, 0, 0}};
    for (int c = 0; c <= host.slots(); ++c)
        EXPECT_EQ(row(calc.m_ppCellInnerFace[c], 8), expected[c <= 3 ? c : 0]) << "slot " << c;
}

// One face between the cells and two more of one kind on cell 1.
TEST_F(Connectivity, every_kind_but_outlet_faces_counts_for_the_capacity) {
    for (const Kind kind : allKinds) {
        SCOPED_TRACE(nameOf(kind));
        TestHost own;
        for (int c = 0; c < 2; ++c) own.addCell({1.0 * c, 0, 0}, 1.0, {1});
        own.addNode({});
        own.addInner(1, 2, {1, 0, 0}, {});
        for (int extra = 0; extra < 2; ++extra) placeFace(own, kind, 1, {1, 0, 0}, {});
        for (int extra = 0; extra < 5; ++extra) own.addBoundary(Group::Outlet, 2, {1, 0, 0}, {});
        own.finish();
        CKVR3DWeldLine other;
        other.setPartitionInterface(own.partition());
        other.setKVRCom(own.communication(), own.collective());
        other.setFlowData(own.gv(), own.mesh());
        other.getCell32Conn();
        EXPECT_EQ(other.m_nMaxCellFace, 3);
        EXPECT_EQ(other.m_nMinCellFace, 1);
    }
}

// o [1]   [2] -- [3]
TEST_F(Connectivity, keeps_a_cell_of_outlet_faces_at_no_face) {
    addNodes(1);
    addCells(3);
    addInner(2, 3);
    host.addBoundary(Group::Outlet, 1, {1, 0, 0}, {});
    bind();
    calc.getCell32Conn();
    EXPECT_EQ(calc.m_nMinCellFace, 0);
    EXPECT_EQ(calc.m_nMaxCellFace, 1);
    EXPECT_EQ(row(calc.m_ppCellInnerFace[1], 2), (Row{0, 0}));
}

TEST_F(Connectivity, cell_numbers_of_faces_are_truncated) {
    addNodes(1);
    addCells(13);
    addInner(1, 2);
    host.setInnerCells(1, 12.9, 3.9999999);
    bind();
    calc.getCell32Conn();
    for (int c = 1; c <= 13; ++c)
        EXPECT_EQ(row(calc.m_ppCellInnerFace[c], 2), c == 12 || c == 3 ? (Row{1, 1}) : (Row{0, 0}))
            << "cell " << c;
    EXPECT_EQ(calc.m_nMaxCellFace, 1);
    EXPECT_EQ(calc.m_nMinCellFace, 0);
}

// After the first call the face moves from cells 1, 2 to cells 2, 3, a wall face is forgotten and
// cell 1 changes its node: only the two counts follow.
TEST_F(Connectivity, keeps_the_first_tables) {
    addNodes(2);
    host.addCell({0, 0, 0}, 1.0, {1});
    host.addCell({1, 0, 0}, 1.0, {1});
    host.addCell({2, 0, 0}, 1.0, {1});
    addInner(1, 2);
    host.addBoundary(Group::Wall, 1, {1, 0, 0}, {});
    host.addBoundary(Group::Wall, 3, {1, 0, 0}, {});
    bind();
    calc.getMeshTopologyConn();
    EXPECT_EQ(calc.m_nMaxCellFace, 2);
    EXPECT_EQ(calc.m_nMinCellFace, 1);
    int* const* nodeRows = calc.m_ppNodeCell;
    int* const* faceRows = calc.m_ppCellInnerFace;

    host.setInnerCells(1, 2.0, 3.0);
    calc.m_nWallFace = 0;
    host.mesh()->m_ppCellNode[1][1] = 2;
    calc.getMeshTopologyConn();
    EXPECT_EQ(calc.m_nMaxCellFace, 1);
    EXPECT_EQ(calc.m_nMinCellFace, 0);
    EXPECT_EQ(calc.m_ppNodeCell, nodeRows);
    EXPECT_EQ(calc.m_ppCellInnerFace, faceRows);
    EXPECT_EQ(row(nodeRows[1], 4), (Row{3, 1, 2, 3}));
    EXPECT_EQ(row(nodeRows[2], 4), (Row{0, 0, 0, 0}));
    EXPECT_EQ(row(faceRows[1], 3), (Row{1, 1, 0}));
    EXPECT_EQ(row(faceRows[2], 3), (Row{1, 1, 0}));
    EXPECT_EQ(row(faceRows[3], 3), (Row{0, 0, 0}));
}

// The tables are there, the mesh has lost its cells.
TEST_F(Connectivity, counts_without_own_cells_keep_their_start_values) {
    addNodes(1);
    addCells(2);
    addInner(1, 2);
    bind();
    calc.getCell32Conn();
    calc.m_nCV = 0;
    calc.getCell32Conn();
    EXPECT_EQ(calc.m_nMaxCellFace, -1000);
    EXPECT_EQ(calc.m_nMinCellFace, 1000);
    EXPECT_EQ(row(calc.m_ppCellInnerFace[1], 2), (Row{1, 1}));
}

// Interface faces of cells 1, 1 and 2; then the last two vanish after the first question.
TEST_F(Connectivity, partition_object_is_asked_for_every_face) {
    addNodes(1);
    addCells(2);
    for (const int cell : {1, 1, 2})
        host.addInterface(cell, {1, 0, 0}, {}, 0.5, {9, 0, 0}, 1.0, {});
    bind();
    RestlessPartition restless(*host.partition());
    calc.setPartitionInterface(&restless);
    calc.getCell32Conn();
    EXPECT_EQ(calc.m_nMaxCellFace, 2);
    EXPECT_EQ(calc.m_nMinCellFace, 1);
    RestlessPartition shrinking(*host.partition());
    shrinking.laterFaces = 1;
    calc.setPartitionInterface(&shrinking);
    calc.getCell32Conn();
    EXPECT_EQ(calc.m_nMaxCellFace, 1);
    EXPECT_EQ(calc.m_nMinCellFace, 0);
}

TEST_F(Connectivity, traces_each_builder_every_time) {
    addNodes(1);
    host.addCell({0, 0, 0}, 1.0, {1});
    bind();
    startTrace();
    const std::string lines =
        "calWeldLine: getMeshTopologyConn\n"
        "calWeldLine: getInnerCell03Conn\n"
        "calWeldLine: getCell32Conn\n";
    calc.getMeshTopologyConn();
    EXPECT_EQ(trace(), lines);
    calc.getMeshTopologyConn();
    EXPECT_EQ(trace(), lines + lines);
    host.processNumber = 1;
    calc.getMeshTopologyConn();
    host.processNumber = 0;
    calc.m_FlagDebugOutput = false;
    calc.getMeshTopologyConn();
    EXPECT_EQ(trace(), lines + lines);
}

// No file: nothing to write to, and no harm.
TEST_F(Connectivity, traces_nothing_without_a_file) {
    addNodes(1);
    host.addCell({0, 0, 0}, 1.0, {1});
    bind();
    calc.m_FlagDebugOutput = true;
    calc.getMeshTopologyConn();
    EXPECT_EQ(row(calc.m_ppNodeCell[1], 2), (Row{1, 1}));
}

}  // namespace

}  // namespace weldline::test
