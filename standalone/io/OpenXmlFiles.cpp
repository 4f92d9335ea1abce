// Data sets that name other files. The files are read one by one: VTK's readers for the whole lose
// which points belong to which piece, and do not check what they read.
#include <vtkNew.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLPolyDataReader.h>
#include <vtkXMLUtilities.h>

#include <filesystem>

#include "OpenDataSet.h"
#include "ReadGuard.h"
#include "VtkMessages.h"
#include "XmlGrids.h"

namespace weldline {
namespace {

namespace fs = std::filesystem;

std::string besides(const std::string& file, const std::string& source) {
    return (fs::path(file).parent_path() / source).string();
}

std::string attribute(vtkXMLDataElement* element, const char* name) {
    const char* value = element->GetAttribute(name);
    return value == nullptr ? "" : value;
}

// The root's element of the given name; null where the file is no XML or has none.
vtkSmartPointer<vtkXMLDataElement> findElement(const std::string& file, const char* name) {
    const ReadGuard guard(file);
    const auto root = vtkSmartPointer<vtkXMLDataElement>::Take(
        vtkXMLUtilities::ReadElementFromFile(file.c_str()));
    return root == nullptr ? nullptr : root->FindNestedElementWithName(name);
}

vtkSmartPointer<vtkPolyData> readSurface(const std::string& file) {
    const VtkMessages messages;
    const ReadGuard guard(file);
    vtkNew<vtkXMLPolyDataReader> reader;
    if (reader->CanReadFile(file.c_str()) == 0) {
        failOnInput(file, "the file holds no VTK XML surface");
    }
    reader->SetFileName(file.c_str());
    reader->Update();
    failOnReaderError(file, messages);
    return reader->GetOutput();
}

void addFile(const std::string& file, const std::string& name, OpenedDataSet& opened) {
    checkReadable(file);
    const std::string extension = lowerExtension(file);
    if (extension == ".vtu") {
        for (const Block& block : readXmlGrids(file)) {
            const std::string piece = block.name.empty() ? "" : ", " + block.name;
            addBlock(file, name + piece, block.grid, opened);
        }
    } else if (extension == ".vtp") {
        addBlock(file, name, readSurface(file), opened);
    } else {
        opened.otherBlocks.push_back(name);
    }
}

// Blocks may hold blocks; a block without a name is called by its place.
void addBlocks(const std::string& file, vtkXMLDataElement* parent, OpenedDataSet& opened) {
    for (int e = 0; e < parent->GetNumberOfNestedElements(); ++e) {
        vtkXMLDataElement* element = parent->GetNestedElement(e);
        const std::string kind = element->GetName();
        const std::string source = attribute(element, "file");
        if (kind == "DataSet" && !source.empty()) {
            const std::string name = attribute(element, "name");
            addFile(besides(file, source), name.empty() ? "block " + std::to_string(e) : name,
                    opened);
        } else if (kind == "Block" || kind == "Piece") {
            addBlocks(file, element, opened);
        }
    }
}

}  // namespace

OpenedDataSet openPieces(const std::string& file, const std::string& time) {
    const VtkMessages messages;
    const auto list = findElement(file, "PUnstructuredGrid");
    std::vector<Block> grids;
    for (int e = 0; list != nullptr && e < list->GetNumberOfNestedElements(); ++e) {
        const std::string source = attribute(list->GetNestedElement(e), "Source");
        if (source.empty()) {
            continue;
        }
        const std::string piece = besides(file, source);
        checkReadable(piece);
        for (const Block& block : readXmlGrids(piece)) {
            grids.push_back({source + (block.name.empty() ? "" : ", " + block.name), block.grid});
        }
    }
    if (grids.empty()) {
        failOnInput(file, "the file names no pieces of a VTK XML unstructured grid");
    }
    return openGrids(file, time, "VTK XML unstructured grid in pieces", grids);
}

OpenedDataSet openMultiBlock(const std::string& file, const std::string& time) {
    const VtkMessages messages;
    const auto list = findElement(file, "vtkMultiBlockDataSet");
    if (list == nullptr) {
        failOnInput(file, "the file holds no VTK XML multi-block data set");
    }
    OpenedDataSet opened;
    opened.format = "VTK XML multi-block data set";
    addBlocks(file, list, opened);
    for (const Block& block : opened.volumes) {
        readTimes(block.grid, opened);
    }
    opened.time = chooseTime(file, opened.times, time);
    return opened;
}

}  // namespace weldline
