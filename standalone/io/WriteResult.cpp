#include "WriteResult.h"

#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkDoubleArray.h>
#include <vtkFieldData.h>
#include <vtkFloatArray.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkStringArray.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLUnstructuredGridWriter.h>
#include <vtkZLibDataCompressor.h>

#include <algorithm>
#include <array>
#include <new>

#include "VtkMessages.h"
#include "base/AtomicFile.h"
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

template <class Array, class Value>
void addArray(vtkDataSetAttributes* attributes, const char* name,
              const std::vector<Value>& values) {
    vtkNew<Array> array;
    array->SetName(name);
    array->SetNumberOfValues(static_cast<vtkIdType>(values.size()));
    std::copy(values.begin(), values.end(), array->GetPointer(0));
    attributes->AddArray(array);
}

void addFields(const ResultFields& fields, vtkUnstructuredGrid* grid) {
    addArray<vtkDoubleArray>(grid->GetPointData(), "MeetingAngle", fields.meetingAngle);
    addArray<vtkIntArray>(grid->GetPointData(), "WeldLine", fields.weldLine);
    if (!fields.refusalReason.empty()) {
        addArray<vtkIntArray>(grid->GetPointData(), "RefusalReason", fields.refusalReason);
    }
    addArray<vtkFloatArray>(grid->GetCellData(), "FillTime", fields.fillTime);
    vtkNew<vtkFloatArray> direction;
    direction->SetName("FlowDirection");
    direction->SetNumberOfComponents(3);
    direction->SetNumberOfTuples(static_cast<vtkIdType>(fields.flowDirection.size()));
    for (std::size_t c = 0; c < fields.flowDirection.size(); ++c) {
        const Vec3 d = fields.flowDirection[c];
        direction->SetTuple3(static_cast<vtkIdType>(c), d.x, d.y, d.z);
    }
    grid->GetCellData()->AddArray(direction);
}

void addNotes(const ResultNotes& notes, vtkFieldData* data) {
    if (notes.run.empty()) {
        return;
    }
    vtkNew<vtkStringArray> run;
    run->SetName("WeldLineRun");
    run->InsertNextValue(notes.run);
    data->AddArray(run);
    if (notes.patches.faceCentres.empty()) {
        return;
    }
    vtkNew<vtkStringArray> names;
    names->SetName("PatchNames");
    for (const std::string& name : notes.patches.names) {
        names->InsertNextValue(name);
    }
    data->AddArray(names);
    vtkNew<vtkIntArray> patches;
    patches->SetName("PatchOfFace");
    for (const int patch : notes.patches.patchOfFace) {
        patches->InsertNextValue(patch);
    }
    data->AddArray(patches);
    vtkNew<vtkDoubleArray> centres;
    centres->SetName("PatchFaceCentres");
    centres->SetNumberOfComponents(3);
    for (const Vec3 centre : notes.patches.faceCentres) {
        centres->InsertNextTuple3(centre.x, centre.y, centre.z);
    }
    data->AddArray(centres);
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

}  // namespace

std::string resultBytes(const std::string& file, const CellMesh& mesh, const ResultFields& fields) {
    const VtkMessages messages;
    vtkNew<vtkUnstructuredGrid> grid;
    addPoints(mesh, grid);
    addCells(mesh, grid);
    addFields(fields, grid);
    addNotes(fields.notes, grid->GetFieldData());
    return gridBytes(file, grid, messages);
}

void writeResult(const std::string& file, const CellMesh& mesh, const ResultFields& fields) {
    writeWholeFile(file, resultBytes(file, mesh, fields));
}

}  // namespace weldline
