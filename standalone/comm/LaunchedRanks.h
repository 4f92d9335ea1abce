#pragma once

#include <memory>

#include "MpiRanks.h"
#include "Ranks.h"

namespace weldline {

// The ranks that the program was started with: the processes of an MPI run where a launcher such as
// mpirun started it, else the process alone. Without a launcher MPI is left asleep: its start takes
// time, and needs rights and places that a single process does not. One at a time.
class LaunchedRanks {
  public:
    LaunchedRanks(int& argc, char**& argv);
    ~LaunchedRanks();
    LaunchedRanks(const LaunchedRanks&) = delete;
    LaunchedRanks& operator=(const LaunchedRanks&) = delete;

    Ranks& get() { return *m_ranks; }

    // Whether a launcher started this process.
    static bool hasLauncher();

  private:
    std::unique_ptr<MpiSession> m_session;  // null without a launcher
    std::unique_ptr<Ranks> m_ranks;
};

// Ends this process, and all others of an MPI run, whatever they wait for.
[[noreturn]] void endAllRanks(int exitCode);

}  // namespace weldline
