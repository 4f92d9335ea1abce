#pragma once

#include <functional>
#include <string>
#include <vector>

namespace weldline::performance {

// One piece of work that is measured. The name is "work/who does it".
struct Stage {
    std::string name;
    std::function<void()> prepare;  // brings everything to where the work begins; not measured
    std::function<void()> run;
    double parts = 1.0;  // equal parts of the work, such as passes; results are per part
    std::function<double()> bytes = nullptr;  // that one part has to move; null: not stated
};
using Stages = std::vector<Stage>;

inline Stages joined(const std::vector<Stages>& lists) {
    Stages all;
    for (const Stages& list : lists) all.insert(all.end(), list.begin(), list.end());
    return all;
}

}  // namespace weldline::performance
