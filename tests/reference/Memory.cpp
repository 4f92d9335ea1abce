#include "Memory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

// The sanitizers' run-time library has these two; without it the addresses are null.
extern "C" __attribute__((weak)) void __asan_poison_memory_region(const volatile void*, size_t);
extern "C" __attribute__((weak)) void __asan_unpoison_memory_region(const volatile void*, size_t);

namespace weldline::reference {

namespace {

// The sanitizer hides the end of a group of eight bytes, never its beginning alone.
constexpr std::size_t group = 8;

std::size_t pageSize() {
    static const std::size_t size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return size;
}

bool endsGroup(const unsigned char* byte) {
    return reinterpret_cast<std::uintptr_t>(byte) % group == 0;
}

}  // namespace

Memory::Memory(const unsigned char* values, std::size_t elementSize, std::size_t bytes, First first,
               Placing placing)
    : pages_(placing == Placing::endOfPage || placing == Placing::startOfPage),
      bytes_(bytes),
      hidden_(first == First::meaningless && bytes > 0 ? elementSize : 0) {
    if (pages_) {
        placeInPages(placing);
    } else {
        placeOnHeap();
    }
    copy(values, placing == Placing::startOfPage ? hidden_ : 0);
    if (hidden_ > 0 && __asan_poison_memory_region != nullptr && endsGroup(array_ + hidden_)) {
        __asan_poison_memory_region(array_, hidden_);
    }
}

// A meaningless element 0 ends a group of eight bytes, so that the sanitizer can hide it.
void Memory::placeOnHeap() {
    const std::size_t shift = (group - hidden_ % group) % group;
    blockBytes_ = shift + bytes_;
    block_ = static_cast<unsigned char*>(::operator new(blockBytes_));
    array_ = block_ + shift;
}

void Memory::placeInPages(Placing placing) {
    const std::size_t page = pageSize();
    const std::size_t held = placing == Placing::startOfPage ? bytes_ - hidden_ : bytes_;
    const std::size_t inner = (held + page - 1) / page * page;
    blockBytes_ = inner + 2 * page;
    void* const mapped = mmap(nullptr, blockBytes_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) throw std::bad_alloc();
    block_ = static_cast<unsigned char*>(mapped);
    unsigned char* const open = block_ + page;
    if (inner > 0 && mprotect(open, inner, PROT_READ | PROT_WRITE) != 0) {
        munmap(block_, blockBytes_);
        throw std::bad_alloc();
    }
    array_ = placing == Placing::startOfPage ? open - hidden_ : open + inner - bytes_;
}

void Memory::copy(const unsigned char* values, std::size_t from) {
    if (bytes_ > from) std::memcpy(array_ + from, values + from, bytes_ - from);
}

Memory::Memory(Memory&& other) noexcept
    : block_(std::exchange(other.block_, nullptr)),
      blockBytes_(other.blockBytes_),
      pages_(other.pages_),
      array_(other.array_),
      bytes_(other.bytes_),
      hidden_(other.hidden_) {}

Memory::~Memory() {
    if (block_ == nullptr) return;
    if (__asan_unpoison_memory_region != nullptr) {
        __asan_unpoison_memory_region(block_, blockBytes_);
    }
    if (pages_) {
        munmap(block_, blockBytes_);
    } else {
        ::operator delete(block_);
    }
}

}  // namespace weldline::reference
