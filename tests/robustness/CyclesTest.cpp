#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "CountedMemory.h"
#include "QuietHost.h"

// A host that makes a new handle for every case, for days.

// The address sanitizer keeps released memory for a while; here as little as possible, so that the
// resident size says something under it, too.
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=1";
}

namespace weldline::test {

namespace {

constexpr int kWarmUp = 1000;
constexpr int kCycles = 10000;

long residentBytes() {
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

long openFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

// Every way through the calculation in turn, each with the trace on.
class Cycling {
  public:
    Cycling() : m_angles(1) {
        for (const Choice& choice : everyChoice()) {
            m_hosts.push_back(std::make_unique<QuietHost>(addTwoCells));
            m_hosts.back()->choose(choice, {"FlagDebugOutput = 1"});
        }
        m_angles = m_hosts[0]->roomForAngles();
    }

    void run(int cycles) {
        for (int i = 0; i < cycles; ++i) m_hosts[i % m_hosts.size()]->calculate(m_angles);
    }

  private:
    std::vector<std::unique_ptr<QuietHost>> m_hosts;
    std::vector<double> m_angles;
};

}  // namespace

TEST(Cycles, ten_thousand_handles_leave_no_memory_and_no_file_behind) {
    Cycling cycling;
    cycling.run(kWarmUp);
    const long filesBefore = openFiles();
    const long residentBefore = residentBytes();
    const MemoryInUse before = memoryInUse();
    const std::size_t heapBefore = mallinfo2().uordblks;
    cycling.run(kCycles);
    EXPECT_EQ(mallinfo2().uordblks, heapBefore);
    EXPECT_EQ(memoryInUse(), before);
    EXPECT_EQ(openFiles(), filesBefore);
    // A hundred bytes lost per cycle would show.
    EXPECT_LE(residentBytes() - residentBefore, 1L << 20U);
}

// The same handle over and over: the second run has everything the later ones need.
TEST(Cycles, ten_thousand_runs_of_one_handle_need_no_more_memory_than_two) {
    QuietHost host(addTwoCells);
    host.choose({3, 1}, {"FlagDebugOutput = 1"});
    CKVR3D_WeldLine_Manipulator handle;
    const auto bindAndRun = [&](int times) {
        for (int i = 0; i < times; ++i) {
            host.bind(handle);
            handle.calWeldLine();
        }
    };
    bindAndRun(2);
    const MemoryInUse before = memoryInUse();
    const std::size_t heapBefore = mallinfo2().uordblks;
    bindAndRun(kCycles);
    EXPECT_EQ(mallinfo2().uordblks, heapBefore);
    EXPECT_EQ(memoryInUse(), before);
}

}  // namespace weldline::test
