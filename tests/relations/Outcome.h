#pragma once

#include <array>
#include <string>
#include <vector>

#include "CKVR3DWeldLine.h"
#include "TestHost.h"

namespace weldline::test {

// What a run has left in the calculator, slots 1 and up.
struct Outcome {
    std::vector<double> angle;                    // per node
    std::vector<double> variable;                 // per cell slot, and all that follow
    std::array<std::vector<double>, 3> gradient;  // first set: x, y, z
    std::array<std::vector<double>, 3> secondGradient;
    std::vector<int> flatFlag;

    int nodesBelow180() const;
};

// All objects of the host, then setFlowData.
void bind(CKVR3DWeldLine& calculator, TestHost& host);

// Writes the control file, calculates, and answers what is there then.
Outcome run(CKVR3DWeldLine& calculator, TestHost& host, const std::string& control);

// The same with a new calculator, bound.
Outcome freshRun(TestHost& host, const std::string& control);

// One way through the calculation: method, gradient method, and which gradient set method 4 reads.
struct Choice {
    int method;
    int gradientMethod;
    double gradSetSwitch = 1.0;
};

std::string inWords(const Choice& choice);

// Every method with every gradient scheme it can have; method 4 with either gradient set.
std::vector<Choice> everyChoice();

}  // namespace weldline::test
