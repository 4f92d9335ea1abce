#pragma once

#include "Outcome.h"
#include "ShakenBox.h"

namespace weldline::test {

// Two runs of the shaken box, each in a new calculator, with a change of the host in between.
struct Comparison {
    Outcome before;
    Outcome after;
};

template <class Change>
Comparison compareRuns(const Choice& choice, Change change) {
    TestHost host;
    addShakenBox(host);
    host.gradSetSwitch = choice.gradSetSwitch;
    const std::string control = settings(choice.method, choice.gradientMethod);
    Outcome before = freshRun(host, control);
    change(host);
    return {std::move(before), freshRun(host, control)};
}

}  // namespace weldline::test
