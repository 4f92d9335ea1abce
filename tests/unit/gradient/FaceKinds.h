#pragma once

#include <array>

#include "TestHost.h"

namespace weldline::test {

// The face kinds that take part in sums over a cell's faces.
enum class Kind { Inner, Interface, Inlet, Symm, Wall };

inline constexpr std::array<Kind, 5> allKinds{Kind::Inner, Kind::Interface, Kind::Inlet, Kind::Symm,
                                              Kind::Wall};

const char* nameOf(Kind kind);

// A face between `cell` and something else: a new cell of volume 1 (inner), a new halo slot of
// volume 1 (interface) or a new boundary slot. `otherCentre` is the centre of the other cell or,
// on the boundary, of the face; lambda is 1, so that the plain face value is the other side's.
struct PlacedFace {
    Kind kind;
    int number;     // within its kind
    int otherCell;  // only inner faces
};

PlacedFace placeFace(TestHost& host, Kind kind, int cell, Point area, Point otherCentre);

// Slot of the other side, after host.finish().
int otherSlot(const TestHost& host, const PlacedFace& face);

}  // namespace weldline::test
