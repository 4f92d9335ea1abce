#pragma once

#include <optional>
#include <string>

#include "CaseParameters.h"
#include "Events.h"

namespace weldline::reference {

// What the cases of a series were like and met, summed up.
struct Tally {
    long cases = 0;
    long runs = 0;
    long partitionedCases = 0;
    long casesWithMeetingAngles = 0;  // some node below 180 at the end by accepted pairs
    long casesOfMethod[5] = {};       // of these, by method 1 to 4
    long casesWithUndefinedGradients = 0;
    EventCounts events{};

    void add(const Tally& other);
    std::string inWords() const;
};

// Runs one case on the library and on the reference. The answer is the first difference in words,
// or nothing. Needs a Workspace.
std::optional<std::string> runCase(const CaseParameters& parameters, Tally& tally);

// The simplest case that still fails, found by trying simpler knobs one by one, with its
// difference.
struct FailingCase {
    CaseParameters parameters;
    std::string difference;
};
FailingCase shrink(const CaseParameters& failing, const std::string& difference);

// What somebody needs to know about a failing case, the shrunk form included.
std::string report(const CaseParameters& failing, const std::string& difference);

}  // namespace weldline::reference
