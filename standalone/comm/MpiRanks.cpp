#include "MpiRanks.h"

#include <mpi.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <utility>

#include "CCommunication.h"
#include "base/Errors.h"

namespace weldline {

namespace {

enum Tag : int { messageTag = 1, haloTag = 2 };

void check(int code, const char* doing) {
    if (code == MPI_SUCCESS) return;
    std::array<char, MPI_MAX_ERROR_STRING> text{};
    int length = 0;
    MPI_Error_string(code, text.data(), &length);
    throw RunError(std::string("MPI failed while ") + doing + ": " +
                   std::string(text.data(), static_cast<std::size_t>(length)));
}

// A communicator of our own, on which errors come back instead of ending the process.
class Communicator {
  public:
    explicit Communicator(MPI_Comm given) {
        check(MPI_Comm_dup(given, &m_own), "duplicating the communicator");
        check(MPI_Comm_set_errhandler(m_own, MPI_ERRORS_RETURN), "choosing the error handling");
        check(MPI_Comm_rank(m_own, &m_rank), "asking for the rank");
        check(MPI_Comm_size(m_own, &m_size), "asking for the number of ranks");
    }
    ~Communicator() { MPI_Comm_free(&m_own); }
    Communicator(const Communicator&) = delete;
    Communicator& operator=(const Communicator&) = delete;

    MPI_Comm get() const { return m_own; }
    int rank() const { return m_rank; }
    int size() const { return m_size; }

  private:
    MPI_Comm m_own = MPI_COMM_NULL;
    int m_rank = 0;
    int m_size = 1;
};

// One buffer and one persistent request per neighbour and direction, set up once. An exchange
// involves neighbours only.
class PersistentExchange final : public CCommunication {
  public:
    PersistentExchange(MPI_Comm communicator, HaloLinks links) : m_links(std::move(links)) {
        for (const HaloLinks::Link& link : m_links.links) {
            m_received.emplace_back(link.receiveSlots.size());
            m_sent.emplace_back(link.sendSlots.size());
        }
        try {
            for (std::size_t i = 0; i < m_received.size(); ++i)
                check(MPI_Recv_init(m_received[i].data(), static_cast<int>(m_received[i].size()),
                                    MPI_DOUBLE, m_links.links[i].rank, haloTag, communicator,
                                    newRequest()),
                      "setting up the halo exchange");
            for (std::size_t i = 0; i < m_sent.size(); ++i)
                check(
                    MPI_Send_init(m_sent[i].data(), static_cast<int>(m_sent[i].size()), MPI_DOUBLE,
                                  m_links.links[i].rank, haloTag, communicator, newRequest()),
                    "setting up the halo exchange");
        } catch (...) {
            freeRequests();
            throw;
        }
    }
    ~PersistentExchange() override { freeRequests(); }
    PersistentExchange(const PersistentExchange&) = delete;
    PersistentExchange& operator=(const PersistentExchange&) = delete;

    void DDM_Exch(double* values) override {
        for (std::size_t i = 0; i < m_sent.size(); ++i)
            for (std::size_t k = 0; k < m_sent[i].size(); ++k)
                m_sent[i][k] = values[m_links.links[i].sendSlots[k]];
        const int count = static_cast<int>(m_requests.size());
        if (count == 0) return;  // which Open MPI takes for an invalid list
        check(MPI_Startall(count, m_requests.data()), "starting the halo exchange");
        check(MPI_Waitall(count, m_requests.data(), MPI_STATUSES_IGNORE),
              "waiting for the halo exchange");
        for (std::size_t i = 0; i < m_received.size(); ++i)
            for (std::size_t k = 0; k < m_received[i].size(); ++k)
                values[m_links.links[i].receiveSlots[k]] = m_received[i][k];
    }

  private:
    MPI_Request* newRequest() { return &m_requests.emplace_back(MPI_REQUEST_NULL); }
    void freeRequests() {
        for (MPI_Request& request : m_requests)
            if (request != MPI_REQUEST_NULL) MPI_Request_free(&request);
    }

    HaloLinks m_links;
    std::vector<std::vector<double>> m_received, m_sent;  // per link
    std::vector<MPI_Request> m_requests;                  // receiving first, then sending
};

class MpiRanks final : public Ranks {
  public:
    MpiRanks(MPI_Comm communicator, std::size_t largestMessage)
        : m_communicator(communicator), m_largestMessage(largestMessage) {}

    int rank() const override { return m_communicator.rank(); }
    int size() const override { return m_communicator.size(); }

    std::int64_t maximum(std::int64_t value) override {
        return reduced(value, MPI_INT64_T, MPI_MAX, "taking a maximum");
    }
    std::int64_t sum(std::int64_t value) override {
        return reduced(value, MPI_INT64_T, MPI_SUM, "taking a sum");
    }
    double maximum(double value) override {
        return reduced(value, MPI_DOUBLE, MPI_MAX, "taking a maximum");
    }

    std::vector<Bytes> exchange(std::vector<Bytes> toRanks) override {
        std::vector<Bytes> received = roomForMessages(toRanks);
        std::vector<MPI_Request> requests;
        for (int other = 0; other < size(); ++other) {
            if (other == rank()) continue;
            eachPart(received[static_cast<std::size_t>(other)], [&](std::byte* part, int length) {
                check(MPI_Irecv(part, length, MPI_BYTE, other, messageTag, m_communicator.get(),
                                &requests.emplace_back()),
                      "receiving a message");
            });
        }
        for (int other = 0; other < size(); ++other) {
            if (other == rank()) continue;
            eachPart(toRanks[static_cast<std::size_t>(other)], [&](std::byte* part, int length) {
                check(MPI_Isend(part, length, MPI_BYTE, other, messageTag, m_communicator.get(),
                                &requests.emplace_back()),
                      "sending a message");
            });
        }
        const auto own = static_cast<std::size_t>(rank());
        received[own] = std::move(toRanks[own]);
        check(MPI_Waitall(static_cast<int>(requests.size()), requests.data(), MPI_STATUSES_IGNORE),
              "waiting for messages");
        return received;
    }

    std::unique_ptr<CCommunication> haloExchange(const HaloLinks& links) override {
        return std::make_unique<PersistentExchange>(m_communicator.get(), links);
    }

  private:
    template <class Value>
    Value reduced(Value value, MPI_Datatype type, MPI_Op operation, const char* doing) {
        Value result{};
        check(MPI_Allreduce(&value, &result, 1, type, operation, m_communicator.get()), doing);
        return result;
    }

    std::vector<Bytes> roomForMessages(const std::vector<Bytes>& toRanks) {
        std::vector<std::int64_t> sent;
        sent.reserve(toRanks.size());
        for (const Bytes& message : toRanks)
            sent.push_back(static_cast<std::int64_t>(message.size()));
        std::vector<std::int64_t> lengths(sent.size());
        check(MPI_Alltoall(sent.data(), 1, MPI_INT64_T, lengths.data(), 1, MPI_INT64_T,
                           m_communicator.get()),
              "telling the lengths of messages");
        std::vector<Bytes> received(lengths.size());
        for (std::size_t i = 0; i < lengths.size(); ++i)
            if (static_cast<int>(i) != rank())
                received[i].resize(static_cast<std::size_t>(lengths[i]));
        return received;
    }

    template <class Action>
    void eachPart(Bytes& message, Action action) {
        for (std::size_t begin = 0; begin < message.size(); begin += m_largestMessage)
            action(message.data() + begin,
                   static_cast<int>(std::min(m_largestMessage, message.size() - begin)));
    }

    Communicator m_communicator;
    std::size_t m_largestMessage;
};

}  // namespace

MpiSession::MpiSession(int& argc, char**& argv) {
    check(MPI_Init(&argc, &argv), "starting");
}

MpiSession::~MpiSession() {
    MPI_Finalize();
}

std::unique_ptr<Ranks> MpiSession::world(std::size_t largestMessage) {
    return std::make_unique<MpiRanks>(MPI_COMM_WORLD, largestMessage);
}

void MpiSession::abort(int exitCode) {
    MPI_Abort(MPI_COMM_WORLD, exitCode);
    std::abort();
}

std::unique_ptr<Ranks> mpiRanks(int communicator, std::size_t largestMessage) {
    return std::make_unique<MpiRanks>(MPI_Comm_f2c(communicator), largestMessage);
}

}  // namespace weldline
