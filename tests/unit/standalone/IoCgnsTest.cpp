// Files that the CGNS library has written: two unit boxes in a row, as boxRowPoints has them.
#include <algorithm>

#include "CgnsWriter.h"
#include "IoFiles.h"
#include "IoSeries.h"
#include "MeshParts.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline::test {
namespace {

using Shape = CgnsWriter::Shape;
using Condition = CgnsWriter::Condition;
using Set = CgnsWriter::Set;

// Points and elements count from 1.
const std::vector<long> boxes{1, 5, 6, 2, 3, 7, 8, 4, 5, 9, 10, 6, 7, 11, 12, 8};
const std::vector<long> leftEnd{1, 2, 4, 3};
const std::vector<long> rightEnd{9, 10, 12, 11};
const std::vector<long> bottoms{1, 5, 6, 2, 5, 9, 10, 6};

class ReadCgns : public FileTest {
  protected:
    std::string file() const { return path("run.cgns"); }

    // Elements 1 and 2 are the boxes, 3 and 4 the ends, 5 and 6 the bottoms.
    static CgnsWriter& putBoxes(CgnsWriter& writer) {
        return writer.zone("melt", boxRowPoints({0, 1, 2}), 2)
            .section("cells", Shape::Hexa, 2, boxes)
            .section("left", Shape::Quad, 1, leftEnd)
            .section("right", Shape::Quad, 1, rightEnd)
            .section("bottom", Shape::Quad, 2, bottoms)
            .solution("end", "FillTime", {0.1, 0.3});
    }
};

std::string namesOf(const std::vector<Patch>& patches) {
    std::string names;
    for (const Patch& patch : patches) {
        names += patch.name + ' ' + std::to_string(patch.faces.count()) + '\n';
    }
    return names;
}

// Whether all corners of a patch's faces have this x.
bool liesAt(const DataSet& data, const Patch& patch, double x) {
    return std::all_of(patch.faces.entries.begin(), patch.faces.entries.end(),
                       [&](int node) { return data.mesh.points[node].x == x; });
}

TEST_F(ReadCgns, double_values_and_conditions_of_every_type) {
    for (const auto form : {CgnsWriter::Form::Hdf5, CgnsWriter::Form::Adf}) {
        {
            CgnsWriter writer(file(), form);
            putBoxes(writer)
                .condition("bc1", Condition::Family, Set::Range, {3, 3}, "Inlet")
                .condition("vents", Condition::Outflow, Set::List, {4})
                .condition("bc3", Condition::Wall, Set::Range, {5, 6}, "Mould");
        }
        const DataSet data = readDataSet(file(), {});
        expectTimes(data.fillTime, {0.1, 0.3});
        EXPECT_EQ(buildFvMesh(data.mesh).innerFaces, 1);
        ASSERT_EQ(namesOf(data.patches), "Inlet 1\nvents 1\nMould 2\n");
        EXPECT_TRUE(liesAt(data, data.patches[0], 0.0));
        EXPECT_TRUE(liesAt(data, data.patches[1], 2.0));
        EXPECT_TRUE(data.remarks.empty());
    }
}

TEST_F(ReadCgns, conditions_of_one_family_are_one_patch) {
    {
        CgnsWriter writer(file());
        putBoxes(writer)
            .condition("bc1", Condition::Inflow, Set::List, {3}, "Ends")
            .condition("bc2", Condition::Inflow, Set::List, {4}, "Ends");
    }
    EXPECT_EQ(namesOf(readDataSet(file(), {}).patches), "Ends 2\nbottom 2\n");
}

TEST_F(ReadCgns, sections_without_conditions_are_patches) {
    {
        CgnsWriter writer(file());
        putBoxes(writer);
    }
    const DataSet data = readDataSet(file(), {});
    ASSERT_EQ(namesOf(data.patches), "left 1\nright 1\nbottom 2\n");
    EXPECT_TRUE(liesAt(data, data.patches[1], 2.0));
}

// The points of "sides" are all but those of the right end, and with them those of the gate, whose
// element stays with the gate. Of the bottoms only the first has all its corners among them.
TEST_F(ReadCgns, conditions_on_points) {
    {
        CgnsWriter writer(file());
        putBoxes(writer)
            .conditionOnPoints("sides", Set::Range, {1, 8})
            .conditionOnPoints("gate", Set::List, {1, 2, 3, 4});
    }
    const DataSet data = readDataSet(file(), {});
    ASSERT_EQ(namesOf(data.patches), "gate 1\nsides 1\nright 1\nbottom 1\n");
    EXPECT_TRUE(liesAt(data, data.patches[0], 0.0));
    const FvMesh mesh = buildFvMesh(data.mesh);
    const BoundaryGroups groups = groupBoundaryFaces(mesh, data.patches, {});
    EXPECT_EQ(std::count(groups.kinds.begin(), groups.kinds.end(), GroupKind::Inlet), 1);
}

TEST_F(ReadCgns, element_of_two_conditions_goes_to_the_first) {
    {
        CgnsWriter writer(file());
        putBoxes(writer)
            .condition("gate", Condition::Inflow, Set::List, {3})
            .condition("all", Condition::Wall, Set::Range, {1, 2147483647});
    }
    EXPECT_EQ(namesOf(readDataSet(file(), {}).patches), "gate 1\nall 3\n");
}

TEST_F(ReadCgns, condition_without_elements_is_told) {
    {
        CgnsWriter writer(file());
        putBoxes(writer)
            .condition("cells", Condition::Wall, Set::Range, {1, 2})
            .condition("nowhere", Condition::Wall, Set::List, {0, 7, 1000})
            .conditionOnPoints("edge", Set::List, {1, 2, 0, 13});
    }
    const DataSet data = readDataSet(file(), {});
    EXPECT_EQ(namesOf(data.patches), "left 1\nright 1\nbottom 2\n");
    EXPECT_EQ(
        data.remarks,
        (std::vector<std::string>{
            "The boundary condition 'cells' is left out: no surface element is left for it.",
            "The boundary condition 'nowhere' is left out: no surface element is left for it.",
            "The boundary condition 'edge' is left out: no surface element is left for it."}));
}

// In a mixed section the type stands before the corners: 17 a hexahedron, 7 a quadrangle, 5 a
// triangle.
TEST_F(ReadCgns, sections_of_several_kinds) {
    {
        CgnsWriter writer(file());
        writer.zone("melt", boxRowPoints({0, 1, 2}), 2)
            .section("cells", Shape::Mixed, 2,
                     {17, 1, 5, 6, 2, 3, 7, 8, 4, 17, 5, 9, 10, 6, 7, 11, 12, 8}, {0, 9, 18})
            .section("skin", Shape::Mixed, 3, {7, 1, 2, 4, 3, 5, 9, 10, 12, 5, 9, 12, 11},
                     {0, 5, 9, 13})
            .solution("end", "FillTime", {0.1, 0.3})
            .condition("gate", Condition::Inflow, Set::List, {3});
    }
    const DataSet data = readDataSet(file(), {});
    ASSERT_EQ(namesOf(data.patches), "gate 1\nskin 2\n");
    EXPECT_TRUE(liesAt(data, data.patches[0], 0.0));
    EXPECT_TRUE(liesAt(data, data.patches[1], 2.0));
}

TEST_F(ReadCgns, polyhedra) {
    {
        CgnsWriter writer(file());
        writer.zone("melt", boxRowPoints({0, 1, 2}), 2)
            .section("faces", Shape::FaceList, 11,
                     {1, 3, 4, 2, 5, 6, 8, 7, 9,  10, 12, 11, 1,  2, 6, 5, 3,  7, 8, 4, 1,  5,
                      7, 3, 2, 4, 8, 6, 5, 6, 10, 9,  7,  11, 12, 8, 5, 9, 11, 7, 6, 8, 12, 10},
                     {0, 4, 8, 12, 16, 20, 24, 28, 32, 36, 40, 44})
            .section("cells", Shape::CellList, 2, {1, 2, 4, 5, 6, 7, -2, 3, 8, 9, 10, 11},
                     {0, 6, 12})
            .solution("end", "FillTime", {0.1, 0.3})
            .condition("gate", Condition::Inflow, Set::List, {1})
            .condition("mould", Condition::Wall, Set::Range, {4, 11})
            .conditionOnPoints("edge", Set::List, {9, 10, 11, 12});
    }
    const DataSet data = readDataSet(file(), {});
    expectTimes(data.fillTime, {0.1, 0.3});
    const FvMesh mesh = buildFvMesh(data.mesh);
    EXPECT_EQ(mesh.innerFaces, 1);
    EXPECT_DOUBLE_EQ(mesh.cellVolume[0], 1.0);
    EXPECT_DOUBLE_EQ(mesh.cellVolume[1], 1.0);
    EXPECT_EQ(namesOf(data.patches), "gate 1\nmould 8\n");
    EXPECT_EQ(data.remarks.size(), 1U);
}

TEST_F(ReadCgns, zones_are_joined_and_share_families) {
    const std::vector<long> box{1, 5, 6, 2, 3, 7, 8, 4};
    {
        CgnsWriter writer(file());
        writer.zone("first", boxRowPoints({0, 1}), 1)
            .section("cells", Shape::Hexa, 1, box)
            .section("left", Shape::Quad, 1, leftEnd)
            .condition("bc", Condition::Family, Set::List, {2}, "Ends")
            .solution("end", "FillTime", {0.1})
            .zone("second", boxRowPoints({1, 2}), 1)
            .section("cells", Shape::Hexa, 1, box)
            .section("right", Shape::Triangle, 2, {5, 6, 8, 5, 8, 7})
            .condition("bc", Condition::Family, Set::Range, {2, 3}, "Ends")
            .solution("end", "FillTime", {0.3})
            .structuredZone("block");
    }
    const DataSet data = readDataSet(file(), {});
    expectTimes(data.fillTime, {0.1, 0.3});
    EXPECT_EQ(data.mesh.points.size(), 12U);
    EXPECT_EQ(buildFvMesh(data.mesh).innerFaces, 1);
    EXPECT_EQ(namesOf(data.patches), "Ends 3\n");
    EXPECT_EQ(
        data.remarks,
        (std::vector<std::string>{"The block 'block' is left out: it is no unstructured grid."}));
}

// Half full at 0.5 + 0.5 (0.5 - 0.25) / (0.75 - 0.25) = 0.75 and at 0.5 (0.5 - 0) / (1 - 0).
TEST_F(ReadCgns, series) {
    {
        CgnsWriter writer(file());
        writer.zone("melt", boxRowPoints({0, 1, 2}), 2)
            .section("cells", Shape::Hexa, 2, boxes)
            .section("left", Shape::Quad, 1, leftEnd)
            .solution("a", "alpha.melt", {0, 0})
            .solution("b", "alpha.melt", {0.25, 1})
            .solution("c", "alpha.melt", {0.75, 1})
            .times({0, 0.5, 1}, {"a", "b", "c"});
    }
    const DataSet data = readDataSet(file(), fromSeries());
    expectTimes(data.fillTime, {0.75, 0.25});
    EXPECT_EQ(data.series->field, "alpha.melt");
    EXPECT_EQ(data.series->steps, 3);
    EXPECT_EQ(namesOf(data.patches), "left 1\n");
}

TEST_F(ReadCgns, damaged_files) {
    EXPECT_EQ(readError(put("text.cgns", "no mesh at all")),
              "'" + path("text.cgns") + "': the file holds no CGNS data set, or a damaged one");
    {
        CgnsWriter writer(file());
        writer.zone("melt", boxRowPoints({0, 1, 2}), 2)
            .section("cells", Shape::Hexa, 2, boxes)
            .section("left", Shape::Quad, 1, {1, 2, 13, 3})
            .solution("end", "FillTime", {0.1, 0.3});
    }
    EXPECT_EQ(
        readError(file()),
        "'" + file() +
            "': the elements of its section 'left' do not fit each other and their points; the "
            "file is damaged");
    {
        CgnsWriter writer(file());
        putBoxes(writer);
    }
    const std::string whole = contentOf(file());
    EXPECT_EQ(readError(put("half.cgns", whole.substr(0, whole.size() / 2))),
              "'" + path("half.cgns") + "': the file holds no CGNS data set, or a damaged one");
}

}  // namespace
}  // namespace weldline::test
