#include "Exchange.h"

#include <algorithm>
#include <memory>

#include "CCommunication.h"
#include "Extent.h"

namespace weldline::core {

// The host addresses the slots of its own mesh. Where that has outgrown the arrays of the first
// binding, it gets a copy of its own length, and what fits comes back.
void exchange(const CKVR3DWeldLine& r, double* cellArray) {
    if (r.m_pCommunication == nullptr) return;
    const int slots = extentOf(r).slots;
    if (r.m_nCV_Total <= slots) {
        r.m_pCommunication->DDM_Exch(cellArray);
        return;
    }
    const auto copy = std::make_unique<double[]>(slotsUpTo(r.m_nCV_Total));
    std::copy_n(cellArray, slotsUpTo(slots), copy.get());
    r.m_pCommunication->DDM_Exch(copy.get());
    std::copy_n(copy.get(), slotsUpTo(slots), cellArray);
}

void exchange(const CKVR3DWeldLine& r, const CellVectors& g) {
    exchange(r, g.x);
    exchange(r, g.y);
    exchange(r, g.z);
}

}  // namespace weldline::core
