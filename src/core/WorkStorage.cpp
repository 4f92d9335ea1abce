#include "WorkStorage.h"

#include <algorithm>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace weldline::core {

namespace {

// Without large pages everything works the same, a little slower: the answer does not matter.
void askForLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) {
#if defined(__linux__)
    constexpr std::size_t kPage = 4096;
    constexpr std::size_t kWorthwhile = std::size_t{1} << 22;
    if (bytes < kWorthwhile) return;
    const std::size_t skipped = kPage - reinterpret_cast<std::uintptr_t>(memory) % kPage;
    madvise(static_cast<char*>(memory) + skipped, bytes - skipped, MADV_HUGEPAGE);
#endif
}

}  // namespace

void* zeroedMemory(std::size_t bytes) {
    void* memory = std::calloc(std::max<std::size_t>(bytes, 1), 1);
    if (memory == nullptr) throw std::bad_alloc();
    askForLargePages(memory, bytes);
    return memory;
}

}  // namespace weldline::core
