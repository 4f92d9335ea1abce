#include <gtest/gtest.h>

#include <map>
#include <set>

#include "GridMesh.h"
#include "MeshParts.h"
#include "base/Errors.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/CellSides.h"
#include "mesh/FvMesh.h"
#include "partition/CutMesh.h"
#include "partition/PackMeshPart.h"
#include "partition/SplitMesh.h"

namespace weldline {
namespace {

using test::boxRow;
using test::wholePart;

TEST(CutMesh, one_part_holds_all_cells) {
    EXPECT_EQ(cutMesh(boxRow({0, 1, 2, 3}), 1), (std::vector{0, 0, 0}));
    EXPECT_EQ(cutMesh(CellMesh(), 3), std::vector<int>());
}

TEST(CutMesh, with_as_many_parts_as_cells_each_cell_is_one) {
    EXPECT_EQ(cutMesh(boxRow({0, 1, 2, 3}), 3), (std::vector{0, 1, 2}));
    EXPECT_EQ(cutMesh(boxRow({0, 1, 2, 3}), 7), (std::vector{0, 1, 2}));
}

TEST(CutMesh, a_row_is_cut_once_in_the_middle) {
    const std::vector<int> part = cutMesh(boxRow({0, 1, 2, 3, 4, 5, 6, 7, 8}), 2);
    EXPECT_EQ(std::count(part.begin(), part.end(), part.front()), 4);
    EXPECT_TRUE(std::equal(part.begin(), part.begin() + 3, part.begin() + 1));
    EXPECT_TRUE(std::equal(part.begin() + 4, part.end() - 1, part.begin() + 5));
}

TEST(CutMesh, the_same_mesh_is_cut_the_same_way) {
    const CellMesh mesh = test::gridMesh(9, 6, 5, 0.2, 3);
    EXPECT_EQ(cutMesh(mesh, 5), cutMesh(mesh, 5));
}

// Parts have about the same number of cell faces, although the cells of one half have 4 and those
// of the other half 6.
TEST(CutMesh, balances_the_faces_of_cells) {
    const CellMesh mesh = test::gridMesh(16, 12, 10, 0.0, 1);
    const CellSides sides(mesh);
    for (const int parts : {2, 3, 8}) {
        const std::vector<int> part = cutMesh(mesh, parts);
        std::vector<double> work(static_cast<std::size_t>(parts), 0.0);
        for (int c = 0; c < mesh.cellCount(); ++c)
            work[static_cast<std::size_t>(part[static_cast<std::size_t>(c)])] +=
                sides.end(c) - sides.first(c);
        for (const double own : work) EXPECT_NEAR(own, sides.count() / parts, 0.05 * own);
    }
}

TEST(CutMesh, refuses_cells_that_share_faces_as_they_must_not) {
    test::MeshParts row = boxRow({0, 1, 2});
    row.shape(CellKind::Hexahedron, {0, 4, 5, 1, 2, 6, 7, 3});
    row.shape(CellKind::Hexahedron, {0, 4, 5, 1, 2, 6, 7, 3});
    EXPECT_THROW(cutMesh(row, 2), InputError);
}

// What a part says about a cell, in numbers of the whole.
struct CellOfWhole {
    CellKind kind{};
    std::vector<std::int64_t> nodes;
    std::vector<std::vector<std::int64_t>> polygons;
    double field = 0.0;
    bool operator==(const CellOfWhole&) const = default;
};

std::vector<std::int64_t> numbersOf(const MeshPart& part, std::span<const int> nodes) {
    std::vector<std::int64_t> numbers;
    for (const int node : nodes) numbers.push_back(part.nodeNumber[static_cast<std::size_t>(node)]);
    return numbers;
}

std::map<std::int64_t, CellOfWhole> cellsOf(const MeshPart& part) {
    std::map<std::int64_t, CellOfWhole> cells;
    for (int c = 0; c < part.mesh.cellCount(); ++c) {
        const auto place = static_cast<std::size_t>(c);
        CellOfWhole& cell = cells[part.cellNumber[place]];
        cell.kind = part.mesh.kinds[place];
        cell.nodes = numbersOf(part, part.mesh.cellNodes[c]);
        for (const int polygon : part.mesh.cellPolygons[c])
            cell.polygons.push_back(numbersOf(part, part.mesh.polygons[polygon]));
        cell.field = part.cellFields[0][place];
    }
    return cells;
}

std::multiset<std::vector<std::int64_t>> facesOf(const MeshPart& part, std::size_t patch) {
    std::multiset<std::vector<std::int64_t>> faces;
    for (int i = 0; i < part.patches[patch].faces.count(); ++i)
        faces.insert(numbersOf(part, part.patches[patch].faces[i]));
    return faces;
}

MeshPart wholeGrid() {
    MeshPart whole = wholePart(test::gridMesh(5, 4, 3, 0.2, 7));
    whole.mesh.points.push_back({-1.0, -1.0, -1.0});  // of no cell
    whole.nodeNumber.push_back(static_cast<std::int64_t>(whole.nodeNumber.size()));
    whole.cellFields.emplace_back();
    for (int c = 0; c < whole.mesh.cellCount(); ++c) whole.cellFields[0].push_back(0.5 * c);
    return whole;
}

void expectAscending(const std::vector<std::int64_t>& numbers) {
    EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
    EXPECT_EQ(std::adjacent_find(numbers.begin(), numbers.end()), numbers.end());
}

TEST(SplitMesh, the_parts_together_are_the_whole) {
    const MeshPart whole = wholeGrid();
    const std::vector<int> partOfCell = cutMesh(whole.mesh, 4);
    MeshSplitter splitter(whole, partOfCell, 5);
    const auto expected = cellsOf(whole);
    std::map<std::int64_t, CellOfWhole> cells;
    std::map<std::int64_t, Vec3> points;
    std::vector<std::multiset<std::vector<std::int64_t>>> faces(3);
    for (const int number : {3, 0, 4, 1, 2}) {  // in any order
        const MeshPart part = unpackMeshPart(packMeshPart(splitter.part(number)));
        expectAscending(part.cellNumber);
        expectAscending(part.nodeNumber);
        EXPECT_EQ(part.mesh.fileNumbers, part.cellNumber);
        for (const auto& [cell, content] : cellsOf(part)) {
            EXPECT_EQ(partOfCell[static_cast<std::size_t>(cell)], number);
            EXPECT_EQ(content, expected.at(cell));
            cells[cell] = content;
        }
        for (std::size_t n = 0; n < part.nodeNumber.size(); ++n)
            points[part.nodeNumber[n]] = part.mesh.points[n];
        ASSERT_EQ(part.patches.size(), 3U);
        for (std::size_t p = 0; p < 3; ++p) {
            EXPECT_EQ(part.patches[p].name, whole.patches[p].name);
            faces[p].merge(facesOf(part, p));
        }
        if (part.mesh.cellCount() > 0) {
            const FvMesh mesh = buildFvMesh(part.mesh);  // patch faces lie on the part's cells
            groupBoundaryFaces(mesh, part.patches, {});
        }
    }
    EXPECT_EQ(cells.size(), expected.size());
    ASSERT_EQ(points.size(), whole.mesh.points.size());
    for (const auto& [number, point] : points)
        EXPECT_EQ(point.x, whole.mesh.points[static_cast<std::size_t>(number)].x);
    for (std::size_t p = 0; p < 3; ++p) EXPECT_EQ(faces[p], facesOf(whole, p));
}

TEST(SplitMesh, splits_a_piece_whose_numbers_are_not_places) {
    MeshPart piece = wholePart(boxRow({0, 1, 2}));
    piece.cellNumber = {10, 20};
    for (std::int64_t& number : piece.nodeNumber) number += 100;
    piece.mesh.fileNumbers = {7, 8};
    const std::vector<int> partOfCell{1, 0};
    const MeshPart part = MeshSplitter(piece, partOfCell, 2).part(0);
    EXPECT_EQ(part.cellNumber, std::vector<std::int64_t>{20});
    EXPECT_EQ(part.mesh.fileNumbers, std::vector<std::int64_t>{8});
    EXPECT_EQ(part.nodeNumber, (std::vector<std::int64_t>{104, 105, 106, 107, 108, 109, 110, 111}));
}

TEST(SplitMesh, refuses_patch_faces_that_are_no_boundary_faces) {
    const std::vector<int> partOfCell{0, 1};
    MeshPart whole = wholePart(boxRow({0, 1, 2}));
    whole.patches.push_back({"inside", {}});
    whole.patches.back().faces.append(std::vector{0, 1, 2, 3});
    whole.patches.back().faces.append(std::vector{4, 5, 6, 7});  // between the cells
    const auto split = [&] { MeshSplitter(whole, partOfCell, 2); };
    try {
        split();
        FAIL() << "nothing was refused";
    } catch (const InputError& error) {
        EXPECT_STREQ(error.what(),
                     "face 1 of patch 'inside' is no boundary face of a cell; a patch has to lie "
                     "on the mesh's surface");
    }
    whole.patches.back().faces = {};
    whole.patches.back().faces.append(std::vector{0, 1, 2, 7});  // of no cell
    EXPECT_THROW(split(), InputError);
}

}  // namespace
}  // namespace weldline
