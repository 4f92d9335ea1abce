// Random cases without end: library against reference, from any seed, as long as one likes.
//
//   soak [SEED] [SECONDS]       default: seed 1, 60 seconds; 0 seconds: until interrupted
//   soak --replay "seed=7 ..."  one case again, as a failure printed it
//
// Exit codes: 0 no difference, 1 a difference was found, 2 wrong usage.
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

#include "RunCase.h"
#include "Workspace.h"

namespace {

using namespace weldline::reference;

volatile std::sig_atomic_t interrupted = 0;

int replay(const std::string& text) {
    const auto parameters = parseCase(text);
    if (!parameters) {
        std::fprintf(stderr, "soak: not a case: %s\n", text.c_str());
        return 2;
    }
    const Workspace workspace;
    Tally tally;
    const auto difference = runCase(*parameters, tally);
    std::printf("%s\n%s", inWords(*parameters).c_str(), tally.inWords().c_str());
    std::printf("%s\n", difference ? difference->c_str() : "no difference");
    return difference ? 1 : 0;
}

int soak(std::uint64_t seed, double seconds) {
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
        const CaseParameters parameters = drawCase(seed++);
        if (const auto difference = runCase(parameters, tally)) {
            std::printf("%s", report(parameters, *difference).c_str());
            return 1;
        }
        if (elapsed() > nextNews) {
            std::printf("%.0f s: %ld cases, next seed %llu\n", elapsed(), tally.cases,
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
    double seed = 1.0;
    double seconds = 60.0;
    try {
        if (argumentCount == 3 && std::string(arguments[1]) == "--replay") {
            return replay(arguments[2]);
        }
        if (argumentCount > 3 || (argumentCount > 1 && !readNumber(arguments[1], seed)) ||
            (argumentCount > 2 && !readNumber(arguments[2], seconds))) {
            std::fprintf(stderr, "usage: soak [SEED] [SECONDS] | soak --replay \"seed=...\"\n");
            return 2;
        }
        std::signal(SIGINT, [](int) { interrupted = 1; });
        return soak(static_cast<std::uint64_t>(seed), seconds);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "soak: %s\n", error.what());
        return 1;
    }
}
