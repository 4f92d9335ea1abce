// Ranks as threads: one hub that all ranks share, with a barrier, a board of values, a table of
// messages and the mailboxes of the halo exchanges.
#include "ThreadRanks.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <exception>
#include <map>
#include <mutex>
#include <thread>
#include <tuple>
#include <utility>

#include "CCommunication.h"
#include "base/Errors.h"

namespace weldline {

namespace {

// Which halo exchange, from which rank, to which rank.
using Mailbox = std::tuple<int, int, int>;

class Hub {
  public:
    explicit Hub(int size)
        : m_size(size),
          m_left(static_cast<std::size_t>(size), false),
          m_integers(static_cast<std::size_t>(size)),
          m_reals(static_cast<std::size_t>(size)),
          m_messages(static_cast<std::size_t>(size) * static_cast<std::size_t>(size)) {}

    int size() const { return m_size; }

    // All ranks have come here.
    void barrier() {
        std::unique_lock lock(m_mutex);
        const long round = m_round;
        if (++m_arrived == m_size) {
            m_arrived = 0;
            ++m_round;
            m_changed.notify_all();
        }
        m_changed.wait(lock, [&] { return m_round != round || m_anyLeft; });
        if (m_round == round) failOnMissingRank();
    }

    // Every rank writes and reads places of its own between barriers.
    std::vector<std::int64_t>& integers() { return m_integers; }
    std::vector<double>& reals() { return m_reals; }
    Bytes& message(int from, int to) {
        return m_messages[static_cast<std::size_t>(from) * static_cast<std::size_t>(m_size) +
                          static_cast<std::size_t>(to)];
    }

    void post(const Mailbox& mailbox, std::vector<double> values) {
        const std::lock_guard lock(m_mutex);
        m_mail[mailbox].push_back(std::move(values));
        m_changed.notify_all();
    }

    std::vector<double> take(const Mailbox& mailbox) {
        const auto from = static_cast<std::size_t>(std::get<1>(mailbox));
        std::unique_lock lock(m_mutex);
        std::deque<std::vector<double>>& letters = m_mail[mailbox];
        m_changed.wait(lock, [&] { return !letters.empty() || m_left[from]; });
        if (letters.empty()) failOnMissingRank();
        std::vector<double> values = std::move(letters.front());
        letters.pop_front();
        return values;
    }

    // The rank makes no further call; `failure` is what it threw, or null.
    void leave(int rank, std::exception_ptr failure) {
        const std::lock_guard lock(m_mutex);
        if (failure && !m_failure) m_failure = std::move(failure);
        m_left[static_cast<std::size_t>(rank)] = true;
        m_anyLeft = true;
        m_changed.notify_all();
    }

    std::exception_ptr failure() const { return m_failure; }

  private:
    [[noreturn]] static void failOnMissingRank() {
        throw RunError("another rank has left the run");
    }

    const int m_size;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_arrived = 0;
    long m_round = 0;
    std::vector<bool> m_left;
    bool m_anyLeft = false;
    std::exception_ptr m_failure;
    std::map<Mailbox, std::deque<std::vector<double>>> m_mail;
    std::vector<std::int64_t> m_integers;
    std::vector<double> m_reals;
    std::vector<Bytes> m_messages;
};

class MailboxExchange final : public CCommunication {
  public:
    MailboxExchange(Hub& hub, int exchange, int rank, HaloLinks links)
        : m_hub(hub), m_exchange(exchange), m_rank(rank), m_links(std::move(links)) {}

    void DDM_Exch(double* values) override {
        for (const HaloLinks::Link& link : m_links.links) {
            std::vector<double> sent;
            sent.reserve(link.sendSlots.size());
            for (const int slot : link.sendSlots) sent.push_back(values[slot]);
            m_hub.post({m_exchange, m_rank, link.rank}, std::move(sent));
        }
        for (const HaloLinks::Link& link : m_links.links) {
            const std::vector<double> received = m_hub.take({m_exchange, link.rank, m_rank});
            for (std::size_t i = 0; i < link.receiveSlots.size(); ++i)
                values[link.receiveSlots[i]] = received[i];
        }
    }

  private:
    Hub& m_hub;
    int m_exchange;
    int m_rank;
    HaloLinks m_links;
};

class ThreadRank final : public Ranks {
  public:
    ThreadRank(Hub& hub, int rank) : m_hub(hub), m_rank(rank) {}

    int rank() const override { return m_rank; }
    int size() const override { return m_hub.size(); }

    std::int64_t maximum(std::int64_t value) override {
        const std::vector<std::int64_t> all = onBoard(m_hub.integers(), value);
        return *std::max_element(all.begin(), all.end());
    }
    std::int64_t sum(std::int64_t value) override {
        std::int64_t total = 0;
        for (const std::int64_t each : onBoard(m_hub.integers(), value)) total += each;
        return total;
    }
    double maximum(double value) override {
        const std::vector<double> all = onBoard(m_hub.reals(), value);
        return *std::max_element(all.begin(), all.end());
    }

    std::vector<Bytes> exchange(std::vector<Bytes> toRanks) override {
        for (int to = 0; to < size(); ++to)
            m_hub.message(m_rank, to) = std::move(toRanks[static_cast<std::size_t>(to)]);
        m_hub.barrier();
        std::vector<Bytes> received;
        received.reserve(static_cast<std::size_t>(size()));
        for (int from = 0; from < size(); ++from)
            received.push_back(std::move(m_hub.message(from, m_rank)));
        m_hub.barrier();
        return received;
    }

    std::unique_ptr<CCommunication> haloExchange(const HaloLinks& links) override {
        return std::make_unique<MailboxExchange>(m_hub, m_exchanges++, m_rank, links);
    }

  private:
    template <class Value>
    std::vector<Value> onBoard(std::vector<Value>& board, Value value) {
        board[static_cast<std::size_t>(m_rank)] = value;
        m_hub.barrier();
        std::vector<Value> all = board;
        m_hub.barrier();
        return all;
    }

    Hub& m_hub;
    int m_rank;
    int m_exchanges = 0;  // set up so far; the same on all ranks
};

}  // namespace

void runAsThreads(int size, const std::function<void(Ranks&)>& body) {
    Hub hub(size);
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(size));
    for (int rank = 0; rank < size; ++rank) {
        threads.emplace_back([&hub, &body, rank] {
            std::exception_ptr failure;
            try {
                ThreadRank own(hub, rank);
                body(own);
            } catch (...) {
                failure = std::current_exception();
            }
            hub.leave(rank, failure);
        });
    }
    for (std::thread& thread : threads) thread.join();
    if (hub.failure()) std::rethrow_exception(hub.failure());
}

}  // namespace weldline
