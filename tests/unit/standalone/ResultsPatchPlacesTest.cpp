#include <gtest/gtest.h>

#include "BindBoxMesh.h"
#include "GridMesh.h"
#include "comm/OneRank.h"
#include "results/PatchPlaces.h"

namespace weldline::test {

// What a result tells of its patches is enough to find their faces again.
TEST(PatchPlaces, groups_come_back_from_places) {
    const MeshPart part = wholePart(gridMesh(5, 3, 3, 0.2, 8));
    const FvMesh fv = buildFvMesh(part.mesh);
    const BoundaryGroups groups = groupBoundaryFaces(fv, part.patches, {});
    OneRank ranks;
    const PatchPlaces places = findPatchPlaces(ranks, fv, part.patches, groups);
    ASSERT_EQ(places.names, (std::vector<std::string>{"gate", "vent", "symmetry"}));
    const PlacedGroups placed =
        groupsAt(fv, places, {GroupKind::Inlet, GroupKind::Outlet, GroupKind::Symmetry});
    EXPECT_EQ(placed.groups.kinds, groups.kinds);
    EXPECT_EQ(placed.lost, 0);
}

// The corners of a face added in another order.
TEST(PatchPlaces, a_rounding_error_loses_no_face) {
    const FvMesh fv = boxMesh(2, 1, 1);
    PatchPlaces places{{"gate"}, {0}, {{0.0, 0.5 + 1e-15, 0.5}}};
    const PlacedGroups placed = groupsAt(fv, places, {GroupKind::Inlet});
    EXPECT_EQ(placed.groups.kinds, boxGroups(fv, "IWWWWW").kinds);
}

TEST(PatchPlaces, places_without_a_face_are_counted) {
    const FvMesh fv = boxMesh(2, 1, 1);
    PatchPlaces places{{"gate"}, {0, 0}, {{1.0, 0.5, 0.5}, {0.0, 0.5, 0.4}}};
    const PlacedGroups placed = groupsAt(fv, places, {GroupKind::Inlet});
    EXPECT_EQ(placed.groups.kinds, boxGroups(fv, "WWWWWW").kinds);
    EXPECT_EQ(placed.lost, 2);
}

}  // namespace weldline::test
