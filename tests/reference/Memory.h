#pragma once

#include <cstddef>
#include <type_traits>
#include <vector>

namespace weldline::reference {

// Where the host puts an array.
enum class Placing {
    heap,         // in a block of exactly its length
    heapTails,    // rows of tables get poisoned elements behind their count
    endOfPage,    // the first byte behind the array is a page that nobody may touch
    startOfPage,  // the byte before the first element that may be read is such a page
};

// Whether element 0 means something: in rows it is the count, elsewhere nothing.
enum class First { meaningful, meaningless };

// The memory of one array. With guarded pages an access out of bounds ends the process at once, in
// every build; under the address sanitizer so does every access out of bounds and to a meaningless
// element 0.
class Memory {
  public:
    template <class T>
    Memory(const std::vector<T>& values, First first, Placing placing)
        : Memory(reinterpret_cast<const unsigned char*>(values.data()), sizeof(T),
                 values.size() * sizeof(T), first, placing) {}
    Memory(Memory&& other) noexcept;
    Memory& operator=(Memory&&) = delete;
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;
    ~Memory();

    // Address of element 0, even where it may not be touched.
    void* address() const { return array_; }
    // What may be read.
    const unsigned char* firstByte() const { return array_ + hidden_; }
    std::size_t bytes() const { return bytes_ - hidden_; }

    // Overwrites what may be read.
    template <class T>
    void fill(const std::vector<T>& values) {
        static_assert(std::is_trivially_copyable_v<T>);
        copy(reinterpret_cast<const unsigned char*>(values.data()), hidden_);
    }

  private:
    Memory(const unsigned char* values, std::size_t elementSize, std::size_t bytes, First first,
           Placing placing);
    void placeOnHeap();
    void placeInPages(Placing placing);
    void copy(const unsigned char* values, std::size_t from);

    unsigned char* block_ = nullptr;  // what was allocated, pages or heap
    std::size_t blockBytes_ = 0;
    bool pages_ = false;
    unsigned char* array_ = nullptr;
    std::size_t bytes_ = 0;
    std::size_t hidden_ = 0;  // bytes of a meaningless element 0
};

}  // namespace weldline::reference
