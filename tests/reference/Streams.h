#pragma once

#include <cstdint>

namespace weldline::reference {

// The random stream of each purpose. Purposes that differ from binding to binding or from run to
// run add its number; partitions add theirs times ten.
struct Streams {
    static constexpr std::uint64_t mesh = 1;
    static constexpr std::uint64_t groups = 2;
    static constexpr std::uint64_t cut = 3;
    static constexpr std::uint64_t graphCounts = 100;
    static constexpr std::uint64_t positions = 200;
    static constexpr std::uint64_t numbering = 300;
    static constexpr std::uint64_t graph = 400;
    static constexpr std::uint64_t flow = 500;
    static constexpr std::uint64_t values = 600;
    static constexpr std::uint64_t stencils = 700;
    static constexpr std::uint64_t settings = 800;
    static constexpr std::uint64_t noise = 900;
    static constexpr std::uint64_t sequence = 1000;
    static constexpr std::uint64_t mutation = 1100;
    static constexpr std::uint64_t remesh = 1200;
    static constexpr std::uint64_t grid = 1300;
    static constexpr std::uint64_t extras = 1400;
};

}  // namespace weldline::reference
