#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kLarge = 16U << 20U;
constexpr std::size_t kSmall = 1U << 20U;

struct Mapping {
    std::string name;   // "[heap]", or empty for a mapping without a file
    std::string flags;  // as the system tells them; "hg" where large pages are asked for
};

// The mapping of this process that holds an address.
Mapping mappingOf(const void* address) {
    const auto wanted = reinterpret_cast<std::uintptr_t>(address);
    std::ifstream file("/proc/self/smaps");
    Mapping found;
    bool isInside = false;
    for (std::string line; std::getline(file, line);) {
        std::uintptr_t begin = 0;
        std::uintptr_t end = 0;
        char dash = 0;
        std::istringstream words(line);
        if (words >> std::hex >> begin >> dash >> end && dash == '-') {
            isInside = begin <= wanted && wanted < end;
            if (isInside) {
                std::string word;
                words >> word >> word >> word >> word >> found.name;
            }
        } else if (isInside && line.rfind("VmFlags:", 0) == 0) {
            found.flags = line + " ";
        }
    }
    return found;
}

bool isAskedFor(const char* array, std::size_t size) {
    return mappingOf(array + size / 2).flags.find(" hg ") != std::string::npos;
}

// A system without large pages refuses the question.
bool systemHasLargePages() {
    void* probe = ::mmap(nullptr, kLarge, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    const bool hasThem = ::madvise(probe, kLarge, MADV_HUGEPAGE) == 0;
    ::munmap(probe, kLarge);
    return hasThem;
}

struct Free {
    void operator()(char* array) const { std::free(array); }
};
std::unique_ptr<char, Free> zeros(std::size_t size) {
    return std::unique_ptr<char, Free>(static_cast<char*>(std::calloc(size / 8, 8)));
}

TEST(LargePages, are_asked_for_under_large_new_arrays) {
    const std::unique_ptr<char[]> array(new char[kLarge]);
    EXPECT_EQ(isAskedFor(array.get(), kLarge), systemHasLargePages());
}

TEST(LargePages, are_asked_for_under_large_zeros) {
    const auto array = zeros(kLarge);
    EXPECT_EQ(isAskedFor(array.get(), kLarge), systemHasLargePages());
    EXPECT_EQ(std::count(array.get(), array.get() + kLarge, 0), kLarge);
}

TEST(LargePages, are_not_asked_for_under_small_arrays) {
    const std::unique_ptr<char[]> array(new char[kSmall]);
    EXPECT_FALSE(isAskedFor(array.get(), kSmall));
    EXPECT_FALSE(isAskedFor(zeros(kSmall).get(), kSmall));
}

TEST(LargePages, a_large_array_stays_out_of_the_heap_after_another_is_freed) {
    auto array = zeros(kLarge);
    ASSERT_EQ(mappingOf(array.get() + kLarge / 2).name, "");
    array.reset();
    array = zeros(kLarge);
    EXPECT_EQ(mappingOf(array.get() + kLarge / 2).name, "");
    const auto small = zeros(kSmall);
    EXPECT_EQ(mappingOf(small.get()).name, "[heap]");
}

TEST(LargePages, the_end_of_the_heap_is_not_kept_for_large_arrays) {
    constexpr std::size_t kJustLarge = 9U << 19U;  // 4.5 MB, an array of a rank with 500,000 cells
    constexpr std::size_t kCount = 7;
    std::vector<std::unique_ptr<char, Free>> small;
    small.reserve(kCount);
    while (small.size() < kCount) small.push_back(zeros(kSmall));
    const char* last = small.back().get();
    small.clear();  // nothing has been taken behind them
    const auto array = zeros(kJustLarge);
    EXPECT_EQ(mappingOf(array.get() + kJustLarge / 2).name, "");
    EXPECT_EQ(isAskedFor(array.get(), kJustLarge), systemHasLargePages());
    EXPECT_EQ(mappingOf(last).name, "");  // the heap has ended before
}

TEST(LargePages, zeros_beyond_all_memory_are_refused_and_nothing_is_asked_for) {
    const auto small = zeros(kSmall);
    volatile std::size_t count = SIZE_MAX / 2;
    EXPECT_EQ(std::calloc(count, 4), nullptr);
    EXPECT_EQ(std::calloc(count, 1), nullptr);
    EXPECT_FALSE(isAskedFor(small.get(), kSmall));
}

}  // namespace
