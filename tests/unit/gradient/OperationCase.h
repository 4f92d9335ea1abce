#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "NumericsTest.h"

namespace weldline::test {

// One operation on the variable phi with the gradient g as its result, for tests that hold for all.
struct Operation {
    const char* name;
    void (*run)(CKVR3DWeldLine& calc, double* phi, Vectors& g);
};

inline void PrintTo(const Operation& operation, std::ostream* out) {
    *out << operation.name;
}

inline const Operation kOperations[] = {
    {"Smoothing", [](CKVR3DWeldLine& c, double* phi, Vectors&) { c.Smooth_Variable(phi, 2); }},
    {"Default", [](CKVR3DWeldLine& c, double* phi,
                   Vectors& g) { c.GradVarb(3, phi, g.x.data(), g.y.data(), g.z.data()); }},
    {"Upwind", [](CKVR3DWeldLine& c, double* phi,
                  Vectors& g) { c.GradVarb_Upwind(phi, g.x.data(), g.y.data(), g.z.data()); }},
    {"Iterative",
     [](CKVR3DWeldLine& c, double* phi, Vectors& g) {
         c.GradVarb_Iterative(phi, g.x.data(), g.y.data(), g.z.data());
     }},
    {"Rbf", [](CKVR3DWeldLine& c, double* phi, Vectors& g) {
         c.GradVarb_RBF(phi, g.x.data(), g.y.data(), g.z.data());
     }}};

inline std::string operationName(const testing::TestParamInfo<Operation>& info) {
    return info.param.name;
}

}  // namespace weldline::test
