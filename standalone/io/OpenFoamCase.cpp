#include <vtkInformation.h>
#include <vtkInformationDoubleVectorKey.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkOpenFOAMReader.h>
#include <vtkStreamingDemandDrivenPipeline.h>

#include <filesystem>
#include <fstream>

#include "OpenDataSet.h"
#include "ReadGuard.h"
#include "VtkMessages.h"

namespace weldline {
namespace {

namespace fs = std::filesystem;

// VTK's reader takes some of these files for missing ones when it cannot open them.
void checkMeshFiles(const std::string& file, const fs::path& folder) {
    std::error_code none;
    for (fs::directory_iterator at(folder / "constant" / "polyMesh", none), end; !none && at != end;
         at.increment(none)) {
        std::error_code noFile;
        if (at->is_regular_file(noFile) && !std::ifstream(at->path())) {
            failOnInput(file, "its file 'constant/polyMesh/" + at->path().filename().string() +
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
    checkMeshFiles(file, folder);
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
double sizeOfCase(const std::string& file) {
    const fs::path folder = fs::absolute(file).parent_path();
    double size = sizeOfFiles(folder / "constant" / "polyMesh");
    std::error_code none;
    for (fs::directory_iterator at(folder, none), end; !none && at != end; at.increment(none)) {
        size += sizeOfFiles(at->path());
    }
    return size;
}

void failOnMessages(const std::string& file, const VtkMessages& messages) {
    if (messages.hasError()) {
        failOnInput(file,
                    "the OpenFOAM case is damaged or incomplete (" + messages.firstError() + ")");
    }
}

}  // namespace

OpenedDataSet openFoamCase(const std::string& file, const std::string& time) {
    checkCase(file);
    const VtkMessages messages;
    const ReadGuard guard(file, sizeOfCase(file));
    vtkNew<vtkOpenFOAMReader> reader;
    reader->SetFileName(file.c_str());
    reader->DecomposePolyhedraOff();
    reader->CreateCellToPointOff();
    reader->SetSkipZeroTime(false);
    reader->ReadZonesOff();
    reader->UpdateInformation();
    failOnMessages(file, messages);

    OpenedDataSet opened;
    opened.format = "OpenFOAM case";
    vtkInformation* information = reader->GetOutputInformation(0);
    vtkInformationDoubleVectorKey* timesKey = vtkStreamingDemandDrivenPipeline::TIME_STEPS();
    if (information->Has(timesKey) != 0) {
        const double* first = information->Get(timesKey);
        opened.times.assign(first, first + information->Length(timesKey));
    }
    opened.time = chooseTime(file, opened.times, time);
    reader->EnableAllPatchArrays();
    reader->EnableAllCellArrays();
    if (opened.time) {
        reader->UpdateTimeStep(*opened.time);
    } else {
        reader->Update();
    }
    failOnMessages(file, messages);
    collectBlocks(file, reader->GetOutput(), opened);
    return opened;
}

}  // namespace weldline
