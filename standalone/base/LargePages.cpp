// The process's `new`, with large pages under large arrays: at one fault per 4 KiB the first touch
// of all arrays of a run takes longer than most of its steps. The system may lack large pages;
// everything is the same then, but slower.

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kLarge = std::size_t{1} << 22U;

// A hint; its failure changes nothing. The array begins with the next whole page.
void askForLargePages(void* array, std::size_t size) {
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::size_t skipped = page - reinterpret_cast<std::uintptr_t>(array) % page;
    ::madvise(static_cast<char*>(array) + skipped, (size - skipped) / page * page, MADV_HUGEPAGE);
}

}  // namespace

void* operator new(std::size_t size) {
    for (;;) {
        if (void* memory = std::malloc(size == 0 ? 1 : size)) {
            if (size >= kLarge) askForLargePages(memory, size);
            return memory;
        }
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr) throw std::bad_alloc();
        handler();
    }
}

// With its own failure, so that no other library's `new` is paired with the `delete` below.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
