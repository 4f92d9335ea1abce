#include "Collective.h"

#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <new>

namespace weldline::reference {

namespace {

constexpr int longestWait = 60;  // seconds

std::size_t wholeDoubles(std::size_t bytes) {
    return (bytes + sizeof(double) - 1) / sizeof(double) * sizeof(double);
}

}  // namespace

struct Collective::Meeting {
    pthread_mutex_t mutex;
    pthread_cond_t changed;
    int arrived;
    unsigned round;
    bool broken;
};

Collective::Collective(int partitions, int largestSlots)
    : partitions_(partitions), largestSlots_(largestSlots) {
    const std::size_t count = static_cast<std::size_t>(partitions);
    const std::size_t head = wholeDoubles(sizeof(Meeting));
    const std::size_t values = wholeDoubles(count * sizeof(int));
    const std::size_t slots = static_cast<std::size_t>(largestSlots) + 1;
    bytes_ = head + values + count * slots * sizeof(double);
    void* const memory =
        mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::bad_alloc();
    unsigned char* const bytes = static_cast<unsigned char*>(memory);
    meeting_ = new (memory) Meeting{};
    values_ = reinterpret_cast<int*>(bytes + head);
    arrays_ = reinterpret_cast<double*>(bytes + head + values);

    pthread_mutexattr_t mutexKind;
    pthread_mutexattr_init(&mutexKind);
    pthread_mutexattr_setpshared(&mutexKind, PTHREAD_PROCESS_SHARED);
    pthread_mutex_init(&meeting_->mutex, &mutexKind);
    pthread_mutexattr_destroy(&mutexKind);
    pthread_condattr_t conditionKind;
    pthread_condattr_init(&conditionKind);
    pthread_condattr_setpshared(&conditionKind, PTHREAD_PROCESS_SHARED);
    pthread_cond_init(&meeting_->changed, &conditionKind);
    pthread_condattr_destroy(&conditionKind);
}

// On purpose: mutex and condition are not destroyed. A process that was killed may still count as
// waiting, and destruction would wait for it; they hold nothing but this memory.
Collective::~Collective() {
    munmap(meeting_, bytes_);
}

void Collective::barrier() {
    if (partitions_ == 1) return;
    Meeting& m = *meeting_;
    pthread_mutex_lock(&m.mutex);
    const unsigned round = m.round;
    if (!m.broken && ++m.arrived == partitions_) {
        m.arrived = 0;
        ++m.round;
        pthread_cond_broadcast(&m.changed);
    }
    timespec end{};
    clock_gettime(CLOCK_REALTIME, &end);
    end.tv_sec += longestWait;
    while (m.round == round && !m.broken) {
        if (pthread_cond_timedwait(&m.changed, &m.mutex, &end) == ETIMEDOUT) {
            m.broken = true;
            pthread_cond_broadcast(&m.changed);
        }
    }
    pthread_mutex_unlock(&m.mutex);
}

void Collective::leave() {
    pthread_mutex_lock(&meeting_->mutex);
    meeting_->broken = true;
    pthread_cond_broadcast(&meeting_->changed);
    pthread_mutex_unlock(&meeting_->mutex);
}

bool Collective::broken() const {
    pthread_mutex_lock(&meeting_->mutex);
    const bool result = meeting_->broken;
    pthread_mutex_unlock(&meeting_->mutex);
    return result;
}

double* Collective::arrayOf(int partition) const {
    return arrays_ + static_cast<std::size_t>(partition) * (largestSlots_ + 1);
}

void Collective::exchange(int partition, double* cellArray, int slots,
                          const std::vector<PartitionData::HaloSource>& halo) {
    if (halo.empty() && partitions_ == 1) return;
    double* const own = arrayOf(partition);
    for (int i = 1; i <= slots; ++i) own[i] = cellArray[i];
    barrier();
    if (!broken()) {
        for (const PartitionData::HaloSource& source : halo) {
            cellArray[source.slot] = arrayOf(source.partition)[source.cell];
        }
    }
    barrier();
}

int Collective::maximum(int partition, int value) {
    values_[partition] = value;
    barrier();
    const int largest = *std::max_element(values_, values_ + partitions_);
    barrier();
    return largest;
}

}  // namespace weldline::reference
