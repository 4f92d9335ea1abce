#include "ArrayRecorder.h"

namespace weldline {

void ArrayRecorder::DDM_Exch(double* array) {
    const auto [found, isNew] = m_positions.try_emplace(array, m_arrays.size());
    if (isNew) m_arrays.emplace_back();
    RecordedArray& kept = m_arrays[found->second];
    kept.last.assign(array + 1, array + 1 + m_cells);
    if (isNew) kept.first = kept.last;
}

}  // namespace weldline
