// Control files: the library's reader against the reference's, and the stand-alone host's
// interpretation against both. The first byte chooses the circumstances, a byte 0xff in the rest
// separates the texts of successive runs of one calculator.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "CKVR3DWeldLine.h"
#include "Reference.h"
#include "Target.h"
#include "settings/ControlSection.h"

namespace {

using namespace weldline;

struct Circumstances {
    explicit Circumstances(int bits)
        : hasFile((bits & 1) == 0),
          isMaster((bits & 2) == 0),
          name((bits & 4) == 0 ? "run.cmp" : "run"),
          debugBefore((bits & 8) != 0) {}

    bool hasFile;
    bool isMaster;
    std::string name;  // without a dot the trace replaces the control file
    bool debugBefore;  // the flag is on from an earlier run
};

// Standard output, sent to a file in memory while this object lives.
class Output {
  public:
    Output() : m_former(::dup(STDOUT_FILENO)), m_file(::memfd_create("output", 0)) {
        std::fflush(stdout);
        ::dup2(m_file, STDOUT_FILENO);
    }
    ~Output() {
        std::fflush(stdout);
        ::dup2(m_former, STDOUT_FILENO);
        ::close(m_former);
        ::close(m_file);
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    std::string text() const {
        std::fflush(stdout);
        std::string bytes(static_cast<std::size_t>(::lseek(m_file, 0, SEEK_END)), '\0');
        fuzz::require(
            ::pread(m_file, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()),
            "the output can be read back");
        return bytes;
    }

  private:
    int m_former;
    int m_file;
};

std::string bytesOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Doubles as their bits, so that every difference counts and undefined values are equal.
template <class Record>
std::string stateOf(const Record& r) {
    std::ostringstream text;
    const auto bits = [](double value) {
        std::uint64_t word = 0;
        std::memcpy(&word, &value, sizeof word);
        return word;
    };
    text << r.m_FlagDebugOutput << ' ' << r.m_WeldlingAngleMethod << ' ' << r.m_nSmooth_beforeGrad
         << ' ' << r.m_nSmooth_afterGrad << ' ' << r.m_nGrad << ' ' << r.m_GradMethodMFT << ' '
         << r.m_bMethod40 << ' ' << r.m_nDefaultPass << ' ' << bits(r.m_TruncateAngle) << ' '
         << bits(r.m_BoundaryAngle) << ' ' << bits(r.m_GradValueFilterPara) << ' '
         << bits(r.m_Volume_Filter) << ' ' << (r.m_pDebugFile != nullptr) << ' '
         << std::string(r.m_DebugFileName);
    return text.str();
}

// The scratch folder as the working folder; leaving restores the former one, where the engine finds
// its files.
class InScratchFolder {
  public:
    InScratchFolder() { std::filesystem::current_path(fuzz::scratchFolder()); }
    ~InScratchFolder() { std::filesystem::current_path(m_former); }
    InScratchFolder(const InScratchFolder&) = delete;
    InScratchFolder& operator=(const InScratchFolder&) = delete;

  private:
    std::filesystem::path m_former = std::filesystem::current_path();
};

// All runs of one calculator in words; the files lie in a fresh working folder, under the same
// names for every calculator.
template <class Record>
std::string play(const Circumstances& with, const std::vector<std::string>& texts) {
    const InScratchFolder inside;
    for (const char* name : {"run", "run.cmp", "run_KVRWDLineDebug.txt"})
        std::filesystem::remove(name);
    int process = with.isMaster ? 0 : 3;
    CKvr3dGV gv;
    gv.m_pProcessNumber = &process;
    gv.m_pControlFilePath = with.hasFile ? with.name.c_str() : nullptr;
    std::string story;
    const Output output;
    {
        Record record;
        record.m_pGV = &gv;
        record.m_pControlFilePath = gv.m_pControlFilePath;
        record.m_FlagDebugOutput = with.debugBefore;
        for (const std::string& text : texts) {
            fuzz::writeBytes(with.name, text);
            story += std::to_string(record.readControlFile()) + ' ' + stateOf(record) + '\n';
            std::fflush(nullptr);
            story += bytesOf("run_KVRWDLineDebug.txt") + bytesOf(with.name);
        }
    }
    return story + "output: " + output.text();
}

Settings settingsOf(const CKVR3DWeldLine& r) {
    return {r.m_FlagDebugOutput,
            r.m_WeldlingAngleMethod,
            r.m_nSmooth_beforeGrad,
            r.m_nSmooth_afterGrad,
            r.m_nGrad,
            r.m_TruncateAngle,
            r.m_BoundaryAngle,
            r.m_GradValueFilterPara,
            r.m_Volume_Filter,
            r.m_GradMethodMFT};
}

// What the stand-alone host tells its user about a control file is what the library does.
void checkInterpretation(const std::string& text) {
    const std::string file = fuzz::scratchFolder() + "/interpreted.cmp";
    fuzz::writeBytes(file, text);
    int process = 3;
    CKvr3dGV gv;
    gv.m_pProcessNumber = &process;
    CKVR3DWeldLine record;
    record.m_pGV = &gv;
    record.m_pControlFilePath = file.c_str();
    record.readControlFile();
    // The traces tell undefined values apart no more than bits do.
    const Settings expected = readControlText(text).settings;
    fuzz::require(settingsTrace(settingsOf(record)) == settingsTrace(expected) &&
                      record.m_FlagDebugOutput == expected.debugOutput,
                  "the host's interpretation of a control file is the library's");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const Circumstances with(data[0]);
    std::vector<std::string> texts{""};
    for (std::size_t i = 1; i < size; ++i) {
        if (data[i] == 0xff)
            texts.emplace_back();
        else
            texts.back() += static_cast<char>(data[i]);
    }
    const std::string library = play<CKVR3DWeldLine>(with, texts);
    const std::string reference = play<reference::Reference>(with, texts);
    if (library != reference) fuzz::fail("library:\n" + library + "\n-- reference:\n" + reference);
    checkInterpretation(texts.front());
    return 0;
}
