#pragma once

#include <string>
#include <vector>

#include "BoxMesh.h"
#include "CKVR3DWeldLine.h"
#include "ControlText.h"
#include "TestHost.h"

namespace weldline::test {

// A calculator bound to a box of unit cubes, the way a solver binds it.
class Rig {
  public:
    explicit Rig(int nx = 2, int ny = 2, int nz = 2, const GroupOf& groupOf = wallEverywhere);

    void bind();  // all objects, then setFlowData; the record of host calls starts empty
    int run(const std::string& control);  // writes the control file and calculates

    // The host's calls since the binding; exchanges say which of the calculator's arrays they
    // refreshed: "exchange variable", "exchange gradX", "exchange grad2X", "exchange workX", ...
    std::vector<std::string> calls() const;
    std::vector<std::string> traceLines() const;  // of the trace file, as written up to now

    TestHost host;
    CKVR3DWeldLine calculator;
};

// The slots 0 to `last` of an array.
template <class Value>
std::vector<Value> slotsOf(const Value* array, int last) {
    return {array, array + last + 1};
}

// True when both hold the same bits, slot by slot; a NaN equals a NaN.
bool sameBits(const std::vector<double>& left, const std::vector<double>& right);

std::vector<std::string> linesOf(const std::string& text);

}  // namespace weldline::test
