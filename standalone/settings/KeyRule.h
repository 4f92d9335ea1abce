#pragma once

#include <array>
#include <string>
#include <string_view>

#include "Settings.h"

namespace weldline {

enum class KeyKind {
    DebugSwitch,     // only the value 1 has an effect
    Integer,         // leading integer of the text
    Real,            // leading number of the text
    TruncatedReal,   // leading number of the text, truncated toward zero
    FixedTruncation  // sets 179, whatever the text says
};

// One key of the control section.
struct Key {
    std::string_view name;
    KeyKind kind;
    int Settings::*integer = nullptr;  // the setting of a key of kind Integer or TruncatedReal
    double Settings::*real = nullptr;  // the setting of a key of kind Real
};

// All keys, in the order in which the library looks for them in a line. The order counts: a key
// that is found cuts the line, and the keys after it see what is left.
const std::array<Key, 10>& knownKeys();

// Names of all keys, separated by ", ".
std::string knownKeyNames();

// A key found in a line, before the cut.
struct KeyPlace {
    bool found = false;
    bool hasEquals = false;  // some "=" stands in the line
    bool atStart = false;    // nothing but blanks stands before the key
    bool isWhole = false;    // nothing but blanks stands between the key and the first "="
};

// Looks for the key anywhere in the line and, when it is there, cuts the line down to the text
// after the first "=" and at most one blank. Without a "=" the line stays as it is.
KeyPlace takeKey(std::string& line, std::string_view key);

// A number at the start of a text, by the rules of atoi and atof: leading blanks are skipped,
// reading stops at the first unusable character, nothing usable gives 0.
struct LeadingNumber {
    double value = 0.0;
    bool usable = false;
    std::string rest;  // what follows the number
};
LeadingNumber leadingInteger(const std::string& text);
LeadingNumber leadingReal(const std::string& text);

// Truncation toward zero; the smallest int for values that no int can hold, and for NaN.
int truncatedToInt(double value);

// Text without blanks, tabs and line ends at both ends.
std::string trimmed(std::string_view text);

// Short decimal text of a number.
std::string shortNumber(double value);

}  // namespace weldline
