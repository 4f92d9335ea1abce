#include "GridBytes.h"

#include <vtkCellType.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLUnstructuredGridWriter.h>
#include <vtkZLibDataCompressor.h>

#include <array>
#include <new>
#include <span>
#include <vector>

#include "base/Errors.h"

namespace weldline {
namespace {

// By CellKind.
constexpr std::array<int, 5> vtkTypes{VTK_TETRA, VTK_PYRAMID, VTK_WEDGE, VTK_HEXAHEDRON,
                                      VTK_POLYHEDRON};

void addPoints(const CellMesh& mesh, vtkUnstructuredGrid* grid) {
    vtkNew<vtkPoints> points;
    points->SetDataTypeToDouble();
    points->SetNumberOfPoints(static_cast<vtkIdType>(mesh.points.size()));
    for (std::size_t p = 0; p < mesh.points.size(); ++p) {
        const Vec3 x = mesh.points[p];
        points->SetPoint(static_cast<vtkIdType>(p), x.x, x.y, x.z);
    }
    grid->SetPoints(points);
}

void addCells(const CellMesh& mesh, vtkUnstructuredGrid* grid) {
    grid->AllocateExact(mesh.cellCount(), static_cast<vtkIdType>(mesh.cellNodes.entries.size()));
    std::vector<vtkIdType> nodes;
    std::vector<vtkIdType> faces;
    for (int c = 0; c < mesh.cellCount(); ++c) {
        const CellKind kind = mesh.kinds[static_cast<std::size_t>(c)];
        const int type = vtkTypes[static_cast<std::size_t>(kind)];
        nodes.assign(mesh.cellNodes[c].begin(), mesh.cellNodes[c].end());
        const auto count = static_cast<vtkIdType>(nodes.size());
        if (kind != CellKind::Polyhedron) {
            grid->InsertNextCell(type, count, nodes.data());
            continue;
        }
        faces.clear();
        for (const int polygon : mesh.cellPolygons[c]) {
            const std::span<const int> corners = mesh.polygons[polygon];
            faces.push_back(static_cast<vtkIdType>(corners.size()));
            faces.insert(faces.end(), corners.begin(), corners.end());
        }
        grid->InsertNextCell(type, count, nodes.data(),
                             static_cast<vtkIdType>(mesh.cellPolygons[c].size()), faces.data());
    }
}

// VTK's own would give back nothing when memory ends, and the writer would use it.
class Compressor : public vtkZLibDataCompressor {
  public:
    static Compressor* New() { return new Compressor; }

    std::size_t CompressBuffer(const unsigned char* bytes, std::size_t size, unsigned char* packed,
                               std::size_t room) override {
        const std::size_t used = vtkZLibDataCompressor::CompressBuffer(bytes, size, packed, room);
        if (used == 0) {
            failOnMemory();
        }
        return used;
    }

  private:
    [[noreturn]] static void failOnMemory() {
        if (const std::new_handler handler = std::get_new_handler()) {
            handler();
        }
        throw std::bad_alloc();
    }
};

}  // namespace

void addMesh(const CellMesh& mesh, vtkUnstructuredGrid* grid) {
    addPoints(mesh, grid);
    addCells(mesh, grid);
}

// On purpose: VTK writes into memory and the bytes go to the file from here, because only so the
// system's reason of a failure is known, and a pipe can take them.
std::string gridBytes(const std::string& file, vtkUnstructuredGrid* grid,
                      const VtkMessages& messages) {
    vtkNew<vtkXMLUnstructuredGridWriter> writer;
    writer->SetInputData(grid);
    writer->SetDataModeToAppended();
    writer->EncodeAppendedDataOff();
    vtkNew<Compressor> compressor;
    compressor->SetCompressionLevel(writer->GetCompressionLevel());
    writer->SetCompressor(compressor);
    writer->SetHeaderTypeToUInt64();
    writer->WriteToOutputStringOn();
    if (writer->Write() == 0 || messages.hasError()) {
        throw RunError("cannot write '" + file + "': " + messages.firstError());
    }
    return writer->GetOutputString();
}

}  // namespace weldline
