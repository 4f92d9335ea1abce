#include "FillTimeSeries.h"

#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "base/Errors.h"
#include "base/ShortNumber.h"

namespace weldline {

void FillTimeSeries::check(double time, std::size_t values) const {
    if (!std::isfinite(time)) throw InputError("a time of the series is no finite number");
    if (m_steps == 0) return;
    if (time <= m_timeBefore)
        throw InputError("the times of the series do not ascend: " + shortNumber(time) +
                         " comes after " + shortNumber(m_timeBefore));
    if (values != m_times.size())
        throw InputError("the number of cells changes from " + std::to_string(m_times.size()) +
                         " at time " + shortNumber(m_timeBefore) + " to " + std::to_string(values) +
                         " at time " + shortNumber(time) +
                         "; a fill time needs the same mesh at all times");
}

double FillTimeSeries::crossing(double time, double before, double value) const {
    if (!std::isfinite(before)) return time;
    return m_timeBefore + (m_level - before) / (value - before) * (time - m_timeBefore);
}

void FillTimeSeries::add(double time, std::vector<double> values) {
    check(time, values.size());
    if (m_steps == 0) {
        m_times.assign(values.size(), std::numeric_limits<double>::quiet_NaN());
        m_states.assign(values.size(), 0);
    }
    for (std::size_t c = 0; c < values.size(); ++c) {
        const double value = values[c];
        if (!std::isfinite(value)) {
            m_states[c] |= noNumber;
        } else if (!isReached(c) && value >= m_level) {
            m_times[c] = m_steps == 0 ? time : crossing(time, m_before[c], value);
            m_states[c] |= m_steps == 0 ? reached | atStart : reached;
        } else if (isReached(c) && value < m_level) {
            m_states[c] |= emptied;
        }
    }
    m_before = std::move(values);
    m_timeBefore = time;
    ++m_steps;
}

}  // namespace weldline
