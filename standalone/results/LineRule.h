#pragma once

#include <string>
#include <vector>

#include "WeldLines.h"

namespace weldline {

// A condition on weld lines, such as "angle<60 & length>5 | class=weld & nodes>=100".
//
//   rule       = all { "|" all }
//   all        = comparison { "&" comparison }
//   comparison = quantity ( "<" | "<=" | ">" | ">=" | "=" ) number
//              | "class" "=" ( "weld" | "meld" )
//   quantity   = "angle" (smallest) | "mean" (angle) | "length" | "nodes" | "first" | "last" (time)
//
// A time that a line does not have fulfils no comparison.
class LineRule {
  public:
    // Throws UsageError with one line that shows what is not understood.
    explicit LineRule(const std::string& text);

    bool holdsFor(const WeldLine& line) const;

  private:
    enum class Quantity { SmallestAngle, MeanAngle, Length, Nodes, FirstTime, LastTime, Class };
    enum class Relation { Less, LessOrEqual, Greater, GreaterOrEqual, Equal };
    struct Comparison {
        Quantity quantity;
        Relation relation;
        double value;
    };
    class Reader;

    static double valueOf(const WeldLine& line, Quantity quantity);
    static bool holds(const WeldLine& line, const Comparison& comparison);

    std::vector<std::vector<Comparison>> m_any;  // one of these lists has to hold as a whole
};

}  // namespace weldline
