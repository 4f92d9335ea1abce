// Parts of a mesh, joined by ranks that are threads.

#include <gtest/gtest.h>

#include <bit>
#include <mutex>

#include "GridMesh.h"
#include "MeshParts.h"
#include "base/Errors.h"
#include "comm/ThreadRanks.h"
#include "partition/CutMesh.h"
#include "partition/MeshInterface.h"
#include "partition/SplitMesh.h"

namespace weldline {
namespace {

using test::boxRow;
using test::wholePart;

struct Joined {
    MeshPart part;
    FvMesh mesh;
    MeshInterface interface;
};

std::vector<Joined> joinAll(const MeshPart& whole, const std::vector<int>& partOfCell, int size) {
    MeshSplitter splitter(whole, partOfCell, size);
    std::vector<Joined> all(static_cast<std::size_t>(size));
    for (int r = 0; r < size; ++r) all[static_cast<std::size_t>(r)].part = splitter.part(r);
    runAsThreads(size, [&](Ranks& ranks) {
        Joined& own = all[static_cast<std::size_t>(ranks.rank())];
        own.mesh = buildFvMesh(own.part.mesh);
        own.interface = joinParts(ranks, own.part, own.mesh);
    });
    return all;
}

void expectVector(Vec3 found, Vec3 expected) {
    EXPECT_EQ(found.x, expected.x);
    EXPECT_EQ(found.y, expected.y);
    EXPECT_EQ(found.z, expected.z);
}

// Two boxes, 1 and 3 wide, side by side:   | 0 |     1     |   walls at x = 0, 1, 4
TEST(JoinParts, two_boxes_share_one_face) {
    const auto all = joinAll(wholePart(boxRow({0, 1, 4})), {0, 1}, 2);
    const Joined& left = all[0];
    const Joined& right = all[1];
    for (const Joined& own : all) {
        EXPECT_EQ(own.mesh.innerFaces, 0);
        EXPECT_EQ(own.mesh.interfaceFaces, 1);
        EXPECT_EQ(own.mesh.boundaryFaces(), 5);
        EXPECT_EQ(own.mesh.faceCount(), 6);
        EXPECT_EQ(own.mesh.cellFaces[0].back(), 5);  // the interface face is the last
        EXPECT_EQ(own.interface.haloOfFace, std::vector{0});
        expectVector(own.mesh.faceCentre[5], {1.0, 0.5, 0.5});
    }
    expectVector(left.mesh.faceArea[5], {1.0, 0.0, 0.0});
    expectVector(right.mesh.faceArea[5], {-1.0, 0.0, 0.0});

    ASSERT_EQ(left.interface.halo.size(), 1U);
    EXPECT_EQ(left.interface.halo[0].rank, 1);
    EXPECT_EQ(left.interface.halo[0].number, 1);
    expectVector(left.interface.halo[0].centre, {2.5, 0.5, 0.5});
    EXPECT_DOUBLE_EQ(left.interface.halo[0].volume, 3.0);
    expectVector(right.interface.halo[0].centre, {0.5, 0.5, 0.5});
    EXPECT_DOUBLE_EQ(right.interface.halo[0].volume, 1.0);
    // Own centre 0.5 from the face, the other 1.5: the other one weighs 0.5 / 2.
    EXPECT_EQ(left.interface.lambda, std::vector{0.25});
    EXPECT_EQ(right.interface.lambda, std::vector{0.75});

    // Slot 1 is the own cell, 2 to 6 are boundary faces, 7 the halo.
    for (const Joined& own : all) {
        ASSERT_EQ(own.interface.links.links.size(), 1U);
        EXPECT_EQ(own.interface.links.links[0].sendSlots, std::vector{1});
        EXPECT_EQ(own.interface.links.links[0].receiveSlots, std::vector{7});
    }
    EXPECT_EQ(left.interface.links.links[0].rank, 1);
    EXPECT_EQ(right.interface.links.links[0].rank, 0);
    // The wall at x = 1: points 4 to 7 of the whole, 4 to 7 of the left, 0 to 3 of the right.
    EXPECT_EQ(left.interface.sharedNodes[0].nodes, (std::vector{4, 5, 6, 7}));
    EXPECT_EQ(right.interface.sharedNodes[0].nodes, (std::vector{0, 1, 2, 3}));
}

// Three unit cubes in an L, each on a rank of its own, seen from above:
//
//     | 2 |
//     | 0 | 1 |
//
// 1 and 2 touch along one edge only.
CellMesh cubesInAnL() {
    const CellMesh block = test::hexahedraMesh(2, 2, 1);
    CellMesh mesh = block;
    mesh.kinds.pop_back();
    mesh.cellNodes = {};
    mesh.cellPolygons = {};
    for (int c = 0; c < 3; ++c) {
        mesh.cellNodes.append(block.cellNodes[c]);
        mesh.cellPolygons.append({});
    }
    return mesh;
}

TEST(JoinParts, cubes_in_an_l_share_faces_and_an_edge) {
    const auto all = joinAll(wholePart(cubesInAnL()), {0, 1, 2}, 3);
    EXPECT_EQ(all[0].mesh.interfaceFaces, 2);
    EXPECT_EQ(all[1].mesh.interfaceFaces, 1);
    EXPECT_EQ(all[2].mesh.interfaceFaces, 1);
    EXPECT_EQ(all[0].interface.haloOfFace, (std::vector{0, 1}));
    expectVector(all[0].interface.halo[0].centre, {1.5, 0.5, 0.5});
    expectVector(all[0].interface.halo[1].centre, {0.5, 1.5, 0.5});
    // Ranks 1 and 2 exchange no cell, but share the edge at x = y = 1: points 4 and 13 of the
    // block, whose 18 points go by x, y, z.
    ASSERT_EQ(all[1].interface.links.links.size(), 1U);
    ASSERT_EQ(all[1].interface.sharedNodes.size(), 2U);
    EXPECT_EQ(all[1].interface.sharedNodes[1].rank, 2);
    const auto numbers = [&](int rank, std::size_t list) {
        std::vector<std::int64_t> result;
        const Joined& own = all[static_cast<std::size_t>(rank)];
        for (const int node : own.interface.sharedNodes[list].nodes)
            result.push_back(own.part.nodeNumber[static_cast<std::size_t>(node)]);
        return result;
    };
    EXPECT_EQ(numbers(1, 1), (std::vector<std::int64_t>{4, 13}));
    EXPECT_EQ(numbers(2, 1), (std::vector<std::int64_t>{4, 13}));
    EXPECT_EQ(numbers(1, 0), (std::vector<std::int64_t>{1, 4, 10, 13}));
}

// The middle one of three boxes touches the same rank on both sides.
TEST(JoinParts, a_rank_between_two_cells_of_another_has_two_halo_cells) {
    const auto all = joinAll(wholePart(boxRow({0, 1, 2, 3})), {0, 1, 0}, 2);
    EXPECT_EQ(all[0].mesh.interfaceFaces, 2);
    EXPECT_EQ(all[0].interface.halo.size(), 1U);  // one cell behind both faces
    EXPECT_EQ(all[0].interface.haloOfFace, (std::vector{0, 0}));
    EXPECT_EQ(all[0].interface.links.links[0].sendSlots, (std::vector{1, 2}));
    EXPECT_EQ(all[1].interface.halo.size(), 2U);
    EXPECT_EQ(all[1].interface.haloOfFace, (std::vector{0, 1}));
    EXPECT_EQ(all[1].interface.links.links[0].receiveSlots, (std::vector{6, 7}));
}

// Two boxes whose common wall is two triangles, which the second box lists the other way round.
TEST(JoinParts, cells_with_two_common_faces_count_them_in_the_order_of_the_lower_cell) {
    test::MeshParts boxes(test::boxRowPoints({0, 1, 2}));
    boxes.polyhedron({{0, 1, 3, 2},
                      {0, 4, 5, 1},
                      {2, 3, 7, 6},
                      {0, 2, 6, 4},
                      {1, 5, 7, 3},
                      {4, 6, 7},
                      {4, 7, 5}});
    boxes.polyhedron({{4, 5, 7},
                      {4, 7, 6},
                      {8, 9, 11, 10},
                      {4, 8, 9, 5},
                      {6, 7, 11, 10},
                      {4, 6, 10, 8},
                      {5, 9, 11, 7}});
    const auto all = joinAll(wholePart(boxes), {0, 1}, 2);
    const Vec3 first = (1.0 / 3.0) * Vec3{3.0, 1.0, 2.0};   // of points 4, 6, 7
    const Vec3 second = (1.0 / 3.0) * Vec3{3.0, 2.0, 1.0};  // of points 4, 7, 5
    for (const Joined& own : all) {
        ASSERT_EQ(own.mesh.interfaceFaces, 2);
        const auto f = static_cast<std::size_t>(own.mesh.firstInterfaceFace());
        EXPECT_LT(norm(own.mesh.faceCentre[f] - first), 1e-15);
        EXPECT_LT(norm(own.mesh.faceCentre[f + 1] - second), 1e-15);
        EXPECT_EQ(own.interface.halo.size(), 1U);
    }
}

TEST(JoinParts, ranks_without_cells_have_no_part_in_it) {
    const auto all = joinAll(wholePart(boxRow({0, 1, 2})), {1, 3}, 5);
    for (const int empty : {0, 2, 4}) {
        const Joined& own = all[static_cast<std::size_t>(empty)];
        EXPECT_EQ(own.mesh.faceCount(), 0);
        EXPECT_TRUE(own.interface.halo.empty());
        EXPECT_TRUE(own.interface.links.links.empty());
        EXPECT_TRUE(own.interface.sharedNodes.empty());
    }
    EXPECT_EQ(all[1].interface.halo.at(0).rank, 3);
}

// The face that two cells of rank 0 have between them is claimed by a cell of rank 1 as well.
TEST(JoinParts, a_face_of_three_cells_is_refused_on_all_ranks) {
    MeshPart first;
    first.mesh = boxRow({0, 1, 2});
    first.cellNumber = {0, 1};
    for (int n = 0; n < 12; ++n) first.nodeNumber.push_back(n);
    MeshPart second;
    second.mesh = boxRow({1, 1.5});
    second.cellNumber = {2};
    second.nodeNumber = {4, 5, 6, 7, 12, 13, 14, 15};
    std::mutex mutex;
    std::vector<std::string> faults;
    runAsThreads(3, [&](Ranks& ranks) {
        const MeshPart none;
        const MeshPart& part = ranks.rank() == 0 ? first : ranks.rank() == 1 ? second : none;
        FvMesh mesh = buildFvMesh(part.mesh);
        try {
            joinParts(ranks, part, mesh);
        } catch (const InputError& error) {
            const std::lock_guard lock(mutex);
            faults.emplace_back(error.what());
        }
    });
    EXPECT_EQ(faults, std::vector<std::string>(
                          3,
                          "cell 0, cell 1 and cell 2 share one face; a face has at most two "
                          "cells"));
}

TEST(JoinParts, cells_on_the_same_side_of_their_face_are_refused) {
    MeshPart first;
    first.mesh = boxRow({0, 1});
    first.cellNumber = {0};
    first.nodeNumber = {0, 1, 2, 3, 4, 5, 6, 7};
    MeshPart second;
    second.mesh = boxRow({0, 0.5});  // its wall at x = 0 is that of the first
    second.cellNumber = {1};
    second.nodeNumber = {0, 1, 2, 3, 8, 9, 10, 11};
    const auto run = [&] {
        runAsThreads(2, [&](Ranks& ranks) {
            const MeshPart& part = ranks.rank() == 0 ? first : second;
            FvMesh mesh = buildFvMesh(part.mesh);
            joinParts(ranks, part, mesh);
        });
    };
    try {
        run();
        FAIL() << "nothing was refused";
    } catch (const InputError& error) {
        EXPECT_STREQ(error.what(),
                     "cell 0 and cell 1 overlap: they lie on the same side of the face that they "
                     "share");
    }
}

std::uint64_t bits(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

void expectSameBits(Vec3 found, Vec3 expected) {
    EXPECT_EQ(bits(found.x), bits(expected.x));
    EXPECT_EQ(bits(found.y), bits(expected.y));
    EXPECT_EQ(bits(found.z), bits(expected.z));
}

// Cells keep centres and volumes to the last bit, and so do halo cells on their neighbours.
void expectCellsOf(const FvMesh& whole, const Joined& own) {
    for (std::size_t c = 0; c < own.part.cellNumber.size(); ++c) {
        const auto number = static_cast<std::size_t>(own.part.cellNumber[c]);
        expectSameBits(own.mesh.cellCentre[c], whole.cellCentre[number]);
        EXPECT_EQ(bits(own.mesh.cellVolume[c]), bits(whole.cellVolume[number]));
    }
    for (const HaloCell& cell : own.interface.halo) {
        const auto number = static_cast<std::size_t>(cell.number);
        expectSameBits(cell.centre, whole.cellCentre[number]);
        EXPECT_EQ(bits(cell.volume), bits(whole.cellVolume[number]));
    }
}

// Every inner face of the uncut mesh by its two cells; several faces of one pair in their order.
using FacesOfPairs = std::map<std::pair<std::int64_t, std::int64_t>, std::vector<int>>;

FacesOfPairs facesOfPairs(const FvMesh& mesh) {
    FacesOfPairs result;
    for (int f = 0; f < mesh.innerFaces; ++f) {
        const auto face = static_cast<std::size_t>(f);
        result[{mesh.owner[face], mesh.neighbour[face]}].push_back(f);
    }
    return result;
}

void expectInterfaceFacesOf(const FvMesh& whole, const FacesOfPairs& faces, const Joined& own) {
    std::map<std::pair<std::int64_t, std::int64_t>, std::size_t> met;
    for (int i = 0; i < own.mesh.interfaceFaces; ++i) {
        const auto f = static_cast<std::size_t>(own.mesh.firstInterfaceFace() + i);
        const std::int64_t near = own.part.cellNumber[static_cast<std::size_t>(own.mesh.owner[f])];
        const auto halo =
            static_cast<std::size_t>(own.interface.haloOfFace[static_cast<std::size_t>(i)]);
        const std::int64_t far = own.interface.halo[halo].number;
        const auto pair = std::minmax(near, far);
        const auto original = static_cast<std::size_t>(faces.at(pair).at(met[pair]++));
        expectSameBits(own.mesh.faceCentre[f], whole.faceCentre[original]);
        const Vec3 area = whole.faceArea[original];
        expectSameBits(own.mesh.faceArea[f], near < far ? area : -1.0 * area);
        if (near < far) {
            EXPECT_EQ(bits(own.interface.lambda[static_cast<std::size_t>(i)]),
                      bits(whole.lambda[original]));
        }
    }
}

class Cuts : public testing::TestWithParam<int> {};

TEST_P(Cuts, keep_the_geometry_of_the_whole_to_the_last_bit) {
    const int size = GetParam();
    const MeshPart whole = wholePart(test::gridMesh(5, 4, 3, 0.2, 11));
    const FvMesh fv = buildFvMesh(whole.mesh);
    const auto all = joinAll(whole, cutMesh(whole.mesh, size), size);
    const FacesOfPairs faces = facesOfPairs(fv);
    int inner = 0;
    int boundary = 0;
    int interfaceSides = 0;
    for (const Joined& own : all) {
        expectCellsOf(fv, own);
        expectInterfaceFacesOf(fv, faces, own);
        inner += own.mesh.innerFaces;
        boundary += own.mesh.boundaryFaces();
        interfaceSides += own.mesh.interfaceFaces;
    }
    EXPECT_EQ(boundary, fv.boundaryFaces());
    EXPECT_EQ(inner + interfaceSides / 2, fv.innerFaces);
    EXPECT_GT(interfaceSides, 0);
}

INSTANTIATE_TEST_SUITE_P(JoinParts, Cuts, testing::Values(2, 3, 4, 8, 40));

}  // namespace
}  // namespace weldline
