#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace weldline {

// When each cell of a filling run was reached, from its phase fraction over time. The fill time of
// a cell is that of the first upward crossing of the level, linear in time between the two steps
// around it:
//
//   t = t0 + (level - v0) / (v1 - v0) (t1 - t0)   with v0 < level <= v1
//
// A cell that is not below the level at the first step was full at the start: its fill time is that
// of the first step. What a cell does after it was reached does not change its fill time.
//
// A value that is no finite number is not taken as full. A cell that is full one step later was
// reached at that step: there is nothing to interpolate from.
//
// Holds the step before; the steps come and go one by one.
class FillTimeSeries {
  public:
    explicit FillTimeSeries(double level = 0.5) : m_level(level) {}

    // The next step, one value per cell. Throws InputError when the time does not lie after the one
    // before or the number of values is another.
    void add(double time, std::vector<double> values);

    std::size_t steps() const { return m_steps; }

    // Per cell; NaN where the cell is never full.
    const std::vector<double>& times() const { return m_times; }

    bool isReached(std::size_t cell) const { return (m_states[cell] & reached) != 0; }
    bool wasFullAtStart(std::size_t cell) const { return (m_states[cell] & atStart) != 0; }
    bool hasEmptied(std::size_t cell) const { return (m_states[cell] & emptied) != 0; }
    bool hasNoNumber(std::size_t cell) const { return (m_states[cell] & noNumber) != 0; }

  private:
    static constexpr std::uint8_t reached = 1;
    static constexpr std::uint8_t atStart = 2;
    static constexpr std::uint8_t emptied = 4;   // below the level after it was reached
    static constexpr std::uint8_t noNumber = 8;  // at one step at least

    void check(double time, std::size_t values) const;
    double crossing(double time, double before, double value) const;

    double m_level;
    std::size_t m_steps = 0;
    double m_timeBefore = 0.0;
    std::vector<double> m_before;  // values of the step before
    std::vector<double> m_times;
    std::vector<std::uint8_t> m_states;
};

}  // namespace weldline
