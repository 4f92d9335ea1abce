#include "Damage.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <limits>
#include <vector>

namespace weldline::fuzz {

namespace {

std::uint64_t mixed(std::uint64_t z) {
    z = (z ^ (z >> 30U)) * 0xbf58476d1ce4e5b9ULL;
    z = (z ^ (z >> 27U)) * 0x94d049bb133111ebULL;
    return z ^ (z >> 31U);
}

struct Stretch {
    std::size_t begin;
    std::size_t length;
};

Stretch anyStretch(const std::string& bytes, Dice& dice) {
    const std::size_t begin = dice.below(bytes.size());
    return {begin, 1 + dice.below(std::min<std::size_t>(bytes.size() - begin, 64))};
}

std::vector<Stretch> numbersIn(const std::string& bytes) {
    std::vector<Stretch> numbers;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t begin = i;
        while (i < bytes.size() && std::isdigit(static_cast<unsigned char>(bytes[i])) != 0) ++i;
        if (i > begin) numbers.push_back({begin, i - begin});
    }
    return numbers;
}

void turnBit(std::string& bytes, Dice& dice) {
    const std::size_t at = dice.below(bytes.size());
    bytes[at] = static_cast<char>(bytes[at] ^ static_cast<char>(1U << dice.below(8)));
}

void replaceByte(std::string& bytes, Dice& dice) {
    bytes[dice.below(bytes.size())] = static_cast<char>(dice.below(256));
}

void replaceNumber(std::string& bytes, Dice& dice) {
    constexpr std::array<const char*, 16> extremes{
        "0",          "1",          "-1",    "3",
        "255",        "65536",      "1e9",   "2147483647",
        "2147483648", "4294967295", "1e308", "9223372036854775807",
        "-999999999", "1000000",    "nan",   "99999999999999999999999"};
    const std::vector<Stretch> numbers = numbersIn(bytes);
    if (numbers.empty()) return;
    const Stretch number = numbers[dice.below(numbers.size())];
    bytes.replace(number.begin, number.length, extremes[dice.below(extremes.size())]);
}

void changeDigit(std::string& bytes, Dice& dice) {
    const std::vector<Stretch> numbers = numbersIn(bytes);
    if (numbers.empty()) return;
    const Stretch number = numbers[dice.below(numbers.size())];
    bytes[number.begin + dice.below(number.length)] = static_cast<char>('0' + dice.below(10));
}

template <class Word>
void putWord(std::string& bytes, Word word, Dice& dice) {
    if (bytes.size() < sizeof word) return;
    std::array<char, sizeof word> raw{};
    std::memcpy(raw.data(), &word, sizeof word);
    if (dice.below(2) == 1) std::reverse(raw.begin(), raw.end());
    const std::size_t at = dice.below(bytes.size() - sizeof word + 1);
    std::copy(raw.begin(), raw.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
}

void replaceWord(std::string& bytes, Dice& dice) {
    constexpr std::array<std::int64_t, 9> extremes{0,
                                                   1,
                                                   -1,
                                                   255,
                                                   65536,
                                                   std::numeric_limits<std::int32_t>::max(),
                                                   1LL << 32U,
                                                   std::numeric_limits<std::int64_t>::max(),
                                                   std::numeric_limits<std::int64_t>::min()};
    const std::int64_t word = extremes[dice.below(extremes.size())];
    if (dice.below(2) == 1) return putWord(bytes, word, dice);
    putWord(bytes, static_cast<std::int32_t>(word), dice);
}

void loseStretch(std::string& bytes, Dice& dice) {
    const Stretch stretch = anyStretch(bytes, dice);
    bytes.erase(stretch.begin, stretch.length);
}

void doubleStretch(std::string& bytes, Dice& dice) {
    const Stretch stretch = anyStretch(bytes, dice);
    bytes.insert(stretch.begin, bytes.substr(stretch.begin, stretch.length));
}

void exchangeStretches(std::string& bytes, Dice& dice) {
    const Stretch from = anyStretch(bytes, dice);
    const Stretch to = anyStretch(bytes, dice);
    bytes.replace(to.begin, to.length, bytes.substr(from.begin, from.length));
}

void loseEnd(std::string& bytes, Dice& dice) {
    bytes.resize(dice.below(bytes.size()));
}

}  // namespace

Dice::Dice(std::uint64_t seed, std::uint64_t stream) : m_state(seed ^ mixed(stream + 1)) {
    next();
}

std::uint64_t Dice::next() {
    m_state += 0x9e3779b97f4a7c15ULL;
    return mixed(m_state);
}

std::size_t Dice::below(std::size_t limit) {
    return static_cast<std::size_t>(next() % limit);
}

std::string damaged(std::string bytes, Dice& dice) {
    using Accident = void (*)(std::string&, Dice&);
    // Twice what reaches furthest into a reader.
    constexpr std::array<Accident, 12> accidents{
        turnBit,     replaceByte, replaceByte, replaceNumber, replaceNumber,     changeDigit,
        changeDigit, replaceWord, loseStretch, doubleStretch, exchangeStretches, loseEnd};
    for (std::size_t left = 1 + dice.below(4); left > 0 && !bytes.empty(); --left)
        accidents[dice.below(accidents.size())](bytes, dice);
    return bytes;
}

}  // namespace weldline::fuzz
