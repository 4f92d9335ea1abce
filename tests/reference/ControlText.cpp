// Control files: tidy ones, noisy ones and spoiled ones.
#include <string>
#include <vector>

#include "Case.h"
#include "Random.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

using Lines = std::vector<std::string>;

// Counts of passes stay small, so that no case takes long.
const char* const counts[] = {"0", "1", "2", "3", "4", "-1", "+2", "1e2", "0x3", "2.9", "", "x"};
const char* const reals[] = {"0",    "-1",  "45",  "60.5", "90",    "120", "179.9999995", "180",
                             "1e-3", "nan", "inf", "-inf", "-1e99", "",    "abc",         "0.5"};
const char* const integers[] = {"1",   "2",  "3",  "4",           "40",         "5", "0", "-1",
                                "2.9", "3x", " 3", "99999999999", "4294967300", "",  "+1"};
const char* const methods[] = {"3",          "2",           "1",     "4",   "2.9",  "1.999",
                               "-0.5",       "5",           "0",     "nan", "1e20", "-1e20",
                               "2147483648", "-2147483649", "3.0e0", "",    "inf"};

struct Key {
    const char* name;
    char kind;  // c count, i integer, r real, m gradient method
};

constexpr Key keys[] = {
    {"FlagDebugOutput", 'i'},
    {"WeldlingAngleMethod", 'i'},
    {"nSmooth_beforeGrad", 'c'},
    {"nSmooth_afterGrad", 'c'},
    {"nGrad", 'c'},
    {"TruncateAngle", 'r'},
    {"BoundaryAngle", 'r'},
    {"GradValueFilterPara", 'r'},
    {"VolumeFilter", 'r'},
    {"GradMethodMFT", 'm'},
};

std::string randomValue(Random& random, char kind) {
    if (kind == 'c') return random.pick(counts);
    if (kind == 'i') return random.pick(integers);
    if (kind == 'm') return random.pick(methods);
    return random.pick(reals);
}

std::string withNoise(Random& random, const std::string& key, const std::string& value) {
    switch (random.integer(0, 13)) {
        case 0:
            return key + "=" + value;
        case 1:
            return "  " + key + "   =   " + value;
        case 2:
            return "// " + key + " = " + value;
        case 3:
            return key + " " + value;
        case 4:
            return key + "\t=\t" + value + "\t// note";
        case 5:
            return key + " = = " + value;
        case 6:
            return "x" + key + "y = " + value + "\r";
        case 7:
            return std::string(random.integer(225, 262), ' ') + key + " = " + value;
        case 8:
            return key + " = " + std::string(random.integer(225, 262), ' ') + value;
        case 9:
            return value + " = " + key;
        default:
            return key + " = " + value;
    }
}

// Two keys on one line: small numbers only, since either key may take them.
std::string twoKeys(Random& random) {
    const std::string first = random.pick(keys).name;
    const std::string second = random.pick(keys).name;
    const std::string number = std::to_string(random.integer(-1, 4));
    return random.chance(0.5) ? first + " = " + second + " = " + number
                              : first + " " + second + " = " + number + " = 3";
}

// The values of the parameters, or, from the second run on, drawn anew.
CaseParameters settingsOf(const CaseParameters& p, int run) {
    if (run == 0 || p.newSettings == 0) return p;
    CaseParameters other = drawCase(p.seed * 31 + static_cast<std::uint64_t>(run));
    other.debug = p.debug;
    return other;
}

Lines settingLines(const CaseParameters& p) {
    const char* const angles[] = {"30",  "60",          "75",  "90", "120",
                                  "150", "179.9999995", "180", "-3", "0"};
    const char* const paras[] = {"0", "1", "100", "5000", "nan", "-1"};
    const char* const volumes[] = {"0", "0.05", "0.5", "0.9", "1", "1.5", "-1"};
    Lines lines;
    const auto add = [&](const char* key, const std::string& value) {
        lines.push_back(std::string(key) + " = " + value);
    };
    add("WeldlingAngleMethod", std::to_string(p.method));
    if (p.debug == 1) add("FlagDebugOutput", "1");
    add("GradMethodMFT", std::to_string(p.gradMethod));
    add("nGrad", std::to_string(p.nGrad));
    add("nSmooth_beforeGrad", std::to_string(p.smoothBefore));
    add("nSmooth_afterGrad", std::to_string(p.smoothAfter));
    if (p.boundaryAngle > 0) add("BoundaryAngle", angles[p.boundaryAngle - 1]);
    if (p.filterPara > 0) add("GradValueFilterPara", paras[p.filterPara - 1]);
    if (p.volumeFilter > 0) add("VolumeFilter", volumes[p.volumeFilter - 1]);
    if (p.truncate == 1) add("TruncateAngle", "120");
    return lines;
}

void addNoise(Lines& lines, Random& random) {
    if (random.chance(0.4)) random.shuffle(lines);
    for (std::string& line : lines) {
        if (random.chance(0.25)) {
            const std::size_t equals = line.find(" = ");
            line = withNoise(random, line.substr(0, equals), line.substr(equals + 3));
        }
    }
    for (int i = random.integer(0, 3); i > 0; --i) {
        const Key& key = random.pick(keys);
        std::string line = random.chance(0.3)
                               ? twoKeys(random)
                               : withNoise(random, key.name, randomValue(random, key.kind));
        lines.insert(lines.begin() + random.integer(0, static_cast<int>(lines.size())), line);
    }
    if (random.chance(0.2)) lines.insert(lines.begin(), "");
    if (random.chance(0.1)) lines.insert(lines.begin(), "wEldlingAngleMethod = 1");
}

std::string noisyText(Lines lines, Random& random) {
    const char* const opens[] = {"[WeldLinePlotCtrl]", "[WeldLinePlotCtrl]", "[WeldLinePlotCtrl]",
                                 "// [WeldLinePlotCtrl] nGrad = 3", "x[WeldLinePlotCtrl]y"};
    const char* const closes[] = {"[/WeldLinePlotCtrl]", "[/WeldLinePlotCtrl]",
                                  "nGrad = 3 [/WeldLinePlotCtrl]", "nGrad [/WeldLinePlotCtrl] = 1",
                                  "  [/WeldLinePlotCtrl] // end"};
    const std::string end = random.chance(0.15) ? "\r\n" : "\n";
    std::string text;
    if (random.chance(0.5)) text += "[Other]" + end + "nGrad = 3" + end + "[/Other]" + end;
    const int sections = random.pick({1, 1, 1, 2, 3, 0});
    for (int s = 0; s < sections; ++s) {
        Lines body = lines;
        if (s > 0 && random.chance(0.7)) body.clear();
        if (s > 0 && random.chance(0.3)) body.push_back(withNoise(random, "nGrad", "1"));
        addNoise(body, random);
        text += random.pick(opens) + end;
        for (const std::string& line : body) text += line + end;
        if (random.chance(0.9)) text += random.pick(closes) + end;
        if (random.chance(0.3)) text += "nSmooth_beforeGrad = 3" + end;
    }
    if (random.chance(0.2) && !text.empty()) text.pop_back();
    return text;
}

// Takes away, doubles or replaces characters other than digits.
void spoil(std::string& text, Random& random) {
    const char others[] = {'=', ' ', '\n', '\0', '[', ']', '\t', '-', 'n', '\x80'};
    for (int i = random.integer(1, 6); i > 0 && !text.empty(); --i) {
        const std::size_t at = static_cast<std::size_t>(random.next() % text.size());
        if (text[at] >= '0' && text[at] <= '9') continue;
        if (random.chance(0.4)) {
            text.erase(at, 1);
        } else if (random.chance(0.5)) {
            text[at] = random.pick(others);
        } else {
            text.insert(at, 1, text[at]);
        }
    }
}

}  // namespace

std::string controlText(const CaseParameters& parameters, int run) {
    const CaseParameters p = settingsOf(parameters, run);
    Random random(parameters.seed, Streams::noise + run);
    Lines lines = settingLines(p);
    if (parameters.control == 3) {
        return "[Other]\nnGrad = 3\nWeldlingAngleMethod = 1\n";
    }
    if (parameters.control == 2) {
        return noisyText(lines, random);
    }
    if (parameters.control == 5) {
        return oddControlText(lines, parameters.seed, run);
    }
    std::string text = "[WeldLinePlotCtrl]\n";
    for (const std::string& line : lines) text += line + "\n";
    text += "[/WeldLinePlotCtrl]\n";
    if (parameters.control == 4) spoil(text, random);
    return text;
}

}  // namespace weldline::reference
