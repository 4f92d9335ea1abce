#pragma once

#include <string>
#include <vector>

#include "CaseParameters.h"
#include "Events.h"
#include "Side.h"

namespace weldline::reference {

// What the cases of a series were like and what they met, summed up.
class Tally {
  public:
    void add(const CaseParameters& parameters, const Side& reference);

    // A line per property and event.
    std::string inWords() const;

    // The properties and events that no case had.
    std::vector<std::string> missing() const;

    long cases() const { return cases_; }
    long casesWithMeetingAngles() const { return casesWithMeetingAngles_; }

  private:
    void count(const std::string& property, bool has);
    void countProperties(const CaseParameters& p);
    void countResults(const Side& reference);

    struct Share {
        std::string property;
        long cases = 0;
    };

    long cases_ = 0;
    long runs_ = 0;
    long casesWithMeetingAngles_ = 0;  // some node below 180 at the end by accepted pairs
    std::vector<Share> shares_;        // in the order of the first case
    std::size_t next_ = 0;
    EventCounts events_{};
};

}  // namespace weldline::reference
