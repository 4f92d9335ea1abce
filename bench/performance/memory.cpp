// Memory of the library by array, in bytes per cell, after a run of the default configuration: what
// is allocated, and what of it was ever touched and so takes memory. Prints JSON.

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "Calculation.h"
#include "ReadChoice.h"
#include "base/Errors.h"

using namespace weldline;
using namespace weldline::performance;

namespace {

struct Array {
    std::string name;
    std::vector<void*> parts;  // starts of allocations
};

// Rows lie one behind the other from row 0 on.
template <class Value>
Array rows(const std::string& name, Value** table) {
    return {name, {table, table[0]}};
}

std::vector<Array> ownedArrays(CKVR3DWeldLine& r) {
    return {
        {"flow variable, smoothed and loaded", {r.m_pVariable, r.m_pVariableOrg}},
        {"first gradient set", {r.m_pGradX, r.m_pGradY, r.m_pGradZ}},
        {"second gradient set", {r.m_pGrad2X, r.m_pGrad2Y, r.m_pGrad2Z}},
        {"work arrays", {r.m_pWork1X, r.m_pWork1Y, r.m_pWork1Z}},
        {"flat flags", {r.m_pZeroGradFlag}},
        {"cell flags kept for the host", {r.m_pCellFlag2}},
        {"meeting angles", {r.m_pMeetingAngle}},
        rows("node scratch kept for the host", r.m_ppNodeScratch),
        rows("cells of nodes", r.m_ppNodeCell),
        rows("inner faces of cells", r.m_ppCellInnerFace),
    };
}

std::size_t allocated(const Array& array) {
    std::size_t bytes = 0;
    for (void* part : array.parts) bytes += malloc_usable_size(part);
    return bytes;
}

// The system keeps a number of eight bytes per page, whose highest bit tells whether the page is
// there.
std::size_t touched(void* begin, std::size_t size) {
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t first = address / page;
    std::vector<std::uint64_t> states((address + size + page - 1) / page - first);
    const std::size_t bytes = states.size() * sizeof(std::uint64_t);
    const int map = open("/proc/self/pagemap", O_RDONLY | O_CLOEXEC);
    const ssize_t got = pread(map, states.data(), bytes, static_cast<off_t>(first * sizeof first));
    close(map);
    if (got != static_cast<ssize_t>(bytes))
        throw RunError("the system does not tell which pages are in memory");
    std::size_t pages = 0;
    for (const std::uint64_t state : states) pages += state >> 63U;
    return std::min(size, pages * page);
}

std::size_t touched(const Array& array) {
    std::size_t bytes = 0;
    for (void* part : array.parts) bytes += touched(part, malloc_usable_size(part));
    return bytes;
}

// In bytes, from a line such as "VmHWM:  1234 kB".
double statusOfProcess(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0.0;
        if (word == key + ":" && status >> kilobytes) return 1024.0 * kilobytes;
    }
    throw RunError("the system does not tell " + key);
}

void forgetPeak() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

void print(BoundCase& bound) {
    const double cells = bound.model().mesh().m_nCV;
    forgetPeak();
    const double before = statusOfProcess("VmRSS");
    const auto r = bound.bound<CKVR3DWeldLine>();
    r->calWeldLine();
    const double peak = statusOfProcess("VmHWM") - before;
    std::cout << "{\"cells\": " << cells << ", \"peak\": " << peak / cells << ", \"arrays\": {";
    const char* comma = "";
    for (const Array& array : ownedArrays(*r)) {
        std::cout << comma << "\n  \"" << array.name << "\": ["
                  << static_cast<double>(allocated(array)) / cells << ", "
                  << static_cast<double>(touched(array)) / cells << "]";
        comma = ",";
    }
    std::cout << "\n}}\n";
}

}  // namespace

int main(int argc, char** argv) {
    // Every large array in pages of its own, so that none takes over pages that others touched.
    mallopt(M_MMAP_THRESHOLD, 1 << 16);
    try {
        BoundCase bound(readChoice(argc - 1, argv + 1));
        print(bound);
        return 0;
    } catch (const UsageError& error) {
        std::cerr << error.what() << "\nusage: weldline_memory [MESH]\n" << kChoiceUsage;
        return 2;
    } catch (const RunError& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
