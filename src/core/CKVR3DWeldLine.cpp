#include "CKVR3DWeldLine.h"

#include "Trace.h"

namespace {

// The two reserved fields hold char arrays where somebody has set them.
void releaseReserved(void* flat, void** rows, int lastRow) {
    delete[] static_cast<char*>(flat);
    if (rows == nullptr) return;
    for (int row = 0; row <= lastRow; ++row) delete[] static_cast<char*>(rows[row]);
    delete[] rows;
}

}  // namespace

CKVR3DWeldLine::CKVR3DWeldLine() = default;

// The work arrays go with m_Storage; the RBF objects are destroyed in reverse order of
// construction.
CKVR3DWeldLine::~CKVR3DWeldLine() {
    releaseReserved(m_pReserved1, m_ppReserved2, m_nCV_Total);
    weldline::core::trace(*this, "calWeldLine: ~CKVR3DWeldLine...Done!!\n");
    if (m_pDebugFile != nullptr) std::fclose(m_pDebugFile);
}
