#include "TimedRanks.h"

#include <chrono>
#include <ctime>

#include "CCommunication.h"

namespace weldline {

namespace {

class TimedExchange final : public CCommunication {
  public:
    TimedExchange(std::unique_ptr<CCommunication> exchange, const HaloLinks& links,
                  ExchangeCount& count)
        : m_exchange(std::move(exchange)), m_count(count) {
        m_messages = static_cast<std::int64_t>(links.links.size());
        for (const HaloLinks::Link& link : links.links)
            m_bytes += static_cast<std::int64_t>(link.sendSlots.size() * sizeof(double));
    }

    void DDM_Exch(double* values) override {
        const double start = clockSeconds();
        const double cpuStart = cpuSeconds();
        m_exchange->DDM_Exch(values);
        m_count.seconds += clockSeconds() - start;
        m_count.cpuSeconds += cpuSeconds() - cpuStart;
        m_count.messages += m_messages;
        m_count.bytes += m_bytes;
        ++m_count.exchanges;
    }

  private:
    std::unique_ptr<CCommunication> m_exchange;
    ExchangeCount& m_count;
    std::int64_t m_messages = 0;
    std::int64_t m_bytes = 0;
};

}  // namespace

std::unique_ptr<CCommunication> TimedRanks::haloExchange(const HaloLinks& links) {
    return std::make_unique<TimedExchange>(m_ranks.haloExchange(links), links, m_count);
}

double clockSeconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

double cpuSeconds() {
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

}  // namespace weldline
