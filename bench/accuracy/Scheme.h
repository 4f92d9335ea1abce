#pragma once

#include <string>
#include <vector>

namespace weldline::accuracy {

// A choice of meeting-angle method and gradient, as control settings and host switch.
struct Scheme {
    std::string name;
    std::string gradient;               // in words
    std::vector<std::string> settings;  // KEY=VALUE
    double gradientSetSwitch = 1.0;
};

// Methods 1 to 3, and method 4 with every gradient scheme and both positions of the switch.
std::vector<Scheme> allSchemes();

// The same without those that never differ from another one (see the table "same").
std::vector<Scheme> distinctSchemes();

// These, and two with less smoothing than by default.
std::vector<Scheme> comparedSchemes();

// The default settings (method 4, GradMethodMFT 3) and method 1 with other numbers of smoothing
// passes before and after the gradient, and with the widest limit on the angle.
std::vector<Scheme> smoothingVariants();

}  // namespace weldline::accuracy
