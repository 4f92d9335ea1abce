#pragma once

#include <cstddef>
#include <memory>

#include "Ranks.h"

namespace weldline {

// The processes of an MPI run. MPI itself is seen by MpiRanks.cpp only.

// A part of a message; longer messages go in several. MPI counts in 32-bit numbers.
inline constexpr std::size_t largestMpiMessage = std::size_t{1} << 30U;

// MPI from its start to its end in this process.
class MpiSession {
  public:
    MpiSession(int& argc, char**& argv);
    ~MpiSession();
    MpiSession(const MpiSession&) = delete;
    MpiSession& operator=(const MpiSession&) = delete;

    // All processes of the run.
    std::unique_ptr<Ranks> world(std::size_t largestMessage = largestMpiMessage);

    // Ends all processes of the run at once, whatever they wait for.
    [[noreturn]] void abort(int exitCode);
};

// The processes of a communicator, given by its Fortran handle (MPI_Comm_c2f), the one form whose
// type is the same in every MPI. The communicator is duplicated, so that messages of others cannot
// be taken for ours, and stays the caller's. Collective. A failure of MPI throws RunError.
std::unique_ptr<Ranks> mpiRanks(int communicator, std::size_t largestMessage = largestMpiMessage);

}  // namespace weldline
