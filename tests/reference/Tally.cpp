#include "Tally.h"

#include <cmath>
#include <cstdio>
#include <utility>

namespace weldline::reference {

namespace {

bool hasPairs(const EventCounts& events) {
    for (Event event :
         {Event::acceptedNodePoint, Event::acceptedFacePoint, Event::acceptedConverging}) {
        if (events[static_cast<std::size_t>(event)] > 0) return true;
    }
    return false;
}

bool met(const EventCounts& events, Event event) {
    return events[static_cast<std::size_t>(event)] > 0;
}

}  // namespace

// The properties of a case are counted in the same order in every case.
void Tally::count(const std::string& property, bool has) {
    if (next_ == shares_.size()) shares_.push_back({property});
    shares_[next_++].cases += has ? 1 : 0;
}

void Tally::add(const CaseParameters& parameters, const Side& reference) {
    ++cases_;
    runs_ += parameters.runs;
    next_ = 0;
    countProperties(parameters);
    countResults(reference);
}

void Tally::countProperties(const CaseParameters& p) {
    const char* const kinds[] = {"hexahedra", "tetrahedra",       "mixed cells",
                                 "polyhedra", "arbitrary graphs", "staged ties"};
    for (int kind = 0; kind < 6; ++kind) count(kinds[kind], p.kind == kind);
    count("all numbers on a coarse grid", p.grid == 1);
    for (int parts = 1; parts <= 4; ++parts) {
        count("in " + std::to_string(parts) + " partition(s)", p.partitions == parts);
    }
    count("several runs", p.runs > 1);
    const int rebindings = p.runs > 1 ? p.rebind & ((1 << (p.runs - 1)) - 1) : 0;
    const bool again = rebindings != 0 || p.extraBindings > 0;
    count("bound again before the first run", p.extraBindings > 0);
    count("bound again after a run", rebindings != 0);
    const char* const sizes[] = {"the same", "smaller", "larger", "any other"};
    for (int size = 0; size < 4; ++size) {
        count(std::string("bound again with ") + sizes[size] + " counts",
              again && p.remesh == size);
    }
    const char* const lacks[] = {"no cells",          "no nodes",        "no inner faces",
                                 "no boundary faces", "no faces at all", "nothing at all",
                                 "an empty partition"};
    for (int lack = 1; lack <= 7; ++lack) count(lacks[lack - 1], p.empty == lack);
    count("unreached cells", p.unreached > 0);
    count("NaN, infinite or extreme flow", p.specials > 0);
    count("zero volumes", p.zeroVolumes > 0);
    count("flat boxes", p.squash != 0);
    count("extreme geometry", p.oddGeometry > 0);
    count("bi-injection", p.mode11 == 1);
    count("cell states", p.cellState > 0);
    count("null host objects", p.nullObjects != 0);
    count("null host values", p.nullValues != 0);
    count("arrays of nothing null", p.nullArrays == 1);
    count("arrays that move", p.moving == 1);
    count("arrays that are gone", p.moving == 2);
    count("arrays ending at a guarded page", p.guard == 1);
    count("arrays beginning behind a guarded page", p.guard == 2);
    count("poisoned slots", p.poison == 1);
    count("poisoned tails", p.tails == 1 && p.guard == 0);
    count("mesh forgotten by the host", p.scramble == 1);
    count("arrays changed between runs", p.mutate == 1 && p.runs > 1);
    count("through the public class", p.handle == 1);
    count("partitions as processes, too", p.processes == 1);
    const char* const files[] = {"missing", "tidy", "noisy", "without section", "spoiled", "long"};
    for (int control = 0; control < 6; ++control) {
        count(std::string("control file ") + files[control], p.control == control);
    }
    count("long path of the control file", p.path >= 6);
    count("mesh path longer than its field", p.meshPath >= 5 && p.meshPath <= 8);
}

void Tally::countResults(const Side& reference) {
    bool below = false;
    bool undefined = false;
    bool outgrown = false;
    EventCounts events{};
    for (std::size_t q = 0; q < reference.logs.size(); ++q) {
        for (double angle : reference.logs[q].last("meeting angles")) {
            below = below || angle < 180.0;
        }
        for (double component : reference.logs[q].last("m_pGradX")) {
            undefined = undefined || !std::isfinite(component);
        }
        outgrown = outgrown || reference.outcomes[q].outgrown;
        for (std::size_t i = 0; i < eventCount; ++i) events[i] += reference.outcomes[q].events[i];
    }
    for (std::size_t i = 0; i < eventCount; ++i) events_[i] += events[i];
    const int method = reference.outcomes[0].method;
    const bool meets = below && method >= 1 && method <= 4 && hasPairs(events);
    casesWithMeetingAngles_ += meets ? 1 : 0;
    count("a mesh outgrew the arrays", outgrown);
    count("undefined or infinite gradients", undefined);
    count("default gradient", met(events, Event::defaultGradient));
    count("upwind gradient", met(events, Event::upwindGradient));
    count("least-squares gradient", met(events, Event::iterativeGradient));
    count("RBF gradient", met(events, Event::rbfGradient));
    count("angles below 180 at the end", meets);
    for (int m = 1; m <= 4; ++m) {
        count("angles below 180 by method " + std::to_string(m), meets && method == m);
    }
}

std::string Tally::inWords() const {
    std::string text = std::to_string(cases_) + " cases, " + std::to_string(runs_) + " runs\n";
    const auto line = [&](long number, const std::string& what) {
        char start[40];
        std::snprintf(start, sizeof start, "%10ld  %5.1f %%  ", number,
                      100.0 * static_cast<double>(number) / static_cast<double>(cases_));
        text += start + what + '\n';
    };
    for (const Share& share : shares_) line(share.cases, share.property);
    for (std::size_t i = 0; i < eventCount; ++i) {
        char start[40];
        std::snprintf(start, sizeof start, "%10ld times    ", events_[i]);
        text += std::string(start) + eventNames[i] + '\n';
    }
    return text;
}

std::vector<std::string> Tally::missing() const {
    std::vector<std::string> names;
    for (const Share& share : shares_) {
        if (share.cases == 0) names.push_back(share.property);
    }
    for (std::size_t i = 0; i < eventCount; ++i) {
        if (events_[i] == 0) names.push_back(eventNames[i]);
    }
    return names;
}

}  // namespace weldline::reference
