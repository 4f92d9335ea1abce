#include "FaceKinds.h"

namespace weldline::test {

namespace {

Group groupOf(Kind kind) {
    if (kind == Kind::Inlet) return Group::Inlet;
    return kind == Kind::Symm ? Group::Symm : Group::Wall;
}

}  // namespace

const char* nameOf(Kind kind) {
    constexpr std::array<const char*, 5> names{"inner", "interface", "inlet", "symmetry", "wall"};
    return names[static_cast<std::size_t>(kind)];
}

PlacedFace placeFace(TestHost& host, Kind kind, int cell, Point area, Point otherCentre) {
    if (kind == Kind::Inner) {
        const int other = host.addCell(otherCentre, 1.0, {});
        return {kind, host.addInner(cell, other, area, otherCentre, 1.0), other};
    }
    if (kind == Kind::Interface)
        return {kind, host.addInterface(cell, area, otherCentre, 1.0, otherCentre, 1.0, {}), 0};
    return {kind, host.addBoundary(groupOf(kind), cell, area, otherCentre), 0};
}

int otherSlot(const TestHost& host, const PlacedFace& face) {
    if (face.kind == Kind::Inner) return face.otherCell;
    if (face.kind == Kind::Interface) return host.haloSlot(face.number);
    return host.boundarySlot(groupOf(face.kind), face.number);
}

}  // namespace weldline::test
