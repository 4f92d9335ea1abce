#include <algorithm>
#include <cstdio>

#include "CCommunication.h"
#include "Studies.h"
#include "TimedRanks.h"

namespace weldline {

void studyExchange(Ranks& ranks) {
    if (ranks.size() != 2) {
        if (ranks.rank() == 0) std::fputs("the exchange study needs two ranks\n", stderr);
        return;
    }
    for (int slots = 1; slots <= 1 << 20; slots *= 4) {
        HaloLinks links{{{1 - ranks.rank(), {}, {}}}};
        for (int s = 0; s < slots; ++s) {
            links.links[0].sendSlots.push_back(1 + s);
            links.links[0].receiveSlots.push_back(1 + slots + s);
        }
        const auto exchange = ranks.haloExchange(links);
        std::vector<double> values(2 * static_cast<std::size_t>(slots) + 1, 1.0);
        const int repetitions = std::clamp((1 << 22) / slots, 20, 2000);
        std::vector<double> seconds;
        for (int i = 0; i < repetitions; ++i) {
            const double start = clockSeconds();
            exchange->DDM_Exch(values.data());
            seconds.push_back(clockSeconds() - start);
        }
        std::nth_element(seconds.begin(), seconds.begin() + repetitions / 2, seconds.end());
        if (ranks.rank() == 0)
            std::printf("{\"bytes\": %zu, \"microseconds\": %.3f}\n", slots * sizeof(double),
                        1e6 * seconds[static_cast<std::size_t>(repetitions) / 2]);
    }
}

}  // namespace weldline
