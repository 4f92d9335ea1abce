#include "Scheme.h"

namespace weldline::accuracy {

namespace {

Scheme methodFour(const std::string& gradientMethod, double gradientSetSwitch,
                  const std::string& gradient) {
    std::string name = "4, " + gradientMethod;
    if (gradientSetSwitch != 1.0) name += ", first set";
    return {name,
            gradient,
            {"WeldlingAngleMethod=4", "GradMethodMFT=" + gradientMethod},
            gradientSetSwitch};
}

}  // namespace

std::vector<Scheme> allSchemes() {
    std::vector<Scheme> schemes;
    for (const char* method : {"1", "2", "3"})
        schemes.push_back({method, "default", {std::string("WeldlingAngleMethod=") + method}, 1.0});
    schemes.push_back(methodFour("1", 1.0, "default"));
    schemes.push_back(methodFour("2", 1.0, "RBF"));
    schemes.push_back(methodFour("2", 0.0, "upwind"));
    schemes.push_back(methodFour("3", 1.0, "least squares"));
    schemes.push_back(methodFour("3", 0.0, "upwind"));
    schemes.push_back(methodFour("4", 1.0, "upwind"));
    return schemes;
}

std::vector<Scheme> distinctSchemes() {
    std::vector<Scheme> schemes = allSchemes();
    std::erase_if(schemes, [](const Scheme& s) { return s.gradientSetSwitch == 0.0; });
    return schemes;
}

std::vector<Scheme> comparedSchemes() {
    std::vector<Scheme> schemes = distinctSchemes();
    schemes.push_back(
        {"1, 4 passes", "default", {"WeldlingAngleMethod=1", "nSmooth_afterGrad=4"}, 1.0});
    schemes.push_back({"4, 2, 4 passes",
                       "RBF",
                       {"WeldlingAngleMethod=4", "nSmooth_afterGrad=4", "GradMethodMFT=2"},
                       1.0});
    return schemes;
}

std::vector<Scheme> smoothingVariants() {
    std::vector<Scheme> schemes;
    const auto add = [&](const std::string& method, const std::string& before,
                         const std::string& after, bool wholeLine) {
        Scheme scheme{method + ", " + before + " before, " + after + " after",
                      method == "1" ? "default" : "least squares",
                      {"WeldlingAngleMethod=" + method, "nSmooth_beforeGrad=" + before,
                       "nSmooth_afterGrad=" + after},
                      1.0};
        if (wholeLine) {
            scheme.name += ", limit 179";
            scheme.settings.emplace_back("TruncateAngle=179");
        }
        schemes.push_back(scheme);
    };
    for (const char* method : {"1", "4"}) {
        for (const char* before : {"0", "2"})
            for (const char* after : {"0", "4", "20"}) add(method, before, after, false);
        for (const char* after : {"4", "20"}) add(method, "2", after, true);
    }
    return schemes;
}

}  // namespace weldline::accuracy
