#pragma once

#include <cstdint>
#include <string>

namespace weldline::fuzz {

// A small deterministic generator (splitmix64), the same on every platform.
class Dice {
  public:
    Dice(std::uint64_t seed, std::uint64_t stream);

    std::uint64_t next();

    // From 0 to limit - 1; limit is above 0.
    std::size_t below(std::size_t limit);

  private:
    std::uint64_t m_state;
};

// The bytes of a file after one to four accidents of the kinds that happen to files, and of those
// that an attacker prefers: bits turned over, numbers in the text and binary words replaced by
// extreme ones, stretches lost, doubled or exchanged, an end missing.
std::string damaged(std::string bytes, Dice& dice);

}  // namespace weldline::fuzz
