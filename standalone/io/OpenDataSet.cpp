#include "OpenDataSet.h"

#include <vtkCompositeDataSet.h>
#include <vtkDataObjectTree.h>
#include <vtkDataObjectTreeIterator.h>
#include <vtkFieldData.h>
#include <vtkInformation.h>
#include <vtkNew.h>
#include <vtkPolyData.h>
#include <vtkUnstructuredGrid.h>
#include <vtkUnstructuredGridReader.h>

#include <vtkDataArray.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <new>
#include <stdexcept>

#include "GridCheck.h"
#include "LegacyCounts.h"
#include "ReadGuard.h"
#include "VtkMessages.h"
#include "XmlGrids.h"
#include "base/Errors.h"

namespace weldline {
namespace {

namespace fs = std::filesystem;

std::vector<Block> readLegacyGrid(const std::string& file) {
    const VtkMessages messages;
    const ReadGuard guard(file);
    vtkNew<vtkUnstructuredGridReader> reader;
    reader->SetFileName(file.c_str());
    if (reader->IsFileUnstructuredGrid() == 0) {
        failOnInput(file, "the file holds no legacy VTK unstructured grid");
    }
    checkLegacyCounts(file);
    reader->ReadAllScalarsOn();
    reader->ReadAllVectorsOn();
    reader->ReadAllFieldsOn();
    reader->Update();
    failOnReaderError(file, messages);
    checkGrid(file, reader->GetOutput());
    return {{"", reader->GetOutput()}};
}

std::string blockName(vtkDataObjectTreeIterator* at) {
    if (at->HasCurrentMetaData() != 0 &&
        at->GetCurrentMetaData()->Has(vtkCompositeDataSet::NAME()) != 0) {
        return at->GetCurrentMetaData()->Get(vtkCompositeDataSet::NAME());
    }
    return "block " + std::to_string(at->GetCurrentFlatIndex());
}

std::string shortNumber(double value) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), end};
}

OpenedDataSet openByExtension(const std::string& file, const std::string& time) {
    const std::string extension = lowerExtension(file);
    if (extension == ".vtu") {
        return openGrids(file, time, "VTK XML unstructured grid", readXmlGrids(file));
    }
    if (extension == ".vtk") {
        return openGrids(file, time, "legacy VTK unstructured grid", readLegacyGrid(file));
    }
    if (extension == ".pvtu") {
        return openPieces(file, time);
    }
    if (extension == ".vtm") {
        return openMultiBlock(file, time);
    }
    if (extension == ".foam") {
        return openFoamCase(file, time);
    }
    failOnInput(file,
                "unknown kind of data set; .vtu, .pvtu, .vtk, .vtm and .foam (OpenFOAM "
                "case) can be read");
}

}  // namespace

void failOnInput(const std::string& file, const std::string& reason) {
    throw InputError("'" + file + "': " + reason);
}

void checkReadable(const std::string& file) {
    std::error_code none;
    if (!fs::exists(file, none)) {
        failOnInput(file, "no such file");
    }
    if (fs::is_directory(file, none)) {
        failOnInput(file, "it is a folder; of an OpenFOAM case name the .foam file in it");
    }
    if (!std::ifstream(file)) {
        failOnInput(file, "the file cannot be opened for reading; check its permissions");
    }
}

void readTimes(vtkDataObject* data, OpenedDataSet& opened) {
    vtkDataArray* value = data->GetFieldData()->GetArray("TimeValue");
    if (value != nullptr && value->GetNumberOfValues() == 1) {
        opened.times = {value->GetComponent(0, 0)};
    }
}

void failOnReaderError(const std::string& file, const VtkMessages& messages) {
    if (messages.hasError()) {
        failOnInput(file, "the file is damaged or incomplete (" + messages.firstError() + ")");
    }
}

std::string lowerExtension(const std::string& file) {
    std::string extension = fs::path(file).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

OpenedDataSet openGrids(const std::string& file, const std::string& time, const char* format,
                        const std::vector<Block>& grids) {
    OpenedDataSet opened;
    opened.format = format;
    for (const Block& block : grids) {
        if (opened.times.empty()) {
            readTimes(block.grid, opened);
        }
        if (block.grid->GetNumberOfCells() > 0) {
            opened.volumes.push_back(block);
        }
    }
    opened.time = chooseTime(file, opened.times, time);
    return opened;
}

void addBlock(const std::string& file, const std::string& name, vtkDataObject* data,
              OpenedDataSet& opened) {
    auto* grid = vtkDataSet::SafeDownCast(data);
    const bool isUnstructured = vtkUnstructuredGrid::SafeDownCast(grid) != nullptr;
    if (!isUnstructured && vtkPolyData::SafeDownCast(grid) == nullptr) {
        opened.otherBlocks.push_back(name);
        return;
    }
    checkGrid(file, grid);
    auto& list = isUnstructured && countVolumeCells(grid) > 0 ? opened.volumes : opened.surfaces;
    list.push_back({name, grid});
}

void collectBlocks(const std::string& file, vtkDataObject* tree, OpenedDataSet& opened) {
    auto* blocks = vtkDataObjectTree::SafeDownCast(tree);
    if (blocks == nullptr) {
        failOnInput(file, "the data set has no blocks");
    }
    const auto at = vtkSmartPointer<vtkDataObjectTreeIterator>::Take(blocks->NewTreeIterator());
    at->SkipEmptyNodesOn();
    at->VisitOnlyLeavesOn();
    for (at->InitTraversal(); at->IsDoneWithTraversal() == 0; at->GoToNextItem()) {
        addBlock(file, blockName(at), at->GetCurrentDataObject(), opened);
    }
}

std::optional<double> chooseTime(const std::string& file, const std::vector<double>& times,
                                 const std::string& request) {
    if (request == "latest") {
        return times.empty() ? std::nullopt : std::optional<double>(times.back());
    }
    double wanted = 0.0;
    const char* end = request.data() + request.size();
    const auto parsed = std::from_chars(request.data(), end, wanted);
    if (parsed.ec != std::errc() || parsed.ptr != end || !std::isfinite(wanted)) {
        throw UsageError("'" + request + "' is no time; give a number or 'latest'");
    }
    if (times.empty()) {
        failOnInput(file, "the data set has no times; leave the time away");
    }
    const double nearest = *std::min_element(times.begin(), times.end(), [&](double a, double b) {
        return std::abs(a - wanted) < std::abs(b - wanted);
    });
    if (std::abs(nearest - wanted) > 1e-6 * std::abs(wanted)) {
        failOnInput(file, "there is no time " + request + "; of " + std::to_string(times.size()) +
                              " times the nearest is " + shortNumber(nearest));
    }
    return nearest;
}

OpenedDataSet openDataSet(const std::string& file, const std::string& time) {
    checkReadable(file);
    try {
        return openByExtension(file, time);
    } catch (const std::bad_alloc&) {
        failOnInput(file, "the file is damaged or larger than the memory");
    } catch (const std::length_error&) {
        failOnInput(file, "the file is damaged");
    }
}

}  // namespace weldline
