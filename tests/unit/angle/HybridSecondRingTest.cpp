// Method 3, second ring: common neighbours of two face neighbours, judged at the node. In these
// meshes all face neighbours have zeroed gradients, so that only second-ring pairs can meet.

#include "Bench.h"

namespace weldline::test {

namespace {

constexpr Point kNode{10, 20, 30};
constexpr Point kComing{-1, 0, 0};

//   A (9, 20, 30) flows to node 1; `coming` cells at (11, 20, 30) flow against it.
struct Ring : Bench {
    Ring() {
        addNode(kNode);
        addNode({600, 600, 600});
        addCell({9, 20, 30}, {1, 0, 0}, {1});
    }
    int addZeroed(bool atNode = true) {
        m_zeroed.push_back(addCell({10, 25, 30}, {0, 1, 0}, {atNode ? 1 : 2}));
        return m_zeroed.back();
    }
    int addComing(bool atNode = false) { return addCell({11, 20, 30}, kComing, {atNode ? 1 : 2}); }
    void addFace(int first, int second) { host.addInner(first, second, {1, 0, 0}, {10, 500, 30}); }
    bool meets() {
        bind();
        for (int cell : m_zeroed) line.m_pZeroGradFlag[cell] = 1;
        run(3);
        return met(1);
    }

  private:
    std::vector<int> m_zeroed;
};

}  // namespace

//   A | B
//   --+--        node 1 in A, B and C; D is a neighbour of B and C by the host's rows and does not
//   C | D        contain node 1
TEST(SecondRing, common_neighbour_meets_without_the_node) {
    for (bool common : {true, false}) {
        Ring ring;
        const int b = ring.addZeroed(), c = ring.addZeroed(), d = ring.addComing();
        ring.addFace(1, b);
        ring.addFace(1, c);
        ring.host.addNeighbour(b, d);
        if (common) ring.host.addNeighbour(c, d);
        EXPECT_EQ(ring.meets(), common);
    }
}

TEST(SecondRing, angle_is_that_of_the_node_point_pair) {
    Ring ring;
    const int b = ring.addZeroed(), c = ring.addZeroed(), d = ring.addComing();
    ring.addFace(1, b);
    ring.addFace(1, c);
    ring.host.addNeighbour(b, d);
    ring.host.addNeighbour(c, d);
    ring.bind();
    ring.line.m_pZeroGradFlag[b] = ring.line.m_pZeroGradFlag[c] = 1;
    ring.run(3);
    EXPECT_EQ(ring.angle(1), kHeadOn);
}

// B and C must both be face neighbours of A among the cells of the node: C is not at node 1.
TEST(SecondRing, candidates_belong_to_the_node) {
    Ring ring;
    const int b = ring.addZeroed(), c = ring.addZeroed(false), d = ring.addComing();
    ring.addFace(1, b);
    ring.addFace(1, c);
    ring.host.addNeighbour(b, d);
    ring.host.addNeighbour(c, d);
    EXPECT_FALSE(ring.meets());
}

// B and C are cells of the node, but C has no face with A.
TEST(SecondRing, candidates_share_a_face_with_the_first_cell) {
    Ring ring;
    const int b = ring.addZeroed(), c = ring.addZeroed(), d = ring.addComing();
    ring.addFace(1, b);
    ring.host.addNeighbour(b, d);
    ring.host.addNeighbour(c, d);
    EXPECT_FALSE(ring.meets());
}

//   A || B | D       two faces between A and B make B a candidate twice, so every neighbour of B is
//                    common to "both"
TEST(SecondRing, keeps_a_neighbour_with_two_faces_twice) {
    for (int faces : {1, 2}) {
        Ring ring;
        const int b = ring.addZeroed(), d = ring.addComing();
        for (int i = 0; i < faces; ++i) ring.addFace(1, b);
        ring.host.addNeighbour(b, d);
        EXPECT_EQ(ring.meets(), faces == 2);
    }
}

// A collapsed cell that lists node 1 twice stands twice in the node's row, so it is a cell beside
// itself: each of its faces makes it a candidate, and two of them have all its neighbours in
// common, D among them.
//
//   B | A | D
TEST(SecondRing, keeps_a_cell_listed_twice_as_its_own_neighbour) {
    for (bool collapsed : {true, false}) {
        Ring ring;
        const int b = ring.addZeroed(), d = ring.addComing();
        ring.addFace(1, b);
        ring.addFace(1, d);
        ring.bind();
        ring.line.m_pZeroGradFlag[b] = 1;
        if (collapsed) ring.line.m_ppNodeCell[1][2] = 1;  // A, A and the pace maker
        ring.run(3);
        EXPECT_EQ(ring.met(1), collapsed);
    }
}

// E is a neighbour of B and of the second-ring cell D: D is not paired with B in its turn.
TEST(SecondRing, has_no_third_ring) {
    Ring ring;
    const int b = ring.addZeroed(), c = ring.addZeroed(), d = ring.addZeroed(false);
    const int e = ring.addComing();
    ring.addFace(1, b);
    ring.addFace(1, c);
    for (int cell : {b, c}) ring.host.addNeighbour(cell, d);
    for (int cell : {b, d}) ring.host.addNeighbour(cell, e);
    EXPECT_FALSE(ring.meets());
}

// Of three candidates the first and the last, and the last two, are pairs as well.
TEST(SecondRing, pairs_all_candidates) {
    for (const auto& [p, q] : std::vector<std::pair<int, int>>{{0, 1}, {0, 2}, {1, 2}}) {
        Ring ring;
        const int candidates[] = {ring.addZeroed(), ring.addZeroed(), ring.addZeroed()};
        const int d = ring.addComing();
        for (int cell : candidates) ring.addFace(1, cell);
        ring.host.addNeighbour(candidates[p], d);
        ring.host.addNeighbour(candidates[q], d);
        EXPECT_TRUE(ring.meets()) << p << q;
    }
}

// D comes on to A and is a face neighbour itself. Its face centre lies aside, so the face-point
// test refuses; as common neighbour of B and C it is tested again, now at the node.
TEST(SecondRing, keeps_testing_a_face_neighbour_again) {
    for (bool common : {true, false}) {
        Ring ring;
        const int b = ring.addZeroed(), c = ring.addZeroed(), d = ring.addComing(true);
        for (int cell : {b, c, d}) ring.addFace(1, cell);
        ring.host.addNeighbour(b, d);
        if (common) ring.host.addNeighbour(c, d);
        EXPECT_EQ(ring.meets(), common);
    }
}

// The candidates of A end with A. G, first cell of its own turn, has the one face neighbour C;
// together with a left-over candidate B, D would be a common neighbour.
//
//   A | B    A and B share a face, G and C share a face, all at node 1; D is a neighbour of B and C
//   G | C
TEST(SecondRing, candidates_are_those_of_one_first_cell) {
    Ring ring;
    const int b = ring.addZeroed();
    const int g = ring.addCell({9, 20, 30}, {1, 0, 0}, {1});
    const int c = ring.addZeroed();
    const int d = ring.addComing();
    ring.addFace(1, b);
    ring.addFace(g, c);
    ring.host.addNeighbour(b, d);
    ring.host.addNeighbour(c, d);
    EXPECT_FALSE(ring.meets());
}

// Volumes 0.3 and 3 pass the filter of 0.1 in one order only (see the cell loop): A comes first,
// its second-ring cell second. D is no cell of the node, so it never comes first.
TEST(SecondRing, first_cell_is_the_cell_of_the_node) {
    for (double own : {0.3, 3.0}) {
        Ring ring;
        const int b = ring.addZeroed(), c = ring.addZeroed(), d = ring.addComing();
        ring.addFace(1, b);
        ring.addFace(1, c);
        ring.host.addNeighbour(b, d);
        ring.host.addNeighbour(c, d);
        ring.bind();
        ring.line.m_pZeroGradFlag[b] = ring.line.m_pZeroGradFlag[c] = 1;
        ring.line.m_pVolume[1] = own;
        ring.line.m_pVolume[d] = own == 3.0 ? 0.3 : 3.0;
        ring.line.m_Volume_Filter = 0.1;
        ring.run(3);
        EXPECT_EQ(ring.met(1), own == 3.0);
    }
}

// A second-ring cell may be a halo slot that the host's rows of neighbours name.
TEST(SecondRing, common_neighbour_may_be_a_halo_slot) {
    Ring ring;
    const int b = ring.addZeroed(), c = ring.addZeroed();
    ring.addFace(1, b);
    ring.addFace(1, c);
    ring.host.addInterface(b, {1, 0, 0}, kNode, 0.5, {11, 20, 30}, 1.0, {2});
    const int halo = 3 + 1 + 1;  // behind three cells and the pace maker
    ring.host.addNeighbour(b, halo);
    ring.host.addNeighbour(c, halo);
    ring.bind();
    ring.setGradient(halo, kComing);
    ring.line.m_pZeroGradFlag[b] = ring.line.m_pZeroGradFlag[c] = 1;
    ring.run(3);
    EXPECT_EQ(ring.angle(1), kHeadOn);
}

}  // namespace weldline::test
