#include "LineRule.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "base/Errors.h"

namespace weldline {

class LineRule::Reader {
  public:
    explicit Reader(const std::string& text) : m_text(text) {}

    std::vector<std::vector<Comparison>> read() {
        std::vector<std::vector<Comparison>> any(1);
        for (;;) {
            any.back().push_back(comparison());
            if (accept("&")) continue;
            if (!accept("|")) break;
            any.emplace_back();
        }
        if (m_at < m_text.size()) fail("expected '&', '|' or the end");
        return any;
    }

  private:
    Comparison comparison() {
        const Quantity quantity = this->quantity();
        const Relation relation = this->relation();
        if (quantity == Quantity::Class) {
            if (relation != Relation::Equal) fail("a class is compared with '='");
            if (accept("weld")) return {quantity, relation, 0.0};
            if (accept("meld")) return {quantity, relation, 1.0};
            fail("expected weld or meld");
        }
        skipBlanks();
        const char* begin = m_text.c_str() + m_at;
        char* end = nullptr;
        const double value = std::strtod(begin, &end);
        if (end == begin || !std::isfinite(value)) fail("expected a number");
        m_at += static_cast<std::size_t>(end - begin);
        return {quantity, relation, value};
    }

    Quantity quantity() {
        using Named = std::pair<const char*, Quantity>;
        constexpr std::array names{
            Named{"angle", Quantity::SmallestAngle}, Named{"mean", Quantity::MeanAngle},
            Named{"length", Quantity::Length},       Named{"nodes", Quantity::Nodes},
            Named{"first", Quantity::FirstTime},     Named{"last", Quantity::LastTime},
            Named{"class", Quantity::Class}};
        for (const auto& [name, quantity] : names)
            if (accept(name)) return quantity;
        fail("expected angle, mean, length, nodes, first, last or class");
    }

    Relation relation() {
        if (accept("<=")) return Relation::LessOrEqual;
        if (accept("<")) return Relation::Less;
        if (accept(">=")) return Relation::GreaterOrEqual;
        if (accept(">")) return Relation::Greater;
        if (accept("=")) return Relation::Equal;
        fail("expected <, <=, >, >= or =");
    }

    void skipBlanks() {
        while (m_at < m_text.size() && (m_text[m_at] == ' ' || m_text[m_at] == '\t')) ++m_at;
    }

    bool accept(std::string_view word) {
        skipBlanks();
        if (m_text.compare(m_at, word.size(), word) != 0) return false;
        m_at += word.size();
        skipBlanks();
        return true;
    }

    [[noreturn]] void fail(const std::string& expected) const {
        throw UsageError("'" + m_text + "': " + expected + " at character " +
                         std::to_string(m_at + 1) +
                         "; a rule is for example 'angle<60 & length>5'");
    }

    const std::string& m_text;
    std::size_t m_at = 0;
};

LineRule::LineRule(const std::string& text) : m_any(Reader(text).read()) {}

bool LineRule::holdsFor(const WeldLine& line) const {
    return std::any_of(m_any.begin(), m_any.end(), [&](const std::vector<Comparison>& all) {
        return std::all_of(all.begin(), all.end(),
                           [&](const Comparison& one) { return holds(line, one); });
    });
}

double LineRule::valueOf(const WeldLine& line, Quantity quantity) {
    switch (quantity) {
        case Quantity::SmallestAngle:
            return line.smallestAngle;
        case Quantity::MeanAngle:
            return line.meanAngle;
        case Quantity::Length:
            return line.length;
        case Quantity::Nodes:
            return static_cast<double>(line.nodeCount);
        case Quantity::FirstTime:
            return line.firstTime;
        case Quantity::LastTime:
            return line.lastTime;
        case Quantity::Class:
            return line.kind == LineClass::Weld ? 0.0 : 1.0;
    }
    return 0.0;
}

bool LineRule::holds(const WeldLine& line, const Comparison& comparison) {
    const double value = valueOf(line, comparison.quantity);
    switch (comparison.relation) {
        case Relation::Less:
            return value < comparison.value;
        case Relation::LessOrEqual:
            return value <= comparison.value;
        case Relation::Greater:
            return value > comparison.value;
        case Relation::GreaterOrEqual:
            return value >= comparison.value;
        case Relation::Equal:
            return value == comparison.value;
    }
    return false;
}

}  // namespace weldline
