#pragma once

#include "comm/MpiRanks.h"

namespace weldline::test {

// MPI of this test program: every process of a run executes the same tests.
MpiSession& mpiSession();

}  // namespace weldline::test
