#pragma once

#include "comm/Ranks.h"

namespace weldline {

// What the halo exchanges of a run cost this rank.
struct ExchangeCount {
    std::int64_t exchanges = 0;
    std::int64_t messages = 0;  // sent
    std::int64_t bytes = 0;     // sent
    double seconds = 0.0;       // packing, waiting and unpacking
    double cpuSeconds = 0.0;    // of these on a core: a rank that waits may spin
};

// Ranks whose halo exchanges are counted and timed; all else goes straight on.
class TimedRanks final : public Ranks {
  public:
    explicit TimedRanks(Ranks& ranks) : m_ranks(ranks) {}  // borrowed

    const ExchangeCount& count() const { return m_count; }

    int rank() const override { return m_ranks.rank(); }
    int size() const override { return m_ranks.size(); }
    std::int64_t maximum(std::int64_t value) override { return m_ranks.maximum(value); }
    std::int64_t sum(std::int64_t value) override { return m_ranks.sum(value); }
    double maximum(double value) override { return m_ranks.maximum(value); }
    std::vector<Bytes> exchange(std::vector<Bytes> toRanks) override {
        return m_ranks.exchange(std::move(toRanks));
    }
    std::unique_ptr<CCommunication> haloExchange(const HaloLinks& links) override;

  private:
    Ranks& m_ranks;
    ExchangeCount m_count;
};

// Seconds since some moment, by the clock and on a core.
double clockSeconds();
double cpuSeconds();

}  // namespace weldline
