// Control files of a length and shape that nobody writes by hand: lines that the reader takes in
// pieces, tags and keys cut in two by that, thousands of lines, numbers of hundreds of digits.
#include <algorithm>
#include <string>
#include <vector>

#include "Case.h"
#include "Random.h"
#include "Streams.h"

namespace weldline::reference {

namespace {

constexpr int piece = 254;  // characters that are read at once

// So many characters that name no key.
std::string filling(Random& random, int length) {
    const char* const names[] = {"part of a set with a long name ",
                                 "C:\\results\\of\\the\\run\\",
                                 "gate-valve-7/",
                                 "[Set_",
                                 "]",
                                 "= ",
                                 "\t",
                                 " ",
                                 "1234567890"};
    std::string text;
    while (static_cast<int>(text.size()) < length) text += random.pick(names);
    return text.substr(0, static_cast<std::size_t>(length));
}

// A value with the same meaning, or another one that no int and no double holds.
std::string longNumber(Random& random, const std::string& value) {
    switch (random.integer(0, 5)) {
        case 0:
            return std::string(300, '0') + value;
        case 1:
            return std::string(150, ' ') + value + std::string(90, '9');
        case 2:
            return value + ".0" + std::string(200, '0') + "1";
        case 3:
            return "1e-400";
        case 4:
            return "\t\v\f " + value;
        default:
            return value + "e0";
    }
}

// The line with its end, or a part of it, on the other side of the cut between two pieces.
std::string acrossCut(Random& random, const std::string& line) {
    const int before = piece - random.integer(-1, static_cast<int>(line.size()) + 1);
    return std::string(static_cast<std::size_t>(std::max(0, before)), random.pick({' ', '-'})) +
           line;
}

// A line of a set's own, of a length around one, two or three pieces.
std::string longLine(Random& random) {
    const int length = random.integer(1, 3) * piece + random.integer(-3, 3);
    std::string line = filling(random, length);
    if (random.chance(0.2)) line[static_cast<std::size_t>(random.integer(0, length - 1))] = '\0';
    return line;
}

std::string odd(Random& random, const std::string& line) {
    const std::size_t equals = line.find(" = ");
    const std::string key = line.substr(0, equals);
    const std::string value = line.substr(equals + 3);
    const bool count = key[0] == 'n';  // Counts stay small, so that no case takes long.
    switch (random.integer(0, 5)) {
        case 0:
            return acrossCut(random, line);
        case 1:
            return count ? line : key + " = " + longNumber(random, value);
        case 2:
            // The blank keeps an "n" of the filling from making another key of the line.
            return count ? line : filling(random, random.integer(0, 600)) + ' ' + line;
        case 3:
            return line + " # " + filling(random, random.integer(0, 600));
        default:
            return line;
    }
}

}  // namespace

std::string oddControlText(const std::vector<std::string>& lines, std::uint64_t seed, int run) {
    Random random(seed, Streams::noise + 50 + run);
    const auto tag = [&](const std::string& text) {
        return random.chance(0.3) ? acrossCut(random, text) : text;
    };
    const auto manyLines = [&](double probability) {
        std::string text;
        if (!random.chance(probability)) return text;
        for (int i = random.integer(1, 400); i > 0; --i) {
            text += filling(random, random.integer(0, 60)) + '\n';
        }
        return text;
    };
    std::string text = manyLines(0.3);
    for (int section = random.integer(1, 3); section > 0; --section) {
        if (random.chance(0.3)) text += longLine(random) + '\n';
        text += tag("[WeldLinePlotCtrl]") + '\n' + manyLines(0.1);
        for (const std::string& line : lines) {
            if (random.chance(0.2)) text += longLine(random) + '\n';
            text += odd(random, line) + '\n';
        }
        text += tag("[/WeldLinePlotCtrl]") + random.pick({"\n", "\r\n", "\n\n"}) + manyLines(0.2);
    }
    if (random.chance(0.3)) text.pop_back();
    return text;
}

}  // namespace weldline::reference
