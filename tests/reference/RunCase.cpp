#include "RunCase.h"

#include "CrashNote.h"
#include "Processes.h"
#include "Side.h"

namespace weldline::reference {

namespace {

constexpr double longestCase = 150.0;  // seconds

}  // namespace

std::optional<std::string> runCase(const CaseParameters& parameters, Tally& tally) {
    noteCase(inWords(parameters));
    const Case randomCase = buildCase(parameters);
    const Side library = playLibrary(randomCase, Partitions::asThreads);
    const Side reference = playReference(randomCase);
    tally.add(parameters, reference);
    if (auto found = difference(library, reference)) return found;
    if (parameters.processes == 0) return std::nullopt;
    const Side apart = playLibrary(randomCase, Partitions::asProcesses);
    if (auto found = difference(apart, library)) return "processes against threads: " + *found;
    return std::nullopt;
}

std::optional<std::string> runCaseApart(const CaseParameters& parameters) {
    const auto run = [&](int) {
        silenceNotes();
        Tally unused;
        return runCase(parameters, unused).value_or("");
    };
    const Ending ending = inProcesses(1, longestCase, run).front();
    if (ending.bytes.empty()) return std::nullopt;
    return ending.bytes;
}

}  // namespace weldline::reference
