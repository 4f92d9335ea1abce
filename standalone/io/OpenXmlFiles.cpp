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

double sizeOf(const std::string& file) {
    std::error_code none;
    const std::uintmax_t bytes = fs::file_size(file, none);
    return none ? 0.0 : static_cast<double>(bytes);
}

// Blocks may hold blocks; a block without a name is called by its place.
void addBlocks(const std::string& file, vtkXMLDataElement* parent, std::vector<Piece>& pieces) {
    for (int e = 0; e < parent->GetNumberOfNestedElements(); ++e) {
        vtkXMLDataElement* element = parent->GetNestedElement(e);
        const std::string kind = element->GetName();
        const std::string source = attribute(element, "file");
        if (kind == "DataSet" && !source.empty()) {
            const std::string name = attribute(element, "name");
            const std::string path = besides(file, source);
            const std::string extension = lowerExtension(path);
            const bool isGrid = extension == ".vtu" || extension == ".vtp";
            pieces.push_back({isGrid ? Piece::Kind::Block : Piece::Kind::Other, path,
                              name.empty() ? "block " + std::to_string(e) : name, sizeOf(path)});
        } else if (kind == "Block" || kind == "Piece") {
            addBlocks(file, element, pieces);
        }
    }
}

}  // namespace

std::vector<Piece> listGridFiles(const std::string& file) {
    const VtkMessages messages;
    const auto list = findElement(file, "PUnstructuredGrid");
    std::vector<Piece> pieces;
    for (int e = 0; list != nullptr && e < list->GetNumberOfNestedElements(); ++e) {
        const std::string source = attribute(list->GetNestedElement(e), "Source");
        if (!source.empty()) {
            const std::string path = besides(file, source);
            pieces.push_back({Piece::Kind::Grids, path, source, sizeOf(path)});
        }
    }
    if (pieces.empty()) {
        failOnInput(file, "the file names no pieces of a VTK XML unstructured grid");
    }
    return pieces;
}

std::vector<Piece> listBlockFiles(const std::string& file) {
    const VtkMessages messages;
    const auto list = findElement(file, "vtkMultiBlockDataSet");
    if (list == nullptr) {
        failOnInput(file, "the file holds no VTK XML multi-block data set");
    }
    std::vector<Piece> pieces;
    addBlocks(file, list, pieces);
    return pieces;
}

OpenedDataSet openBlock(const Piece& piece) {
    checkReadable(piece.file);
    OpenedDataSet opened;
    if (piece.kind == Piece::Kind::Other) {
        opened.remarks.push_back(otherBlock(piece.name));
    } else if (lowerExtension(piece.file) == ".vtp") {
        addBlock(piece.file, piece.name, readSurface(piece.file), opened);
    } else {
        for (const Block& block : readXmlGrids(piece.file)) {
            const std::string part = block.name.empty() ? "" : ", " + block.name;
            addBlock(piece.file, piece.name + part, block.grid, opened);
        }
    }
    return opened;
}

}  // namespace weldline
