#include "SharedAngles.h"

#include <cmath>
#include <limits>

#include "comm/Messages.h"

namespace weldline {

namespace {

double smaller(double a, double b) {
    if (std::isnan(a) && std::isnan(b)) return std::numeric_limits<double>::quiet_NaN();
    if (std::isnan(a)) return b;
    if (a == b) return std::signbit(a) ? a : b;
    return b < a ? b : a;
}

}  // namespace

void takeSmallestAngles(Ranks& ranks, const std::vector<SharedNodes>& shared,
                        std::vector<double>& angles) {
    std::vector<std::vector<double>> toRanks(static_cast<std::size_t>(ranks.size()));
    for (const SharedNodes& list : shared)
        for (const int node : list.nodes)
            toRanks[static_cast<std::size_t>(list.rank)].push_back(
                angles[static_cast<std::size_t>(node)]);
    const std::vector<std::vector<double>> received = exchangeValues(ranks, toRanks);
    for (const SharedNodes& list : shared) {
        const std::vector<double>& others = received[static_cast<std::size_t>(list.rank)];
        for (std::size_t i = 0; i < list.nodes.size(); ++i) {
            double& own = angles[static_cast<std::size_t>(list.nodes[i])];
            own = smaller(own, others[i]);
        }
    }
}

}  // namespace weldline
