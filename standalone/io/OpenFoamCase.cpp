#include <vtkDoubleArray.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkOpenFOAMReader.h>
#include <vtkStdString.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>

#include "ReadGuard.h"
#include "TimeReader.h"
#include "VtkMessages.h"

namespace weldline {
namespace {

namespace fs = std::filesystem;

// VTK's reader takes some of these files for missing ones when it cannot open them. `part` is empty
// or the folder of a process.
void checkMeshFiles(const std::string& file, const fs::path& part) {
    const fs::path place = part / "constant" / "polyMesh";
    std::error_code none;
    for (fs::directory_iterator at(fs::path(file).parent_path() / place, none), end;
         !none && at != end; at.increment(none)) {
        std::error_code noFile;
        if (at->is_regular_file(noFile) && !std::ifstream(at->path())) {
            failOnInput(file, "its file '" + (place / at->path().filename()).string() +
                                  "' cannot be opened for reading; check its permissions");
        }
    }
}

// VTK's reader prints little about a case that is no case.
void checkCase(const std::string& file) {
    const fs::path folder = fs::path(file).parent_path();
    std::error_code none;
    if (!fs::is_directory(folder / "constant", none) && !fs::exists(folder / "system", none)) {
        failOnInput(file,
                    "its folder holds no OpenFOAM case ('constant/polyMesh' and "
                    "'system/controlDict' are needed)");
    }
    if (!fs::exists(folder / "system" / "controlDict", none)) {
        failOnInput(file, "the OpenFOAM case has no 'system/controlDict'");
    }
}

double sizeOfFiles(const fs::path& folder) {
    double size = 0.0;
    std::error_code none;
    for (fs::directory_iterator at(folder, none), end; !none && at != end; at.increment(none)) {
        std::error_code noFile;
        const std::uintmax_t bytes = fs::file_size(at->path(), noFile);
        size += noFile ? 0.0 : static_cast<double>(bytes);
    }
    return size;
}

// Of the mesh and of the fields at all times: the reader looks into each.
double sizeOfCase(const fs::path& folder) {
    double size = sizeOfFiles(folder / "constant" / "polyMesh");
    std::error_code none;
    for (fs::directory_iterator at(folder, none), end; !none && at != end; at.increment(none)) {
        size += sizeOfFiles(at->path());
    }
    return size;
}

fs::path folderOf(const std::string& file, const std::string& processor) {
    return fs::absolute(file).parent_path() / processor;
}

// The number in "processor17", -1 for another name.
int processorNumber(const std::string& name) {
    constexpr std::string_view start = "processor";
    int number = -1;
    const char* end = name.data() + name.size();
    if (!name.starts_with(start) ||
        std::from_chars(name.data() + start.size(), end, number).ptr != end) {
        return -1;
    }
    return number;
}

// By number.
std::vector<std::string> processorFolders(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code none;
    for (fs::directory_iterator at(folder, none), end; !none && at != end; at.increment(none)) {
        const std::string name = at->path().filename().string();
        std::error_code noFolder;
        if (processorNumber(name) >= 0 && at->is_directory(noFolder)) {
            names.push_back(name);
        }
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return processorNumber(a) < processorNumber(b);
    });
    return names;
}

// Of the folders named by a number; minus infinity where there is none.
double latestTime(const fs::path& folder) {
    double latest = -std::numeric_limits<double>::infinity();
    std::error_code none;
    for (fs::directory_iterator at(folder, none), end; !none && at != end; at.increment(none)) {
        const std::string name = at->path().filename().string();
        double time = 0.0;
        const char* last = name.data() + name.size();
        const auto parsed = std::from_chars(name.data(), last, time);
        if (parsed.ec == std::errc() && parsed.ptr == last && std::isfinite(time)) {
            latest = std::max(latest, time);
        }
    }
    return latest;
}

bool readsProcessors(const fs::path& folder, const std::vector<std::string>& processors) {
    std::error_code none;
    return !processors.empty() && (!fs::is_directory(folder / "constant" / "polyMesh", none) ||
                                   latestTime(folder / processors.front()) > latestTime(folder));
}

void checkProcessors(const std::string& file, const std::vector<std::string>& processors) {
    for (std::size_t p = 0; p < processors.size(); ++p) {
        if (processorNumber(processors[p]) != static_cast<int>(p)) {
            failOnInput(file, "the decomposed OpenFOAM case has no folder 'processor" +
                                  std::to_string(p) + "'; all parts of the mesh are needed");
        }
    }
}

void failOnMessages(const std::string& file, const std::string& processor,
                    const VtkMessages& messages) {
    if (messages.hasError()) {
        failOnInput(file, "the OpenFOAM case is damaged or incomplete (" +
                              (processor.empty() ? "" : processor + ": ") + messages.firstError() +
                              ")");
    }
}

void configure(vtkOpenFOAMReader* reader, const std::string& file) {
    reader->SetFileName(file.c_str());
    reader->DecomposePolyhedraOff();
    reader->CreateCellToPointOff();
    reader->SetSkipZeroTime(false);
    reader->ReadZonesOff();
}

// The reader of a part leaves what is chosen to another reader, its parent; that is how VTK's own
// reader of decomposed cases goes about it, which needs all parts in one process or MPI of its own.
class FoamReader : public TimeReader {
  public:
    FoamReader(const std::string& file, const std::string& processor)
        : file_(file), processor_(processor), bytes_(sizeOfCase(folderOf(file, processor))) {
        checkMeshFiles(file, processor);
        const VtkMessages messages;
        const ReadGuard guard(file_, bytes_);
        configure(choice_, file);
        configure(reader_, file);
        reader_->SetParent(choice_);
        const bool isCase = reader_->MakeInformationVector(nullptr, processor_) != 0 &&
                            reader_->MakeMetaDataAtTimeStep(true) != 0;
        failOnMessages(file, processor, messages);
        if (!isCase) {
            failOnInput(file, "the OpenFOAM case is damaged or incomplete");
        }
        vtkDoubleArray* times = reader_->GetTimeValues();
        for (vtkIdType i = 0; times != nullptr && i < times->GetNumberOfTuples(); ++i) {
            times_.push_back(times->GetValue(i));
        }
        choice_->EnableAllPatchArrays();
        choice_->EnableAllCellArrays();
    }

    const std::vector<double>& times() const override { return times_; }

    void readOnly(const std::string& field) override {
        choice_->DisableAllCellArrays();
        choice_->SetCellArrayStatus(field.c_str(), 1);
    }

    void read(std::optional<double> time, OpenedDataSet& opened) override {
        const VtkMessages messages;
        const ReadGuard guard(file_, bytes_);
        if (time) {
            reader_->SetTimeValue(*time);
        }
        reader_->Modified();
        reader_->MakeMetaDataAtTimeStep(false);
        reader_->Update();
        failOnMessages(file_, processor_, messages);
        collectBlocks(file_, reader_->GetOutput(), opened);
        for (Block& block : opened.volumes) {
            block.name = (processor_.empty() ? "" : processor_ + ", ") + block.name;
        }
    }

  private:
    std::string file_;
    vtkStdString processor_;
    double bytes_;
    vtkNew<vtkOpenFOAMReader> choice_;
    vtkNew<vtkOpenFOAMReader> reader_;
    std::vector<double> times_;
};

}  // namespace

std::vector<Piece> listCase(const std::string& file) {
    checkCase(file);
    const fs::path folder = folderOf(file, "");
    const std::vector<std::string> processors = processorFolders(folder);
    if (!readsProcessors(folder, processors)) {
        return {{Piece::Kind::Case, file, "", sizeOfFiles(folder / "constant" / "polyMesh")}};
    }
    checkProcessors(file, processors);
    std::vector<Piece> pieces;
    pieces.reserve(processors.size());
    for (const std::string& name : processors) {
        pieces.push_back(
            {Piece::Kind::Case, file, name, sizeOfFiles(folder / name / "constant" / "polyMesh")});
    }
    return pieces;
}

std::unique_ptr<TimeReader> openFoamCase(const std::string& file, const std::string& processor) {
    return std::make_unique<FoamReader>(file, processor);
}

std::string foamFileOf(const std::string& input) {
    const fs::path folder(input);
    std::error_code none;
    if (!fs::is_directory(folder, none) || !fs::exists(folder / "system" / "controlDict", none)) {
        return input;
    }
    for (fs::directory_iterator at(folder, none), end; !none && at != end; at.increment(none)) {
        if (at->path().extension() == ".foam") {
            return at->path().string();
        }
    }
    const fs::path name = fs::absolute(folder).lexically_normal();
    const fs::path last = name.has_filename() ? name.filename() : name.parent_path().filename();
    return (folder / (last.string() + ".foam")).string();
}

bool needsNoMarker(const std::string& file) {
    std::error_code none;
    return lowerExtension(file) == ".foam" && !fs::exists(file, none) &&
           fs::exists(fs::path(file).parent_path() / "system" / "controlDict", none);
}

}  // namespace weldline
