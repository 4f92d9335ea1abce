// Patches of the data set become groups of boundary faces.
#include <gtest/gtest.h>

#include "MeshParts.h"
#include "base/Errors.h"
#include "mesh/BoundaryGroups.h"

namespace weldline::test {
namespace {

Patch patch(const std::string& name, std::initializer_list<std::vector<int>> faces) {
    Patch result{name, {}};
    for (const std::vector<int>& face : faces) {
        result.faces.append(face);
    }
    return result;
}

// Left and right end of the row of two boxes, corners in any order.
const std::vector<int> leftEnd{3, 0, 1, 2};
const std::vector<int> rightEnd{8, 9, 10, 11};

GroupKind kindAt(const FvMesh& mesh, const BoundaryGroups& groups, double x) {
    for (int f = mesh.innerFaces; f < mesh.faceCount(); ++f) {
        if (mesh.faceCentre[static_cast<std::size_t>(f)].x == x) {
            return groups.kinds[static_cast<std::size_t>(f - mesh.innerFaces)];
        }
    }
    ADD_FAILURE() << "no face at " << x;
    return GroupKind::Wall;
}

std::string messageOf(const std::vector<Patch>& patches, const GroupPatterns& patterns = {}) {
    try {
        groupBoundaryFaces(buildFvMesh(boxRow({0, 1, 2})), patches, patterns);
        return "";
    } catch (const InputError& error) {
        return error.what();
    }
}

TEST(BoundaryGroups, byName) {
    const FvMesh mesh = buildFvMesh(boxRow({0, 1, 2}));
    const BoundaryGroups groups = groupBoundaryFaces(
        mesh, {patch("MainGate", {leftEnd}), patch("airVent", {rightEnd})}, GroupPatterns{});
    EXPECT_TRUE(groups.fromDataSet);
    EXPECT_EQ(kindAt(mesh, groups, 0), GroupKind::Inlet);
    EXPECT_EQ(kindAt(mesh, groups, 2), GroupKind::Outlet);
    EXPECT_EQ(kindAt(mesh, groups, 0.5), GroupKind::Wall);
    ASSERT_EQ(groups.patches.size(), 3U);
    EXPECT_EQ(groups.patches[0].name, "MainGate");
    EXPECT_EQ(groups.patches[0].kind, GroupKind::Inlet);
    EXPECT_EQ(groups.patches[0].faces, 1);
    EXPECT_EQ(groups.patches[1].kind, GroupKind::Outlet);
    EXPECT_EQ(groups.patches[2].name, "(no patch)");
    EXPECT_EQ(groups.patches[2].kind, GroupKind::Wall);
    EXPECT_EQ(groups.patches[2].faces, 8);
}

TEST(BoundaryGroups, withoutPatchesAllIsWall) {
    const FvMesh mesh = buildFvMesh(boxRow({0, 1}));
    const BoundaryGroups groups = groupBoundaryFaces(mesh, {}, GroupPatterns{});
    EXPECT_FALSE(groups.fromDataSet);
    EXPECT_EQ(groups.kinds, std::vector<GroupKind>(6, GroupKind::Wall));
    ASSERT_EQ(groups.patches.size(), 1U);
    EXPECT_EQ(groups.patches[0].faces, 6);
}

TEST(BoundaryGroups, symmetryAndOrderOfThePatterns) {
    const FvMesh mesh = buildFvMesh(boxRow({0, 1, 2}));
    const BoundaryGroups groups = groupBoundaryFaces(
        mesh, {patch("symmetryOfGate", {leftEnd}), patch("SYMMETRY", {rightEnd})}, GroupPatterns{});
    EXPECT_EQ(kindAt(mesh, groups, 0), GroupKind::Inlet);
    EXPECT_EQ(kindAt(mesh, groups, 2), GroupKind::Symmetry);
}

TEST(BoundaryGroups, ownPatterns) {
    const FvMesh mesh = buildFvMesh(boxRow({0, 1, 2}));
    GroupPatterns patterns;
    patterns.inlet = "^4$";
    const BoundaryGroups groups =
        groupBoundaryFaces(mesh, {patch("4", {leftEnd}), patch("40", {rightEnd})}, patterns);
    EXPECT_EQ(kindAt(mesh, groups, 0), GroupKind::Inlet);
    EXPECT_EQ(kindAt(mesh, groups, 2), GroupKind::Wall);
}

TEST(BoundaryGroups, brokenPatternIsWrongUsage) {
    const FvMesh mesh = buildFvMesh(boxRow({0, 1}));
    GroupPatterns patterns;
    patterns.outlet = "vent(";
    EXPECT_THROW(groupBoundaryFaces(mesh, {}, patterns), UsageError);
}

// Nodes 4 to 7 span the face between the two boxes.
TEST(BoundaryGroups, faceBetweenCells) {
    EXPECT_EQ(messageOf({patch("gate", {leftEnd, {4, 5, 6, 7}})}),
              "face 1 of patch 'gate' is no boundary face of a cell; a patch has to lie on the "
              "mesh's surface");
}

TEST(BoundaryGroups, faceThatNoCellHas) {
    EXPECT_NE(messageOf({patch("gate", {{0, 1, 2}})}), "");
}

TEST(BoundaryGroups, faceInTwoGroups) {
    EXPECT_EQ(messageOf({patch("gate", {leftEnd}), patch("vent", {leftEnd})}),
              "face 0 of patch 'vent' lies in patch 'gate', too, which belongs to another group; a "
              "face has one group");
    EXPECT_EQ(messageOf({patch("gate", {leftEnd}), patch("gateCopy", {leftEnd})}), "");
}

}  // namespace
}  // namespace weldline::test
