// A .pvd file names, for each time, the files that hold the data set then.
#include <vtkNew.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLUtilities.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <map>

#include "ReadGuard.h"
#include "TimeReader.h"
#include "VtkMessages.h"
#include "XmlGrids.h"

namespace weldline {
namespace {

namespace fs = std::filesystem;

using FilesOfTimes = std::map<double, std::vector<std::string>>;

double timeOf(const std::string& file, const std::string& text) {
    double time = 0.0;
    const char* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, time);
    if (parsed.ec != std::errc() || parsed.ptr != end || !std::isfinite(time)) {
        failOnInput(file, "'" + text + "' is no time; every DataSet needs a timestep, a number");
    }
    return time;
}

std::string attribute(vtkXMLDataElement* element, const char* name) {
    const char* value = element->GetAttribute(name);
    return value == nullptr ? "" : value;
}

void checkKind(const std::string& file, const std::string& source) {
    const std::string extension = lowerExtension(source);
    const auto kinds = {".vtu", ".pvtu", ".vtk", ".vtm"};
    if (std::find(kinds.begin(), kinds.end(), extension) == kinds.end()) {
        failOnInput(file, "it names '" + source + "'; .vtu, .pvtu, .vtk and .vtm can be read");
    }
}

FilesOfTimes listFiles(const std::string& file) {
    const VtkMessages messages;
    const ReadGuard guard(file);
    const auto root = vtkSmartPointer<vtkXMLDataElement>::Take(
        vtkXMLUtilities::ReadElementFromFile(file.c_str()));
    vtkXMLDataElement* list =
        root == nullptr ? nullptr : root->FindNestedElementWithName("Collection");
    FilesOfTimes files;
    for (int e = 0; list != nullptr && e < list->GetNumberOfNestedElements(); ++e) {
        vtkXMLDataElement* element = list->GetNestedElement(e);
        const std::string source = attribute(element, "file");
        if (!source.empty()) {
            checkKind(file, source);
            files[timeOf(file, attribute(element, "timestep"))].push_back(
                (fs::path(file).parent_path() / source).string());
        }
    }
    if (files.empty()) {
        failOnInput(file, "the file names no data sets over time (no Collection with DataSets)");
    }
    return files;
}

class CollectionReader : public TimeReader {
  public:
    explicit CollectionReader(const std::string& file) : files_(listFiles(file)) {
        for (const auto& [time, files] : files_) {
            times_.push_back(time);
        }
    }

    const std::vector<double>& times() const override { return times_; }

    void readOnly(const std::string& field) override { field_ = field; }

    void read(std::optional<double> time, OpenedDataSet& opened) override {
        for (const std::string& file : files_.at(*time)) {
            const PieceList list = listPieces(file);
            for (const Piece& piece : list.pieces) {
                readPiece(list, piece, opened);
            }
        }
    }

  private:
    // Points and cells of VTK's XML grids can stay where they are.
    void readPiece(const PieceList& list, const Piece& piece, OpenedDataSet& opened) const {
        if (field_.empty() || piece.kind != Piece::Kind::Grids ||
            lowerExtension(piece.file) != ".vtu") {
            append(opened, openPiece(list, piece, "latest"));
            return;
        }
        checkReadable(piece.file);
        for (Block& block : readXmlField(piece.file, field_)) {
            opened.volumes.push_back(std::move(block));
        }
    }

    FilesOfTimes files_;
    std::vector<double> times_;
    std::string field_;  // empty: all
};

}  // namespace

std::unique_ptr<TimeReader> openCollection(const std::string& file) {
    return std::make_unique<CollectionReader>(file);
}

}  // namespace weldline
