#include "LaunchedRanks.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "OneRank.h"

namespace weldline {

namespace {

// What launchers tell their processes: Open MPI, those that speak PMIx or PMI, and Intel's and
// Microsoft's.
constexpr std::array launcherVariables{"OMPI_COMM_WORLD_SIZE", "PMIX_RANK", "PMI_SIZE", "PMI_RANK",
                                       "MPI_LOCALNRANKS"};

MpiSession* running = nullptr;

}  // namespace

bool LaunchedRanks::hasLauncher() {
    return std::any_of(launcherVariables.begin(), launcherVariables.end(),
                       [](const char* name) { return std::getenv(name) != nullptr; });
}

LaunchedRanks::LaunchedRanks(int& argc, char**& argv) {
    if (hasLauncher()) {
        m_session = std::make_unique<MpiSession>(argc, argv);
        running = m_session.get();
        m_ranks = m_session->world();
    } else {
        m_ranks = std::make_unique<OneRank>();
    }
}

LaunchedRanks::~LaunchedRanks() {
    running = nullptr;
    m_ranks.reset();
}

void endAllRanks(int exitCode) {
    if (running != nullptr) running->abort(exitCode);
    ::_exit(exitCode);
}

}  // namespace weldline
