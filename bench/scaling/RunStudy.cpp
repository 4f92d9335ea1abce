#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>

#include "BlockMesh.h"
#include "Studies.h"
#include "TimedRanks.h"
#include "bind/Analysis.h"
#include "partition/CutMesh.h"
#include "partition/PackMeshPart.h"
#include "partition/SplitMesh.h"

namespace weldline {

namespace {

// Seconds of the steps of a run; every step ends on all ranks before the next begins.
class Steps {
  public:
    explicit Steps(Ranks& ranks)
        : m_ranks(ranks), m_start(clockSeconds()), m_cpuStart(cpuSeconds()) {}

    void end(const std::string& step) {
        m_cpu += cpuSeconds() - m_cpuStart;
        const double own = clockSeconds() - m_start;
        m_seconds.emplace_back(step, m_ranks.maximum(own));
        m_start = clockSeconds();
        m_cpuStart = cpuSeconds();
    }
    // Forgets the time on a core so far.
    void restartCpu() { m_cpu = 0.0; }
    double cpu() const { return m_cpu; }
    const std::vector<std::pair<std::string, double>>& seconds() const { return m_seconds; }

  private:
    Ranks& m_ranks;
    double m_start;
    double m_cpuStart;
    double m_cpu = 0.0;
    std::vector<std::pair<std::string, double>> m_seconds;
};

MeshPart partByMetis(Ranks& ranks, const std::array<int, 3>& counts, Steps& steps) {
    std::vector<Bytes> toRanks(static_cast<std::size_t>(ranks.size()));
    MeshPart whole;
    if (ranks.rank() == 0) whole = blockPart(counts, {{0, 0, 0}, counts});
    steps.end("make");
    std::vector<int> partOfCell;
    if (ranks.rank() == 0) partOfCell = cutMesh(whole.mesh, ranks.size());
    steps.end("cut");
    if (ranks.rank() == 0) {
        MeshSplitter splitter(whole, partOfCell, ranks.size());
        for (int r = 0; r < ranks.size(); ++r)
            toRanks[static_cast<std::size_t>(r)] = packMeshPart(splitter.part(r));
    }
    whole = {};
    MeshPart part = unpackMeshPart(ranks.exchange(std::move(toRanks)).front());
    steps.end("spread");
    return part;
}

std::string writeControlFile() {
    const std::string name = "weldline-scaling-" + std::to_string(::getpid()) + ".cmp";
    const std::string path = (std::filesystem::temp_directory_path() / name).string();
    std::ofstream(path) << "[WeldLinePlotCtrl]\n[/WeldLinePlotCtrl]\n";
    return path;
}

double peakMegabytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

// Takes and gives back the memory of a run. On a virtual machine the first touch of memory that has
// been idle for seconds waits for the machine below, longer than the run itself takes.
void wakeMemory(std::size_t cells) {
    constexpr std::size_t kBytesPerCell = 1000;
    std::vector<char> memory(cells * kBytesPerCell);
    volatile char* bytes = memory.data();
    for (std::size_t i = 0; i < memory.size(); i += 4096) bytes[i] = 1;
}

void calculate(TimedRanks& ranks, const MeshPart& part, Steps& steps) {
    FvMesh mesh = buildFvMesh(part.mesh);
    steps.end("mesh");
    const MeshInterface interface = joinParts(ranks, part, mesh);
    steps.end("join");
    const BoundaryGroups groups = groupBoundaryFaces(mesh, part.patches, {});
    const auto& field = part.cellFields[0];
    const RankPart own{ranks, interface, part.nodeNumber};
    HostOptions options;
    options.controlFile = writeControlFile();
    HostModel model(mesh, groups, {field.begin(), field.end()}, options, own);
    steps.end("bind");
    runWeldLine(model, own);
    steps.end("library");
    std::filesystem::remove(options.controlFile);
}

}  // namespace

void studyRun(Ranks& plain, double cells, bool byMetis) {
    TimedRanks ranks(plain);
    Steps steps(ranks);
    const std::array<int, 3> counts = blockCounts(cells);
    const MeshPart part = byMetis
                              ? partByMetis(ranks, counts, steps)
                              : blockPart(counts, boxOfRank(counts, ranks.rank(), ranks.size()));
    if (!byMetis) steps.end("make");
    wakeMemory(part.cellNumber.size());
    steps.end("wake");
    steps.restartCpu();
    calculate(ranks, part, steps);

    const double work = ranks.maximum(steps.cpu() - ranks.count().cpuSeconds);
    const double exchanging = ranks.maximum(ranks.count().seconds);
    const double megabytes = ranks.maximum(peakMegabytes());
    const std::int64_t messages = ranks.maximum(ranks.count().messages);
    const std::int64_t bytes = ranks.maximum(ranks.count().bytes);
    const auto total = ranks.sum(static_cast<std::int64_t>(part.cellNumber.size()));
    if (ranks.rank() != 0) return;
    std::printf("{\"ranks\": %d, \"cells\": %lld, \"metis\": %s", ranks.size(),
                static_cast<long long>(total), byMetis ? "true" : "false");
    for (const auto& [step, seconds] : steps.seconds())
        std::printf(", \"%s\": %.4f", step.c_str(), seconds);
    std::printf(
        ", \"work\": %.4f, \"exchanging\": %.4f, \"exchanges\": %lld, \"messages\": %lld, "
        "\"bytes\": %lld, \"megabytes\": %.1f}\n",
        work, exchanging, static_cast<long long>(ranks.count().exchanges),
        static_cast<long long>(messages), static_cast<long long>(bytes), megabytes);
}

}  // namespace weldline
