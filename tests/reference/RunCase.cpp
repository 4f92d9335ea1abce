#include "RunCase.h"

#include <cmath>
#include <cstdio>
#include <exception>
#include <thread>
#include <vector>

#include "CrashNote.h"
#include "Player.h"

namespace weldline::reference {

namespace {

// All that one side of a case produced.
struct Side {
    std::vector<Log> logs;
    std::string output;
    std::vector<Outcome> outcomes;
};

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
Side playSide(const Case& randomCase, const std::string& folder) {
    const CasePaths paths(randomCase.parameters, folder);
    paths.prepare(randomCase.parameters);
    const int partitions = randomCase.partitions();
    Side side;
    side.logs.resize(partitions);
    side.outcomes.resize(partitions);
    Collective collective(partitions);
    CapturedOutput output;
    std::vector<std::thread> threads;
    for (int q = 1; q < partitions; ++q) {
        threads.emplace_back([&, q] {
            playPartition<Calculator>(randomCase, q, collective, paths, side.logs[q],
                                      side.outcomes[q]);
        });
    }
    playPartition<Calculator>(randomCase, 0, collective, paths, side.logs[0], side.outcomes[0]);
    for (std::thread& thread : threads) thread.join();
    if (collective.broken()) side.logs[0].text("collective", "broken");
    side.output = output.text();
    return side;
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

long pairsAccepted(const EventCounts& events) {
    long pairs = 0;
    for (Event event :
         {Event::acceptedNodePoint, Event::acceptedFacePoint, Event::acceptedConverging}) {
        pairs += events[static_cast<std::size_t>(event)];
    }
    return pairs;
}

void addResults(Tally& tally, const Case& randomCase, const Side& reference) {
    Tally met;
    bool below = false;
    bool undefined = false;
    for (std::size_t q = 0; q < reference.logs.size(); ++q) {
        for (double angle : reference.logs[q].last("meeting angles")) {
            below = below || angle < 180.0;
        }
        for (double component : reference.logs[q].last("m_pGradX")) {
            undefined = undefined || !std::isfinite(component);
        }
        for (std::size_t i = 0; i < eventCount; ++i) {
            met.events[i] += reference.outcomes[q].events[i];
        }
    }
    const int method = reference.outcomes[0].method;
    met.cases = 1;
    met.runs = randomCase.parameters.runs;
    met.partitionedCases = randomCase.partitions() > 1 ? 1 : 0;
    met.casesWithUndefinedGradients = undefined ? 1 : 0;
    if (below && method >= 1 && method <= 4 && pairsAccepted(met.events) > 0) {
        met.casesWithMeetingAngles = 1;
        met.casesOfMethod[method] = 1;
    }
    tally.add(met);
}

}  // namespace

void Tally::add(const Tally& other) {
    cases += other.cases;
    runs += other.runs;
    partitionedCases += other.partitionedCases;
    casesWithMeetingAngles += other.casesWithMeetingAngles;
    casesWithUndefinedGradients += other.casesWithUndefinedGradients;
    for (int m = 0; m < 5; ++m) casesOfMethod[m] += other.casesOfMethod[m];
    for (std::size_t i = 0; i < eventCount; ++i) events[i] += other.events[i];
}

std::string Tally::inWords() const {
    const auto line = [](long count, const std::string& what) {
        return std::to_string(count) + ' ' + what + '\n';
    };
    std::string text = line(cases, "cases") + line(runs, "runs") +
                       line(partitionedCases, "cases in several partitions") +
                       line(casesWithMeetingAngles, "cases with angles below 180 at the end");
    for (int m = 1; m <= 4; ++m) {
        text += line(casesOfMethod[m], "of these by method " + std::to_string(m));
    }
    text += line(casesWithUndefinedGradients, "cases with undefined or infinite gradients");
    for (std::size_t i = 0; i < eventCount; ++i) text += line(events[i], eventNames[i]);
    return text;
}

std::optional<std::string> runCase(const CaseParameters& parameters, Tally& tally) {
    noteCase(inWords(parameters));
    const Case randomCase = buildCase(parameters);
    const Side library = parameters.handle == 1
                             ? playSide<CKVR3D_WeldLine_Manipulator>(randomCase, "library")
                             : playSide<CKVR3DWeldLine>(randomCase, "library");
    const Side reference = playSide<Reference>(randomCase, "reference");
    addResults(tally, randomCase, reference);
    return difference(library, reference);
}

}  // namespace weldline::reference
