#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// What a fuzzing engine calls with any bytes, once per target.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace weldline::fuzz {

// A promise does not hold: says so and ends the process, for the engine to keep the input.
[[noreturn]] void fail(const std::string& what);

inline void require(bool holds, const char* what) {
    if (!holds) fail(what);
}

// The bytes of an input one after the other; zeros once they are used up.
class Bytes {
  public:
    Bytes(const std::uint8_t* data, std::size_t size) : m_next(data), m_end(data + size) {}

    bool empty() const { return m_next == m_end; }
    int next() { return empty() ? 0 : *m_next++; }

    // From 0 to limit - 1; limit is 1 to 256.
    int below(int limit) { return next() % limit; }

    std::string rest() { return {m_next, m_end}; }

  private:
    const std::uint8_t* m_next;
    const std::uint8_t* m_end;
};

// A folder of its own for the files of a target, kept for all inputs of the process and removed at
// its end.
const std::string& scratchFolder();

void writeBytes(const std::string& file, const std::string& bytes);

}  // namespace weldline::fuzz
