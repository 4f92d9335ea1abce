#pragma once

#include <string>

#include "ControlSection.h"
#include "KeyRule.h"

namespace weldline {

// Follows the library through a control text, piece by piece, and notes what each piece does.
//
// A section line is worked through in this order: debug switch; method; on the first two lines
// after the file's first opening line the defaults of the method; the other keys; the closing
// text. Each key that is found cuts the line for everything after it.
class SectionReader {
  public:
    explicit SectionReader(ControlReading& reading) : m_reading(reading) {}

    void read(const std::string& piece, int line, int number);

  private:
    void readOutside(const std::string& piece);
    void readInside(const std::string& piece);
    void tryKey(const Key& key, std::string& line);
    void set(const Key& key, const std::string& text);
    void setDebug(const LeadingNumber& number);
    void setInteger(const Key& key, int value, const LeadingNumber& number);
    void setReal(const Key& key, const LeadingNumber& number);
    void noteValue(const LeadingNumber& number);
    void notePlace(const Key& key, const KeyPlace& place);
    void applyDefaults();
    void noteDefaults(const Settings& before);
    void noteUnused(const std::string& piece, const std::string& left);
    void note(const std::string& effect) { m_reading.lines.back().effects.push_back(effect); }
    void surprise(const std::string& effect);

    ControlReading& m_reading;
    bool m_inside = false;
    bool m_method40 = false;
    int m_defaultPass = 0;       // how often the defaults came; not reset by a second section
    int m_taken = 0;             // bit per key taken on the current line
    bool m_methodGiven = false;  // the current line gave the method
};

}  // namespace weldline
