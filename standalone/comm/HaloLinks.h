#pragma once

#include <vector>

namespace weldline {

// Which cell values go where in a halo exchange. Slots are those of the library's cell arrays,
// 1-based. What one rank sends along a link, the other receives in the same order.
struct HaloLinks {
    struct Link {
        int rank = 0;                   // the neighbour
        std::vector<int> sendSlots;     // own cells
        std::vector<int> receiveSlots;  // halo slots
    };
    std::vector<Link> links;  // by ascending rank
};

}  // namespace weldline
