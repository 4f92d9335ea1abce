// Random cases without end: library against reference, from any seed, as long as one likes.
//
//   soak [SEED] [SECONDS]              default: seed 1, 60 seconds; 0 seconds: until interrupted
//   soak --processes [SEED] [SECONDS]  only cases with several partitions, which are played as
//                                      processes, too
//   soak --replay "seed=7 ..."         one case again, as a failure printed it
//   soak --shrink "seed=7 ..."         the simplest case that fails like this one; also for a case
//                                      that ends the process
//
// Exit codes: 0 no difference, 1 a difference was found, 2 wrong usage.
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "RunCase.h"
#include "Workspace.h"

namespace {

using namespace weldline::reference;

volatile std::sig_atomic_t interrupted = 0;

int complain(const std::string& text) {
    std::fprintf(stderr, "soak: not a case: %s\n", text.c_str());
    return 2;
}

int replay(const std::string& text) {
    const auto parameters = parseCase(text);
    if (!parameters) return complain(text);
    const Workspace workspace;
    const auto difference = runCaseApart(*parameters);
    std::printf("%s\n%s\n", inWords(*parameters).c_str(),
                difference ? difference->c_str() : "no difference");
    return difference ? 1 : 0;
}

int simplify(const std::string& text) {
    const auto parameters = parseCase(text);
    if (!parameters) return complain(text);
    const Workspace workspace;
    const auto difference = runCaseApart(*parameters);
    std::printf("%s", difference ? report(*parameters, *difference).c_str() : "no difference\n");
    return difference ? 1 : 0;
}

int soak(std::uint64_t seed, double seconds, bool processes) {
    const Workspace workspace;
    const auto start = std::chrono::steady_clock::now();
    const auto elapsed = [&] {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
        return passed.count();
    };
    Tally tally;
    double nextNews = 30.0;
    const std::uint64_t first = seed;
    while (interrupted == 0 && (seconds == 0.0 || elapsed() < seconds)) {
        CaseParameters parameters = drawCase(seed++);
        if (processes && parameters.partitions == 1) continue;
        parameters.processes = processes ? 1 : 0;
        if (const auto difference = runCase(parameters, tally)) {
            std::printf("After %ld cases:\n%s", tally.cases(),
                        report(parameters, *difference).c_str());
            return 1;
        }
        if (elapsed() > nextNews) {
            std::printf("%.0f s: %ld cases, next seed %llu\n", elapsed(), tally.cases(),
                        static_cast<unsigned long long>(seed));
            std::fflush(stdout);
            nextNews += 30.0;
        }
    }
    std::printf("Seeds %llu to %llu in %.0f s, no difference.\n%s",
                static_cast<unsigned long long>(first), static_cast<unsigned long long>(seed - 1),
                elapsed(), tally.inWords().c_str());
    return 0;
}

bool readNumber(const char* text, double& value) {
    char* end = nullptr;
    value = std::strtod(text, &end);
    return end != text && *end == '\0' && value >= 0.0;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    std::vector<std::string> words(arguments + 1, arguments + argumentCount);
    double seed = 1.0;
    double seconds = 60.0;
    try {
        if (words.size() == 2 && words[0] == "--replay") return replay(words[1]);
        if (words.size() == 2 && words[0] == "--shrink") return simplify(words[1]);
        const bool processes = !words.empty() && words[0] == "--processes";
        if (processes) words.erase(words.begin());
        if (words.size() > 2 || (!words.empty() && !readNumber(words[0].c_str(), seed)) ||
            (words.size() > 1 && !readNumber(words[1].c_str(), seconds))) {
            std::fprintf(stderr,
                         "usage: soak [--processes] [SEED] [SECONDS]\n"
                         "       soak --replay \"seed=...\" | soak --shrink \"seed=...\"\n");
            return 2;
        }
        std::signal(SIGINT, [](int) { interrupted = 1; });
        return soak(static_cast<std::uint64_t>(seed), seconds, processes);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "soak: %s\n", error.what());
        return 1;
    }
}
