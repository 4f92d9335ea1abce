#include "SectionReader.h"

#include <algorithm>
#include <cctype>

namespace weldline {

namespace {

constexpr std::string_view opening = "[WeldLinePlotCtrl]";
constexpr std::string_view closing = "[/WeldLinePlotCtrl]";
constexpr int defaultPasses = 2;

bool contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

// Letters and digits in lower case, to recognise a name written another way.
std::string simplified(std::string_view name) {
    std::string letters;
    for (const unsigned char c : name)
        if (std::isalnum(c) != 0) letters.push_back(static_cast<char>(std::tolower(c)));
    return letters;
}

std::string quoted(std::string_view text) {
    return "\"" + trimmed(text) + "\"";
}

// The key that a line without any key probably means, or nothing.
std::string meantKey(const std::string& piece) {
    const std::string name = simplified(piece.substr(0, piece.find('=')));
    for (const Key& key : knownKeys())
        if (simplified(key.name) == name) return std::string(key.name);
    return {};
}

bool mentionsKey(const std::string& text) {
    return std::any_of(knownKeys().begin(), knownKeys().end(),
                       [&](const Key& key) { return contains(text, key.name); });
}

}  // namespace

void SectionReader::surprise(const std::string& effect) {
    m_reading.lines.back().surprising = true;
    note(effect);
}

void SectionReader::read(const std::string& piece, int line, int number) {
    LineEffect effect;
    effect.line = line;
    effect.piece = number;
    effect.text = piece.substr(0, piece.find_last_not_of("\r\n") + 1);
    m_reading.lines.push_back(effect);
    const bool wasInside = m_inside;
    if (number > 1)
        surprise(
            "belongs to a line of more than 254 characters, whose pieces are read like lines "
            "of their own");
    if (wasInside)
        readInside(piece);
    else
        readOutside(piece);
    m_reading.lines.back().inSection = wasInside || m_inside;
}

void SectionReader::readOutside(const std::string& piece) {
    if (contains(piece, opening)) {
        m_inside = true;
        m_reading.sectionFound = true;
        m_reading.sectionClosed = false;
        note("opens the section");
        if (mentionsKey(piece)) surprise("keys on the opening line are ignored");
        if (contains(piece, closing)) surprise("does not close the section at once");
        return;
    }
    if (simplified(piece) == simplified(opening) && contains(piece, "[") &&
        !contains(piece, closing))
        surprise("is not the opening line: it must read [WeldLinePlotCtrl], letter by letter");
    else if (mentionsKey(piece) && contains(piece, "="))
        surprise("stands outside the section: ignored");
}

void SectionReader::readInside(const std::string& piece) {
    m_taken = 0;
    m_methodGiven = false;
    std::string line = piece;
    const auto& keys = knownKeys();
    tryKey(keys[0], line);
    tryKey(keys[1], line);
    if (m_defaultPass < defaultPasses) applyDefaults();
    for (std::size_t k = 2; k < keys.size(); ++k) tryKey(keys[k], line);
    if (contains(line, closing)) {
        note("closes the section");
        m_inside = false;
        m_reading.sectionClosed = true;
    }
    noteUnused(piece, line);
}

void SectionReader::tryKey(const Key& key, std::string& line) {
    const KeyPlace place = takeKey(line, key.name);
    if (!place.found) return;
    notePlace(key, place);
    m_taken |= 1 << (&key - knownKeys().data());
    set(key, line);
}

void SectionReader::notePlace(const Key& key, const KeyPlace& place) {
    const std::string name(key.name);
    if (!place.hasEquals)
        surprise(name + " counts although the line has no \"=\": the whole line is its value");
    else if (m_taken != 0)
        surprise(name +
                 " stands on the same line: its value is what follows the next \"=\", or "
                 "the rest of the line");
    else if (!place.atStart)
        surprise(name + " counts although the line does not start with it, as in a comment");
    else if (!place.isWhole)
        surprise(name + " counts although it is only a part of what stands before the \"=\"");
}

void SectionReader::set(const Key& key, const std::string& text) {
    switch (key.kind) {
        case KeyKind::DebugSwitch:
            return setDebug(leadingInteger(text));
        case KeyKind::FixedTruncation:
            m_reading.settings.truncateAngle = 179.0;
            if (trimmed(text) == "179" || leadingReal(text).value == 179.0)
                return note("TruncateAngle becomes 179");
            return surprise("TruncateAngle becomes 179: the value " + quoted(text) +
                            " is not read");
        case KeyKind::Integer: {
            const LeadingNumber number = leadingInteger(text);
            return setInteger(key, static_cast<int>(number.value), number);
        }
        case KeyKind::TruncatedReal: {
            const LeadingNumber number = leadingReal(text);
            return setInteger(key, truncatedToInt(number.value), number);
        }
        case KeyKind::Real:
            return setReal(key, leadingReal(text));
    }
}

void SectionReader::setDebug(const LeadingNumber& number) {
    Settings& s = m_reading.settings;
    if (number.value == 1.0) {
        s.debugOutput = true;
        note("FlagDebugOutput is switched on");
    } else if (s.debugOutput) {
        surprise("FlagDebugOutput stays on: no value switches it off");
    } else if (number.usable && number.value == 0.0) {
        note("FlagDebugOutput stays off");
    } else {
        surprise("FlagDebugOutput stays off: only the value 1 switches it on");
    }
    noteValue(number);
}

void SectionReader::setInteger(const Key& key, int value, const LeadingNumber& number) {
    Settings& s = m_reading.settings;
    s.*key.integer = value;
    const std::string effect = std::string(key.name) + " becomes " + std::to_string(value);
    m_methodGiven = m_methodGiven || key.integer == &Settings::method;
    if (key.kind == KeyKind::TruncatedReal && static_cast<double>(value) != number.value)
        surprise(effect + ": the value is cut to a whole number");
    else
        note(effect);
    if (key.integer == &Settings::method && m_defaultPass >= defaultPasses)
        surprise(
            "the method's defaults come only with the first two lines of the first section: "
            "TruncateAngle stays " +
            shortNumber(s.truncateAngle) + ", nSmooth_afterGrad stays " +
            std::to_string(s.smoothAfter));
    noteValue(number);
}

void SectionReader::setReal(const Key& key, const LeadingNumber& number) {
    m_reading.settings.*key.real = number.value;
    note(std::string(key.name) + " becomes " + shortNumber(number.value));
    noteValue(number);
}

void SectionReader::noteValue(const LeadingNumber& number) {
    const std::string rest = trimmed(number.rest);
    if (!number.usable)
        surprise("there is no number where the value is read, which gives 0");
    else if (!rest.empty() && !mentionsKey(rest) && number.rest.front() != ' ' &&
             number.rest.front() != '\t')
        surprise("the value ends before " + quoted(rest));
}

void SectionReader::applyDefaults() {
    const Settings before = m_reading.settings;
    Settings& s = m_reading.settings;
    if (s.method == 40) {
        m_method40 = true;
        s.method = 4;
    }
    const bool method4 = s.method == 4;
    s.truncateAngle = method4 ? 145.0 : 135.0;
    s.smoothAfter = s.method == 2 || (method4 && m_method40) ? 4 : 20;
    noteDefaults(before);
    ++m_defaultPass;
}

void SectionReader::noteDefaults(const Settings& before) {
    const Settings& s = m_reading.settings;
    if (before.method == 40) note("method 40 is method 4 with 4 smoothing passes");
    const std::string values = "the defaults of method " + std::to_string(s.method) +
                               ": TruncateAngle " + shortNumber(s.truncateAngle) +
                               ", nSmooth_afterGrad " + std::to_string(s.smoothAfter);
    if (m_defaultPass == 0)
        note("the first line of the section brings " + values);
    else if (m_methodGiven)
        note("the second line of the section brings " + values);
    else if (before != s)
        surprise("the second line of the section brings once more " + values +
                 "; what the first line had set is lost");
}

void SectionReader::noteUnused(const std::string& piece, const std::string& left) {
    const auto& keys = knownKeys();
    for (std::size_t k = 0; k < keys.size(); ++k)
        if ((m_taken & (1 << k)) == 0 && contains(piece, keys[k].name))
            surprise(std::string(keys[k].name) +
                     " is not seen: an earlier key has cut the line to " + quoted(left));
    if (m_inside && contains(piece, closing))
        surprise("does not close the section: a key has cut the line to " + quoted(left));
    else if (m_inside && simplified(piece) == simplified(closing))
        surprise("does not close the section: it must read [/WeldLinePlotCtrl], letter by letter");
    if (m_taken != 0 || !contains(piece, "=")) return;
    const std::string meant = meantKey(piece);
    surprise("names no known key: no setting changes" +
             (meant.empty() ? "" : " (the key is written " + meant + ")"));
}

}  // namespace weldline
