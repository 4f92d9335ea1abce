// Memory for a target whose inputs ask for absurd amounts of it: an allocation beyond a gibibyte
// fails as it would on a machine that has no more. The address sanitizer's own operator new ends
// the process instead, and its malloc does so unless told. Leaks are no matter here: VTK loses
// memory where a file is damaged.
#include <cstdlib>
#include <new>

extern "C" const char* __asan_default_options();

extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1:max_allocation_size_mb=1024:alloc_dealloc_mismatch=0:"
           "detect_leaks=0";
}

namespace {

void* allocate(std::size_t bytes) {
    void* memory = bytes > (std::size_t{1} << 30U) ? nullptr : std::malloc(bytes == 0 ? 1 : bytes);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

}  // namespace

void* operator new(std::size_t bytes) {
    return allocate(bytes);
}

void* operator new[](std::size_t bytes) {
    return allocate(bytes);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*bytes*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t /*bytes*/) noexcept {
    std::free(memory);
}
