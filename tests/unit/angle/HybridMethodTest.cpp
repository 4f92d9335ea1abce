// Method 3, first ring: cells of the node that share an inner face, judged at a face centre that is
// found in an odd place. The number of the shared face serves as a position in the first cell's
// rows of face numbers and types; beyond the count of these rows the point is the origin.
//
//   A (x - 1) ->  1  <- B (x + 1)       node 1 at (x, y, z) between two cells along x

#include "Bench.h"

namespace weldline::test {

namespace {

constexpr Point kMiddle{10, 20, 30};
constexpr Point kOrigin{0, 0, 0};
constexpr Point kAside{10, 500, 30};

// Cells 1 (A) and 2 (B) around `middle`.
struct Pair : Bench {
    explicit Pair(Point middle) {
        addNode(middle);
        addNode({600, 600, 600});
        addCell({middle[0] - 1, middle[1], middle[2]}, {1, 0, 0}, {1});
        addCell({middle[0] + 1, middle[1], middle[2]}, {-1, 0, 0}, {1});
    }
    // A face between two cells far away, which only takes a number.
    void addFarFace() {
        const int first = addCell({600, 600, 600}, {1, 0, 0}, {2});
        const int second = addCell({602, 600, 600}, {1, 0, 0}, {2});
        host.addInner(first, second, {1, 0, 0}, {601, 600, 600});
    }
    bool meets() {
        run(3);
        return met(1);
    }
};

// One entry of cell A's rows of face numbers and types.
void setFace(Bench& bench, int position, int number, int type) {
    bench.line.m_ppCellFace[1][position] = number;
    bench.line.m_ppCellFaceType[1][position] = type;
}

}  // namespace

TEST(Hybrid, node_in_one_cell_meets_nothing) {
    Bench bench;
    bench.addNode({10, 20, 30});
    bench.addNode({12, 20, 30});
    bench.addCell({9, 20, 30}, {1, 0, 0}, {1});
    bench.addCell({11, 20, 30}, {-1, 0, 0}, {2});
    bench.host.addInner(1, 2, {1, 0, 0}, {10, 20, 30});
    bench.bind();
    bench.run(3);
    EXPECT_EQ(bench.angle(1), 180.0);
    EXPECT_EQ(bench.angle(2), 180.0);
}

TEST(Hybrid, face_neighbours_of_the_node_meet) {
    TwoCells bench;
    bench.run(3);
    for (int node = 1; node <= 4; ++node) EXPECT_EQ(bench.angle(node), kHeadOn);
}

TEST(Hybrid, cells_without_a_common_face_do_not_meet) {
    EXPECT_FALSE(meets(3, [](TwoCells&) {}, {.sharedFace = false}));
}

TEST(Hybrid, interface_faces_do_not_meet) {
    HaloPair bench;
    bench.run(3);
    EXPECT_EQ(bench.angle(1), 180.0);
}

// B as first cell meets nothing, because a boundary face makes its place the origin.
TEST(Hybrid, takes_the_cells_of_a_face_in_either_order) {
    for (bool exchanged : {false, true})
        EXPECT_TRUE(meets(3, [&](TwoCells& bench) {
            bench.line.m_ppCellFaceType[2][1] = 1;
            if (exchanged) bench.host.setInnerCells(1, 2, 1);
        })) << exchanged;
}

// Volumes 0.3 and 3 pass the filter of 0.1 in one order only (see the cell loop). B as first cell
// meets nothing, so A is the first and must be the larger.
TEST(Hybrid, first_cell_is_the_one_whose_rows_are_read) {
    for (double first : {0.3, 3.0})
        EXPECT_EQ(meets(3,
                        [&](TwoCells& bench) {
                            bench.line.m_ppCellFaceType[2][1] = 1;
                            bench.line.m_pVolume[1] = first;
                            bench.line.m_pVolume[2] = first == 3.0 ? 0.3 : 3.0;
                            bench.line.m_Volume_Filter = 0.1;
                        }),
                  first == 3.0);
}

TEST(Hybrid, cuts_the_reals_of_a_face_record) {
    EXPECT_TRUE(meets(3, [](TwoCells& bench) { bench.host.setInnerCells(1, 1.9, 2.9); }));
}

// Neighbours are found through the table of inner faces, not through the host's rows of faces.
TEST(Hybrid, face_neighbours_come_from_the_inner_face_table) {
    TwoCells bench;
    bench.line.m_ppCellInnerFace[1][0] = 0;
    bench.line.m_ppCellInnerFace[2][0] = 0;
    bench.run(3);
    EXPECT_FALSE(bench.met(1));
}

// The neighbour's table counts, not that of the cell itself: with A's table empty, A still finds B.
// B as first cell meets nothing, because a boundary face makes its place the origin.
TEST(Hybrid, face_neighbours_come_from_the_neighbours_table) {
    for (int empty : {1, 2}) {
        TwoCells bench;
        bench.line.m_BoundaryAngle = 60.0;
        bench.line.m_ppCellFaceType[2][1] = 1;
        bench.line.m_ppCellInnerFace[empty][0] = 0;
        bench.run(3);
        EXPECT_EQ(bench.met(1), empty == 1);
    }
}

// Shared face 1 lies aside; A's row at position 1 names face 2, whose centre is good or not.
TEST(Hybrid, keeps_face_number_as_position_of_an_inner_face) {
    for (bool good : {false, true}) {
        Pair bench(kMiddle);
        bench.host.addInner(1, 2, {1, 0, 0}, kAside);
        bench.addFarFace();
        bench.bind();
        setFace(bench, 1, 2, 0);
        for (int axis : {0, 1, 2})
            bench.line.m_ppInnerFace[2][6 + axis] = good ? kMiddle[axis] : kAside[axis];
        EXPECT_EQ(bench.meets(), good);
    }
}

TEST(Hybrid, keeps_face_number_as_position_of_an_interface_face) {
    for (bool good : {false, true}) {
        Pair bench(kMiddle);
        bench.host.addInner(1, 2, {1, 0, 0}, kAside);
        bench.host.addInterface(1, {1, 0, 0}, good ? kMiddle : kAside, 0.5, {10, 22, 30}, 1.0, {2});
        bench.bind();
        setFace(bench, 1, 1, 101);
        EXPECT_EQ(bench.meets(), good);
    }
}

// A row of A: [inner face 2, interface face 1]. Shared face 2 is the last position of the row.
TEST(Hybrid, keeps_face_number_as_the_last_position) {
    for (bool good : {false, true}) {
        Pair bench(kMiddle);
        bench.addFarFace();
        bench.host.addInner(1, 2, {1, 0, 0}, good ? kAside : kMiddle);
        bench.host.addInterface(1, {1, 0, 0}, good ? kMiddle : kAside, 0.5, {10, 22, 30}, 1.0, {2});
        bench.bind();
        ASSERT_EQ(bench.line.m_ppCellFace[1][0], 2);
        EXPECT_EQ(bench.meets(), good);
    }
}

// At position 1 stands a boundary face: the place is the origin, wherever the faces lie.
TEST(Hybrid, keeps_the_origin_for_a_boundary_face) {
    for (int type : {1, 2, 3, 4, -1, 100, 102}) {
        Pair near(kOrigin);
        near.host.addInner(1, 2, {1, 0, 0}, kAside);
        near.bind();
        setFace(near, 1, 1, type);
        EXPECT_TRUE(near.meets()) << type;

        Pair far(kMiddle);
        far.host.addInner(1, 2, {1, 0, 0}, kMiddle);
        far.bind();
        far.line.m_ppCellFaceType[1][1] = far.line.m_ppCellFaceType[2][1] = type;
        EXPECT_FALSE(far.meets()) << type;
    }
}

// Shared face 2, but the rows of A and B have one entry each: the place is the origin. The host's
// rows end right behind that entry, so that the address sanitizer sees a look beyond.
TEST(Hybrid, keeps_the_origin_beyond_the_row) {
    Pair near(kOrigin);
    near.addFarFace();
    near.host.addInner(1, 2, {1, 0, 0}, kAside);
    near.bind();
    ASSERT_EQ(near.line.m_ppCellFace[1][0], 1);
    EXPECT_TRUE(near.meets());

    Pair far(kMiddle);
    far.addFarFace();
    far.host.addInner(1, 2, {1, 0, 0}, kMiddle);
    far.bind();
    EXPECT_FALSE(far.meets());
}

// The count of the row decides, whatever stands behind it.
TEST(Hybrid, keeps_the_origin_behind_a_shortened_row) {
    TwoCells bench;
    bench.line.m_ppCellFace[1][0] = bench.line.m_ppCellFace[2][0] = 0;
    bench.run(3);
    EXPECT_FALSE(bench.met(1));
}

}  // namespace weldline::test
