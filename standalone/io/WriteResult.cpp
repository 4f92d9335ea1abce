#include "WriteResult.h"

#include <vtkCellData.h>
#include <vtkDoubleArray.h>
#include <vtkFieldData.h>
#include <vtkFloatArray.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkStringArray.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>

#include "GridBytes.h"
#include "VtkMessages.h"
#include "base/AtomicFile.h"

namespace weldline {
namespace {

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

}  // namespace

std::string resultBytes(const std::string& file, const CellMesh& mesh, const ResultFields& fields) {
    const VtkMessages messages;
    vtkNew<vtkUnstructuredGrid> grid;
    addMesh(mesh, grid);
    addFields(fields, grid);
    addNotes(fields.notes, grid->GetFieldData());
    return gridBytes(file, grid, messages);
}

void writeResult(const std::string& file, const CellMesh& mesh, const ResultFields& fields) {
    writeWholeFile(file, resultBytes(file, mesh, fields));
}

}  // namespace weldline
