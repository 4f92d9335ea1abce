#pragma once

#include <functional>
#include <optional>
#include <string>

#include "CaseParameters.h"
#include "Tally.h"

namespace weldline::reference {

// Runs one case on the library and on the reference. The answer is the first difference in words,
// or nothing. Needs a Workspace.
std::optional<std::string> runCase(const CaseParameters& parameters, Tally& tally);

// The same in a process of its own: a crash and a run without end are differences, too.
std::optional<std::string> runCaseApart(const CaseParameters& parameters);

// The simplest case that still fails, found by trying simpler knobs one by one, each try in a
// process of its own, with its difference.
struct FailingCase {
    CaseParameters parameters;
    std::string difference;
};
FailingCase shrink(const CaseParameters& failing, const std::string& difference);

// What somebody needs to know about a failing case, the shrunk form included.
std::string report(const CaseParameters& failing, const std::string& difference);

}  // namespace weldline::reference
