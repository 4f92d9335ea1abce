#include "Rows.h"

namespace weldline::core {

int* breadthFirst(const Rows<int>& neighbours, int rows, ArrayOwner& memory) {
    int* order = memory.zeros<int>(slotsUpTo(rows));
    ArrayOwner scratch;
    bool* isPlaced = scratch.zeros<bool>(slotsUpTo(rows));
    int placed = 0;
    const auto place = [&](int number) {
        if (isPlaced[number]) return;
        isPlaced[number] = true;
        order[++placed] = number;
    };
    int seen = 0;
    for (int first = 1; first <= rows; ++first) {
        place(first);
        while (seen < placed) {
            for (const int neighbour : neighbours[order[++seen]]) place(neighbour);
        }
    }
    return order;
}

}  // namespace weldline::core
