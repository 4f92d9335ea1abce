#include "LibraryFields.h"

#include <algorithm>
#include <limits>

#include "FlowDirection.h"
#include "base/Errors.h"

namespace weldline {

namespace {

constexpr double kVanishedGradient = 1e-30;  // the flat limit of the default gradient

// One gradient set of the library.
class GradientSet {
  public:
    GradientSet(const RecordedArrays& arrays, std::size_t x)
        : m_x(arrays[x]), m_y(arrays[x + 1]), m_z(arrays[x + 2]) {}

    double steepness(std::size_t cell) const {
        return norm({m_x.first[cell], m_y.first[cell], m_z.first[cell]});
    }
    Vec3 smoothed(std::size_t cell) const {
        return {m_x.last[cell], m_y.last[cell], m_z.last[cell]};
    }

  private:
    const RecordedArray &m_x, &m_y, &m_z;
};

std::vector<GradientSet> setsOf(const RecordedArrays& arrays, std::size_t count) {
    std::vector<GradientSet> sets;
    for (std::size_t s = count; s > 0; --s) sets.emplace_back(arrays, arrays.size() - 3 * s);
    return sets;
}

std::size_t numberOfSets(const Stages& stages) {
    if (stages.first == FirstGradient::None) return 0;
    return stages.second == SecondGradient::None ? 1 : 2;
}

}  // namespace

bool isFlat(const LibraryFields& fields, int cell) {
    return fields.steepness[static_cast<std::size_t>(cell)] < fields.flatLimit;
}

LibraryFields libraryFields(const RecordedArrays& arrays, const std::vector<float>& fillTime,
                            const Settings& settings, bool secondSet) {
    const Stages stages = stagesOf(settings);
    const std::size_t count = numberOfSets(stages);
    const bool isSmoothed = settings.smoothBefore > 0;
    if (arrays.size() < 3 * count + (isSmoothed ? 1 : 0))
        throw RunError("the calculation handed over " + std::to_string(arrays.size()) +
                       " arrays, fewer than its settings let expect");
    LibraryFields fields;
    fields.fillTime = fillTime;
    fields.smoothed =
        isSmoothed ? arrays.front().last : std::vector<double>(fillTime.begin(), fillTime.end());
    fields.gradient.resize(fillTime.size());
    fields.steepness.assign(fillTime.size(), std::numeric_limits<double>::infinity());
    fields.flatLimit =
        stages.first == FirstGradient::Upwind ? kFlatFillTimeGradient : kVanishedGradient;
    const std::vector<GradientSet> sets = setsOf(arrays, count);
    const std::size_t compared = count == 2 && secondSet ? 1 : 0;
    for (std::size_t c = 0; c < fillTime.size() && count > 0; ++c) {
        // A length that is not a number is not short.
        for (const GradientSet& set : sets)
            if (const double length = set.steepness(c); length < fields.steepness[c])
                fields.steepness[c] = length;
        // The library makes a flat gradient zero after the exchange that shows it; without a later
        // pass of smoothing nothing shows the zero.
        const bool isZeroed =
            settings.smoothAfter < 1 && sets[compared].steepness(c) < fields.flatLimit;
        if (!isZeroed) fields.gradient[c] = sets[compared].smoothed(c);
    }
    return fields;
}

}  // namespace weldline
