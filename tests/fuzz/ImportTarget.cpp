// Data sets: the input is a file, a legacy one where it starts with '#', one of gmsh where it
// starts with '$', a VTK XML one otherwise. Reading it and building the mesh gives the program's
// own error or a mesh whose every number can be relied upon. A gmsh file is also read as a series,
// and once more when it has become another one behind the reader's back.
//
// VTK is not ours to mend: where it crashes or runs without end, the program ends with an error,
// and this target goes on with the next input.
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <csignal>
#include <filesystem>

#include "MeshPromises.h"
#include "Target.h"
#include "base/Errors.h"
#include "io/DataSet.h"
#include "io/ReadGuard.h"
#include "io/TimeReader.h"
#include "mesh/BoundaryGroups.h"

namespace {

using namespace weldline;

constexpr std::array guardedSignals{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGPROF};
sigjmp_buf afterFault;

void leaveReader(const char* /*line*/) {
    siglongjmp(afterFault, 1);
}

// What a guard changes and, left by a jump, does not restore.
class ProcessState {
  public:
    ProcessState() {
        // The timer of a guard that was left goes on until the next guard.
        ::signal(SIGPROF, SIG_IGN);
        for (std::size_t i = 0; i < guardedSignals.size(); ++i)
            ::sigaction(guardedSignals[i], nullptr, &m_actions[i]);
        ::getrlimit(RLIMIT_AS, &m_memory);
    }
    void restore() const {
        for (std::size_t i = 0; i < guardedSignals.size(); ++i)
            ::sigaction(guardedSignals[i], &m_actions[i], nullptr);
        ::setrlimit(RLIMIT_AS, &m_memory);
    }

  private:
    std::array<struct sigaction, guardedSignals.size()> m_actions{};
    rlimit m_memory{};
};

void readAndBuild(const std::string& file, const ReadOptions& options) {
    try {
        const DataSet data = readDataSet(file, options);
        const FvMesh mesh = buildFvMesh(data.mesh);
        fuzz::checkMesh(mesh);
        fuzz::require(data.fillTime.size() == static_cast<std::size_t>(mesh.cellCount()),
                      "every cell has a fill time");
        fuzz::checkGroups(mesh, groupBoundaryFaces(mesh, data.patches, GroupPatterns{}));
    } catch (const InputError& error) {
        fuzz::require(*error.what() != '\0', "an error says something");
    }
}

// Changes the file, once it is open, in a way that neither its size nor its time tells.
void readChanged(const std::string& file, std::string bytes) {
    try {
        const auto reader = openGmshFile(file);
        if (reader->times().empty()) return;
        const auto time = std::filesystem::last_write_time(file);
        std::reverse(bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() / 2), bytes.end());
        fuzz::writeBytes(file, bytes);
        std::filesystem::last_write_time(file, time);
        OpenedDataSet opened;
        reader->read(reader->times().back(), opened);
    } catch (const InputError& error) {
        fuzz::require(*error.what() != '\0', "an error says something");
    }
}

void readAll(const std::string& file, const std::string& bytes) {
    readAndBuild(file, {});
    if (!bytes.starts_with('$')) return;
    ReadOptions series;
    series.series.use = SeriesOptions::Use::Always;
    readAndBuild(file, series);
    readChanged(file, bytes);
}

// Only the thread that reads may jump: an engine's own threads inherit this mask.
void holdTimer(int how) {
    sigset_t timer;
    ::sigemptyset(&timer);
    ::sigaddset(&timer, SIGPROF);
    ::pthread_sigmask(how, &timer, nullptr);
}

}  // namespace

// An engine calls it before it starts threads.
extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments);

int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
    holdTimer(SIG_BLOCK);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const char start = size > 0 ? static_cast<char>(data[0]) : '<';
    const std::string file = fuzz::scratchFolder() + (start == '#'   ? "/in.vtk"
                                                      : start == '$' ? "/in.msh"
                                                                     : "/in.vtu");
    const std::string bytes(data, data + size);
    fuzz::writeBytes(file, bytes);
    static const ProcessState state;
    holdTimer(SIG_UNBLOCK);
    ReadGuard::endBy(leaveReader);
    if (sigsetjmp(afterFault, 1) == 0)
        readAll(file, bytes);
    else
        state.restore();
    return 0;
}
