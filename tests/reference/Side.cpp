#include "Side.h"

#include <exception>
#include <thread>

#include "Processes.h"

namespace weldline::reference {

namespace {

constexpr double longestCase = 120.0;  // seconds, for all partitions as processes

template <class Calculator>
void playPartition(const Case& randomCase, int partition, Collective& collective,
                   const CasePaths& paths, Log& log, Outcome& outcome) {
    try {
        Player<Calculator> player(randomCase, partition, collective, paths, log);
        player.play(outcome);
    } catch (const std::exception& error) {
        log.text("exception", error.what());
        collective.leave();
    }
}

template <class Calculator>
void playInThreads(const Case& randomCase, Collective& collective, const CasePaths& paths,
                   Side& side) {
    std::vector<std::thread> threads;
    for (int q = 1; q < randomCase.partitions(); ++q) {
        threads.emplace_back([&, q] {
            playPartition<Calculator>(randomCase, q, collective, paths, side.logs[q],
                                      side.outcomes[q]);
        });
    }
    playPartition<Calculator>(randomCase, 0, collective, paths, side.logs[0], side.outcomes[0]);
    for (std::thread& thread : threads) thread.join();
}

// The outcomes stay empty: only the reference has any.
template <class Calculator>
void playInProcesses(const Case& randomCase, Collective& collective, const CasePaths& paths,
                     Side& side) {
    const auto play = [&](int partition) {
        Log log;
        Outcome unused;
        playPartition<Calculator>(randomCase, partition, collective, paths, log, unused);
        return log.bytes();
    };
    const std::vector<Ending> endings = inProcesses(randomCase.partitions(), longestCase, play);
    for (std::size_t q = 0; q < endings.size(); ++q) {
        if (endings[q].orderly) {
            side.logs[q] = Log::fromBytes(endings[q].bytes);
        } else {
            side.logs[q].text("process", endings[q].bytes);
        }
    }
}

template <class Calculator>
Side playSide(const Case& randomCase, const std::string& folder, Partitions partitions) {
    const CasePaths paths(randomCase.parameters, folder);
    paths.prepare(randomCase.parameters);
    Side side;
    side.logs.resize(static_cast<std::size_t>(randomCase.partitions()));
    side.outcomes.resize(side.logs.size());
    Collective collective(randomCase.partitions(), randomCase.largestSlots());
    CapturedOutput output;
    if (partitions == Partitions::asProcesses) {
        playInProcesses<Calculator>(randomCase, collective, paths, side);
    } else {
        playInThreads<Calculator>(randomCase, collective, paths, side);
    }
    if (collective.broken()) side.logs[0].text("collective", "broken");
    side.output = output.text();
    return side;
}

}  // namespace

Side playLibrary(const Case& randomCase, Partitions partitions) {
    return randomCase.parameters.handle == 1
               ? playSide<CKVR3D_WeldLine_Manipulator>(randomCase, "measured", partitions)
               : playSide<CKVR3DWeldLine>(randomCase, "measured", partitions);
}

Side playReference(const Case& randomCase) {
    return playSide<Reference>(randomCase, "expected", Partitions::asThreads);
}

std::optional<std::string> difference(const Side& library, const Side& reference) {
    for (std::size_t q = 0; q < library.logs.size(); ++q) {
        if (auto found = Log::difference(library.logs[q], reference.logs[q])) {
            return "partition " + std::to_string(q) + ", " + *found;
        }
    }
    if (library.output != reference.output) {
        return "standard output: library:\n" + library.output + "\n-- reference:\n" +
               reference.output + "\n--";
    }
    return std::nullopt;
}

}  // namespace weldline::reference
