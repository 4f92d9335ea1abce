#include "CountedMemory.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace weldline::test {

namespace {

std::atomic<long> g_blocks{0};
std::atomic<long> g_bytes{0};
thread_local long g_untilFailure = 0;  // 0: no allocation fails

// Stands before each block.
struct alignas(std::max_align_t) Header {
    std::size_t size;
};

bool isFailing() {
    return g_untilFailure > 0 && --g_untilFailure == 0;
}

void* allocate(std::size_t size) {
    if (isFailing()) throw std::bad_alloc();
    if (size > static_cast<std::size_t>(PTRDIFF_MAX) - sizeof(Header)) throw std::bad_alloc();
    auto* header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
    if (header == nullptr) throw std::bad_alloc();
    header->size = size;
    g_blocks += 1;
    g_bytes += static_cast<long>(size);
    return header + 1;
}

void* allocateOrNull(std::size_t size) noexcept {
    try {
        return allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void release(void* block) {
    if (block == nullptr) return;
    Header* header = static_cast<Header*>(block) - 1;
    g_blocks -= 1;
    g_bytes -= static_cast<long>(header->size);
    std::free(header);
}

}  // namespace

MemoryInUse memoryInUse() {
    return {g_blocks, g_bytes};
}

FailingAllocation::FailingAllocation(long n) {
    g_untilFailure = n;
}

FailingAllocation::~FailingAllocation() {
    g_untilFailure = 0;
}

}  // namespace weldline::test

// The linker leads the library's calls of calloc to the second of these, and the first to calloc.
extern "C" void* callocItself(std::size_t count, std::size_t size) asm("__real_calloc");
extern "C" void* callocOfTheLibrary(std::size_t count, std::size_t size) asm("__wrap_calloc");

void* callocOfTheLibrary(std::size_t count, std::size_t size) {
    return weldline::test::isFailing() ? nullptr : callocItself(count, size);
}

// All forms, because the sanitizers bring every form of their own that a program leaves out.
void* operator new(std::size_t size) {
    return weldline::test::allocate(size);
}

void* operator new[](std::size_t size) {
    return weldline::test::allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return weldline::test::allocateOrNull(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return weldline::test::allocateOrNull(size);
}

void operator delete(void* block) noexcept {
    weldline::test::release(block);
}

void operator delete[](void* block) noexcept {
    weldline::test::release(block);
}

void operator delete(void* block, std::size_t) noexcept {
    weldline::test::release(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    weldline::test::release(block);
}

void operator delete(void* block, const std::nothrow_t&) noexcept {
    weldline::test::release(block);
}

void operator delete[](void* block, const std::nothrow_t&) noexcept {
    weldline::test::release(block);
}
