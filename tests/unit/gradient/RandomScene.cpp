#include "RandomScene.h"

#include <cmath>

namespace weldline::test {

double Dice::value() {
    const double limit = 1e-30;
    switch (below(12)) {
        case 0:
            return 0.0;
        case 1:
            return limit;
        case 2:
            return std::nextafter(limit, 0.0);
        case 3:
            return std::nextafter(limit, 1.0);
        case 4:
            return -between(0.0, 3.0);
        case 5:
        case 6:
            return 1.25;
        case 7:
            return 9007199254740992.0;
        default:
            return between(0.1, 10.0);
    }
}

double Dice::wildValue() {
    const int side = below(12);
    if (side == 0) return NaN;
    if (side == 1) return HUGE_VAL;
    return value();
}

Point Dice::point() {
    return {between(-2.0, 2.0), between(-2.0, 2.0), between(-2.0, 2.0)};
}

void addRandomScene(TestHost& host, Dice& dice) {
    const int cells = 1 + dice.below(6);
    const auto cell = [&] { return 1 + dice.below(cells); };
    for (int c = 0; c < cells; ++c)
        host.addCell(dice.point(), dice.below(20) == 0 ? 0.0 : dice.between(0.1, 4.0), {});
    for (int f = cells == 1 ? 0 : dice.below(12); f > 0; --f) {
        const int first = cell(), second = 1 + (first - 1 + 1 + dice.below(cells - 1)) % cells;
        host.addInner(first, second, dice.point(), dice.point(), dice.unit());
    }
    const Group groups[] = {Group::Wall, Group::Inlet, Group::Outlet, Group::Symm};
    for (int f = 4 + dice.below(10); f > 0; --f)
        host.addBoundary(groups[dice.below(4)], cell(), dice.point(), dice.point());
    for (int f = dice.below(6); f > 0; --f)
        host.addInterface(cell(), dice.point(), dice.point(), dice.unit(), dice.point(),
                          dice.between(0.1, 4.0), {});
}

RbfRows randomRbfRows(Dice& dice, int faces, int slots) {
    RbfRows rows;
    for (int f = 0; f < faces; ++f) {
        const int size = dice.below(6);
        std::vector<int> stencil;
        std::vector<double> weights;
        for (int j = 0; j < size; ++j) {
            stencil.push_back(1 + dice.below(slots));
            weights.push_back(dice.between(-1.0, 2.0));
        }
        rows.stencils.push_back(stencil);
        rows.weights.push_back(weights);
    }
    return rows;
}

ChangingHalo::ChangingHalo(TestHost& host) {
    const int faces = host.partition()->NParInterFace();
    for (int k = 1; k <= faces; ++k) m_slots.push_back(host.haloSlot(k));
}

void ChangingHalo::operator()(double* cellArray) {
    ++m_calls;
    for (const int slot : m_slots) cellArray[slot] = 0.75 * cellArray[1] + 0.125 * m_calls;
}

}  // namespace weldline::test
