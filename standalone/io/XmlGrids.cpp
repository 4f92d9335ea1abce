#include "XmlGrids.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataArraySelection.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLUnstructuredGridReader.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "GridCheck.h"
#include "ReadGuard.h"
#include "VtkMessages.h"

namespace weldline {
namespace {

namespace fs = std::filesystem;

// VTK's reader believes the numbers by which a file lists the faces of polyhedra and runs out of
// the arrays when they are damaged. This one looks at them first.
class CheckedReader : public vtkXMLUnstructuredGridReader {
  public:
    static CheckedReader* New() {
        auto* reader = new CheckedReader;
        reader->InitializeObjectBase();
        return reader;
    }

    bool facesAreDamaged = false;

  protected:
    int ReadPieceData() override {
        vtkXMLDataElement* cells = CellElements[Piece];
        if (cells != nullptr && FindDataArrayWithName(cells, "faces") != nullptr &&
            !facesFit(cells, NumberOfCells[Piece], NumberOfPoints[Piece])) {
            facesAreDamaged = true;
            return 0;
        }
        return vtkXMLUnstructuredGridReader::ReadPieceData();
    }

  private:
    // Null where the array cannot be read at this length.
    vtkSmartPointer<vtkDataArray> readNumbers(vtkXMLDataElement* cells, const char* name,
                                              vtkIdType length) {
        vtkXMLDataElement* element = FindDataArrayWithName(cells, name);
        if (element == nullptr) {
            return nullptr;
        }
        const auto any = vtkSmartPointer<vtkAbstractArray>::Take(CreateArray(element));
        vtkSmartPointer<vtkDataArray> array = vtkDataArray::SafeDownCast(any);
        if (array == nullptr || array->GetNumberOfComponents() != 1) {
            return nullptr;
        }
        array->SetNumberOfTuples(length);
        return ReadArrayValues(element, 0, array, 0, length) != 0 ? array : nullptr;
    }

    // Per polyhedron the array "faceoffsets" holds the end of its stretch of "faces", for other
    // cells a negative number.
    bool facesFit(vtkXMLDataElement* cells, vtkIdType cellCount, vtkIdType pointCount) {
        const auto ends = readNumbers(cells, "faceoffsets", cellCount);
        if (ends == nullptr) {
            return false;
        }
        vtkIdType length = 0;
        for (vtkIdType c = 0; c < cellCount; ++c) {
            const double end = ends->GetComponent(c, 0);
            if (end >= 0.0 && !(end > static_cast<double>(length) && end < maximumLength())) {
                return false;
            }
            length = end >= 0.0 ? static_cast<vtkIdType>(end) : length;
        }
        const auto faces = readNumbers(cells, "faces", length);
        vtkIdType at = 0;
        for (vtkIdType c = 0; faces != nullptr && c < cellCount; ++c) {
            const auto end = static_cast<vtkIdType>(ends->GetComponent(c, 0));
            if (end >= 0 && !stretchFits(*faces, at, end, pointCount)) {
                return false;
            }
            at = end >= 0 ? end : at;
        }
        return faces != nullptr;
    }

    // A stretch is the number of faces, then each as its number of corners and the corners.
    static bool stretchFits(vtkDataArray& faces, vtkIdType at, vtkIdType end,
                            vtkIdType pointCount) {
        const auto next = [&]() { return static_cast<vtkIdType>(faces.GetComponent(at++, 0)); };
        for (vtkIdType left = next(); left > 0; --left) {
            vtkIdType corners = at < end ? next() : -1;
            if (corners < 0 || corners > end - at) {
                return false;
            }
            for (; corners > 0; --corners) {
                const vtkIdType node = next();
                if (node < 0 || node >= pointCount) {
                    return false;
                }
            }
        }
        return at == end;
    }

    // See checkCount.
    double maximumLength() {
        std::error_code none;
        return 1100.0 * static_cast<double>(fs::file_size(GetFileName(), none));
    }
};

// Leaves points and cells where they are.
class FieldReader : public vtkXMLUnstructuredGridReader {
  public:
    static FieldReader* New() {
        auto* reader = new FieldReader;
        reader->InitializeObjectBase();
        return reader;
    }

  protected:
    // On purpose past the parents that read points and cells.
    // NOLINTBEGIN(bugprone-parent-virtual-call)
    void SetupOutputData() override { vtkXMLDataReader::SetupOutputData(); }
    int ReadPieceData() override { return vtkXMLDataReader::ReadPieceData(); }
    // NOLINTEND(bugprone-parent-virtual-call)
};

// Every point and cell takes at least a byte, which compression shortens to a thousandth at most. A
// larger count is damage, and VTK would believe it.
void checkCount(const std::string& file, const char* what, vtkIdType count) {
    std::error_code none;
    const auto size = static_cast<double>(fs::file_size(file, none));
    if (count < 0 || static_cast<double>(count) > 1100.0 * size) {
        failOnInput(file, "the file is damaged or incomplete: it announces " +
                              std::to_string(static_cast<long long>(count)) + " " + what +
                              " and is too short for them");
    }
}

// VTK asks for a name of each component of an array that a file announces, and a wrong number keeps
// it busy for minutes. Each component of an array takes at least a byte of what is packed.
void checkComponents(const std::string& file) {
    const std::string key = "NumberOfComponents=\"";
    std::ifstream stream(file, std::ios::binary);
    for (std::string line; std::getline(stream, line) && line.find("<AppendedData") == line.npos;) {
        for (std::size_t at = line.find(key); at != line.npos; at = line.find(key, at)) {
            at += key.size();
            checkCount(file, "components", std::strtoll(line.c_str() + at, nullptr, 10));
        }
    }
}

// Up to the numbers of points and cells.
void openXml(const std::string& file, const VtkMessages& messages,
             vtkXMLUnstructuredGridReader* reader) {
    if (reader->CanReadFile(file.c_str()) == 0) {
        failOnInput(file, "the file holds no VTK XML unstructured grid");
    }
    checkComponents(file);
    reader->SetFileName(file.c_str());
    reader->UpdateInformation();
    failOnReaderError(file, messages);
    reader->SetupUpdateExtent(0, 1, 0);
    checkCount(file, "points or cells", reader->GetNumberOfPoints());
    checkCount(file, "points or cells", reader->GetNumberOfCells());
}

}  // namespace

std::vector<Block> readXmlGrids(const std::string& file) {
    const VtkMessages messages;
    const ReadGuard guard(file);
    const auto reader = vtkSmartPointer<CheckedReader>::New();
    openXml(file, messages, reader);
    std::vector<Block> blocks;
    const auto pieces = static_cast<int>(reader->GetNumberOfPieces());
    for (int p = 0; p < pieces; ++p) {
        reader->UpdatePiece(p, pieces, 0);
        if (reader->facesAreDamaged) {
            failOnInput(file,
                        "the file is damaged or incomplete: the faces of its polyhedra do not fit");
        }
        failOnReaderError(file, messages);
        const auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
        grid->ShallowCopy(reader->GetOutput());
        checkGrid(file, grid);
        blocks.push_back({pieces > 1 ? "piece " + std::to_string(p) : "", grid});
    }
    return blocks;
}

std::vector<Block> readXmlField(const std::string& file, const std::string& field) {
    const VtkMessages messages;
    const ReadGuard guard(file);
    const auto reader = vtkSmartPointer<FieldReader>::New();
    openXml(file, messages, reader);
    reader->GetPointDataArraySelection()->DisableAllArrays();
    reader->GetCellDataArraySelection()->DisableAllArrays();
    reader->SetCellArrayStatus(field.c_str(), 1);
    std::vector<Block> blocks;
    const auto pieces = static_cast<int>(reader->GetNumberOfPieces());
    for (int p = 0; p < pieces; ++p) {
        reader->UpdatePiece(p, pieces, 0);
        failOnReaderError(file, messages);
        const auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
        grid->GetCellData()->ShallowCopy(reader->GetOutput()->GetCellData());
        blocks.push_back({"", grid});
    }
    return blocks;
}

}  // namespace weldline
