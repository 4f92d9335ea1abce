// Simplification of failing cases.
#include <vector>

#include "RunCase.h"

namespace weldline::reference {

namespace {

// Values that are simpler than the present one, the simplest first.
std::vector<int> simplerValues(int present, int simplest) {
    std::vector<int> values;
    if (present == simplest) return values;
    values.push_back(simplest);
    const int half = simplest + (present - simplest) / 2;
    if (half != simplest && half != present) values.push_back(half);
    const int nearer = present > simplest ? present - 1 : present + 1;
    if (nearer != simplest && nearer != half) values.push_back(nearer);
    return values;
}

}  // namespace

FailingCase shrink(const CaseParameters& failing, const std::string& difference) {
    FailingCase best{failing, difference};
    CaseParameters simplest;
    simplest.nx = simplest.ny = simplest.nz = 1;
    int tries = 600;
    bool simplified = true;
    while (simplified && tries > 0) {
        simplified = false;
        for (const Knob& knob : knobs()) {
            for (int value : simplerValues(best.parameters.*knob.field, simplest.*knob.field)) {
                CaseParameters candidate = best.parameters;
                candidate.*knob.field = value;
                if (--tries < 0) return best;
                if (const auto found = runCaseApart(candidate)) {
                    best = {candidate, *found};
                    simplified = true;
                    break;
                }
            }
        }
    }
    return best;
}

std::string report(const CaseParameters& failing, const std::string& difference) {
    const FailingCase small = shrink(failing, difference);
    return "Case " + inWords(failing) + "\n" + difference +
           "\nShrunk: " + inWords(small.parameters) + "\n" + small.difference +
           "\nReplay: scripts/soak --replay \"" + inWords(small.parameters) + "\"\n";
}

}  // namespace weldline::reference
