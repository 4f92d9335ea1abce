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
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <stdexcept>

#include "GridCheck.h"
#include "LegacyCounts.h"
#include "ReadGuard.h"
#include "TimeReader.h"
#include "VtkMessages.h"
#include "XmlGrids.h"
#include "base/Errors.h"
#include "base/ShortNumber.h"

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

// Takes over the time that a grid may carry as a field of one value.
void readTime(vtkDataObject* data, OpenedDataSet& opened) {
    vtkDataArray* value = data->GetFieldData()->GetArray("TimeValue");
    if (opened.times.empty() && value != nullptr && value->GetNumberOfValues() == 1) {
        opened.times = {value->GetComponent(0, 0)};
        opened.pieceTimes = opened.times;
    }
}

// A grid without cells may lack arrays and is left out.
OpenedDataSet openGrids(const Piece& piece) {
    checkReadable(piece.file);
    const bool isLegacy = lowerExtension(piece.file) == ".vtk";
    OpenedDataSet opened;
    for (const Block& block : isLegacy ? readLegacyGrid(piece.file) : readXmlGrids(piece.file)) {
        readTime(block.grid, opened);
        if (block.grid->GetNumberOfCells() > 0) {
            const char* separator = piece.name.empty() || block.name.empty() ? "" : ", ";
            opened.volumes.push_back({piece.name + separator + block.name, block.grid});
        }
    }
    return opened;
}

OpenedDataSet openByKind(const PieceList& list, const Piece& piece, const std::string& time) {
    if (const auto reader = openTimes(list, piece)) {
        return openAtTime(*reader, list.file, time);
    }
    if (piece.kind == Piece::Kind::Grids) {
        return openGrids(piece);
    }
    OpenedDataSet opened = openBlock(piece);
    for (const Block& block : opened.volumes) {
        readTime(block.grid, opened);
    }
    return opened;
}

}  // namespace

void failOnInput(const std::string& file, const std::string& reason) {
    throw InputError("'" + file + "': " + reason);
}

std::string otherBlock(const std::string& name) {
    return "The block '" + name + "' is left out: it is no unstructured grid.";
}

void checkReadable(const std::string& file) {
    std::error_code none;
    if (!fs::exists(file, none)) {
        failOnInput(file, "no such file");
    }
    if (fs::is_directory(file, none)) {
        failOnInput(file, "it is a folder, and no OpenFOAM case ('system/controlDict' is missing)");
    }
    if (!std::ifstream(file)) {
        failOnInput(file, "the file cannot be opened for reading; check its permissions");
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

void addBlock(const std::string& file, const std::string& name, vtkDataObject* data,
              OpenedDataSet& opened) {
    auto* grid = vtkDataSet::SafeDownCast(data);
    const bool isUnstructured = vtkUnstructuredGrid::SafeDownCast(grid) != nullptr;
    if (!isUnstructured && vtkPolyData::SafeDownCast(grid) == nullptr) {
        opened.remarks.push_back(otherBlock(name));
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

OpenedDataSet openPiece(const PieceList& list, const Piece& piece, const std::string& time) {
    try {
        return openByKind(list, piece, time);
    } catch (const std::bad_alloc&) {
        failOnInput(list.file, "the file is damaged or larger than the memory");
    } catch (const std::length_error&) {
        failOnInput(list.file, "the file is damaged");
    }
}

void append(OpenedDataSet& opened, OpenedDataSet more) {
    const auto move = [](auto& list, auto& tail) {
        list.insert(list.end(), std::make_move_iterator(tail.begin()),
                    std::make_move_iterator(tail.end()));
    };
    move(opened.volumes, more.volumes);
    move(opened.surfaces, more.surfaces);
    move(opened.remarks, more.remarks);
    move(opened.pieceTimes, more.pieceTimes);
    if (opened.times.empty()) {
        opened.times = std::move(more.times);
    }
}

std::optional<double> commonTime(const std::string& file, const std::vector<double>& pieceTimes,
                                 const std::string& request) {
    // Of files that each carry a time the first counts; the processes of a case go together.
    const bool isCase = lowerExtension(file) == ".foam";
    for (const double time : pieceTimes) {
        if (isCase && time != pieceTimes.front()) {
            failOnInput(file, "the folders of its processes end at different times (" +
                                  shortNumber(pieceTimes.front()) + " and " + shortNumber(time) +
                                  "); name a time that all of them have");
        }
    }
    const std::size_t known = std::min<std::size_t>(pieceTimes.size(), 1);
    return chooseTime(file, {pieceTimes.begin(), pieceTimes.begin() + static_cast<long>(known)},
                      request);
}

}  // namespace weldline
