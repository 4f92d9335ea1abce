#pragma once

#include "comm/Ranks.h"

namespace weldline::test {

// What every implementation of Ranks promises, checked on each rank; a test calls it in a run of
// any size. Collective.
void checkRanks(Ranks& ranks);

}  // namespace weldline::test
