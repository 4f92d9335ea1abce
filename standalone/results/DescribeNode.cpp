// What NodeExplainer finds, in words.

#include <array>
#include <cstdio>

#include "ExplainNode.h"

namespace weldline {

namespace {

std::string text(const char* format, double value) {
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), format, value);
    return buffer.data();
}

std::string degrees(double value) {
    return text("%.1f degrees", value < 0.0 ? 0.0 : value);
}

std::string number(double value) {
    return text("%.4g", value);
}

const PairAtNode* keptPair(const NodeExplanation& e) {
    for (const PairAtNode& pair : e.pairs)
        if (pair.isKept) return &pair;
    return nullptr;
}

std::string streamsOf(const NodeExplanation& e) {
    const PairAtNode& pair = *keptPair(e);
    return "the streams of cells " + std::to_string(pair.a) + " and " + std::to_string(pair.b) +
           " meet at " + degrees(e.pairAngle);
}

}  // namespace

std::string describe(const NodeExplanation& e) {
    switch (e.verdict) {
        case NodeVerdict::Kept:
            return streamsOf(e) + ", more head-on than any other two at this node";
        case NodeVerdict::NothingMeets:
            return "no two streams meet here: each pair of cells is refused by a test";
        case NodeVerdict::AboveLimit:
            return streamsOf(e) + ", which is not below the limit of " + degrees(e.limit) +
                   ", and so counts as nothing";
        case NodeVerdict::Isolated:
            return streamsOf(e) + ", but no other node of its cells has an angle below " +
                   degrees(e.limit) + ": a node alone counts as nothing";
        case NodeVerdict::Different:
            return "the pairs of cells do not explain the angle of the calculation, " +
                   degrees(e.angle);
    }
    return {};
}

std::string describe(const PairAtNode& pair) {
    const Judgement& j = pair.judgement;
    const std::string cell = "cell " + std::to_string(j.cell);
    switch (j.refusal) {
        case Refusal::None:
            return pair.isKept ? "meet; the smallest angle, which the node keeps" : "meet";
        case Refusal::NotReached:
            return cell + " was not reached by the melt";
        case Refusal::Flat:
            return cell + ": gradient " + number(j.value) + " < " + number(j.limit) +
                   ", no direction";
        case Refusal::Steep:
            return cell + ": gradient " + number(j.value) + " > " + number(j.limit) + ", too steep";
        case Refusal::Shallow:
            return cell + ": gradient " + number(j.value) + " < " + number(j.limit) +
                   ", too shallow";
        case Refusal::Alike:
            return "flow the same way: " + degrees(j.value) + " > " + degrees(j.limit);
        case Refusal::SameSigns:
            return "flow the same way along x, y and z";
        case Refusal::NotTowardsEachOther:
            return "do not flow towards each other";
        case Refusal::Volumes:
            return "volumes too different: ratio " + number(j.value) + " < " + number(j.limit);
        case Refusal::OutsideCone:
            return cell + " points " + degrees(j.value) + " off, limit " + number(j.limit);
        case Refusal::Parting:
            return "drift apart: from " + number(j.limit) + " to " + number(j.value);
    }
    return {};
}

}  // namespace weldline
