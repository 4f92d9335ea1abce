// The process's memory, with large pages under large arrays: at one fault per 4 KiB the first touch
// of all arrays of a run takes longer than most of its steps. The system may lack large pages;
// everything is the same then, but slower.
//
// `new` is replaced for the whole process, `calloc` for the objects that the program is linked of,
// those of the library with its zero-filled arrays among them (-Wl,--wrap=calloc).

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

constexpr int kLarge = 1 << 22;

// A large array gets a mapping of its own, which is new memory, and is given back when it is freed.
// Otherwise malloc raises its limit at the first such array that is freed, and those that follow
// lie in its heap on the small pages of others. As little of the heap's end is kept as may be.
[[gnu::constructor]] void mapLargeArrays() {
    ::mallopt(M_MMAP_THRESHOLD, kLarge);
    ::mallopt(M_TRIM_THRESHOLD, kLarge / 2);
}

// A hint; its failure changes nothing. The array begins with the next whole page.
void askForLargePages(void* array, std::size_t size) {
    if (size < kLarge) return;
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::size_t skipped = page - reinterpret_cast<std::uintptr_t>(array) % page;
    ::madvise(static_cast<char*>(array) + skipped, (size - skipped) / page * page, MADV_HUGEPAGE);
}

}  // namespace

// The linker leads the program's calls of calloc to the second of these, and the first to calloc.
extern "C" void* callocItself(std::size_t count, std::size_t size) asm("__real_calloc");
extern "C" void* callocOfTheProgram(std::size_t count, std::size_t size) asm("__wrap_calloc");

void* callocOfTheProgram(std::size_t count, std::size_t size) {
    void* memory = callocItself(count, size);
    if (memory != nullptr) askForLargePages(memory, count * size);
    return memory;
}

void* operator new(std::size_t size) {
    for (;;) {
        if (void* memory = std::malloc(size == 0 ? 1 : size)) {
            askForLargePages(memory, size);
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
