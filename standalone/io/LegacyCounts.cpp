#include "LegacyCounts.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

#include "OpenDataSet.h"

namespace weldline {
namespace {

// Keywords, in lower case, that counts follow on the same line.
constexpr std::array<std::string_view, 6> countedKeywords{"points",    "cells",      "cell_types",
                                                          "cell_data", "point_data", "field"};

std::string firstWord(const std::string& line) {
    std::string word = line.substr(0, line.find_first_of(" \t\r"));
    std::transform(word.begin(), word.end(), word.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return word;
}

// Words that are no whole numbers, such as types and names, are no counts.
bool canHold(const std::string& word, long long bytes) {
    long long count = 0;
    const char* end = word.data() + word.size();
    const auto parsed = std::from_chars(word.data(), end, count);
    if (parsed.ptr != end) {
        return true;
    }
    return parsed.ec == std::errc() && count >= 0 && count <= bytes;
}

// The data of a binary file may hold anything, line ends too.
std::string printable(std::string_view line) {
    std::string text(line.substr(0, 60));
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return std::isprint(c) == 0; }, '?');
    return text;
}

void checkCounts(const std::string& file, const std::string& line, long long bytes) {
    std::istringstream words(line);
    std::string word;
    words >> word;
    while (words >> word) {
        if (!canHold(word, bytes)) {
            failOnInput(file, "the file is damaged or incomplete: the line '" + printable(line) +
                                  "' announces more than the file can hold");
        }
    }
}

// Node lists in text, each its length and its nodes: the line before announces their number and
// that of all numbers. Files since version 5 have other lists, after the word "OFFSETS".
void checkNodeLists(const std::string& file, const std::string& line, std::istream& stream) {
    std::istringstream words(line);
    std::string keyword;
    long long lists = 0;
    long long numbers = 0;
    words >> keyword >> lists >> numbers;
    stream >> std::ws;
    if (std::isalpha(stream.peek()) != 0) {
        return;
    }
    long long taken = 0;
    for (long long list = 0; list < lists && taken <= numbers; ++list) {
        long long nodes = -1;
        stream >> nodes;
        taken += nodes < 0 || nodes > numbers ? numbers + 1 : nodes + 1;
        long long node = 0;
        for (; nodes > 0 && taken <= numbers && stream >> node; --nodes) {
        }
    }
    if (taken != numbers || !stream) {
        failOnInput(file, "the file is damaged or incomplete: the node lists after the line '" +
                              printable(line) + "' do not have the length that it announces");
    }
}

}  // namespace

void checkLegacyCounts(const std::string& file) {
    std::error_code none;
    const auto bytes = static_cast<long long>(std::filesystem::file_size(file, none));
    std::ifstream stream(file, std::ios::binary);
    std::string line;
    // A line that says what follows, a title, and the kind of the data.
    for (int i = 0; i < 3; ++i) {
        std::getline(stream, line);
    }
    const bool isText = firstWord(line) == "ascii";
    while (!none && std::getline(stream, line)) {
        const std::string word = firstWord(line);
        if (std::find(countedKeywords.begin(), countedKeywords.end(), word) ==
            countedKeywords.end()) {
            continue;
        }
        checkCounts(file, line, bytes);
        if (isText && word == "cells") {
            checkNodeLists(file, line, stream);
        }
    }
}

}  // namespace weldline
