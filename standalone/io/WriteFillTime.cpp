#include "WriteFillTime.h"

#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkDoubleArray.h>
#include <vtkFieldData.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkStringArray.h>
#include <vtkUnstructuredGrid.h>

#include <limits>

#include "GridBytes.h"
#include "base/AtomicFile.h"

namespace weldline {
namespace {

int typeOf(std::size_t corners) {
    if (corners == 3) {
        return VTK_TRIANGLE;
    }
    return corners == 4 ? VTK_QUAD : VTK_POLYGON;
}

void addPatchFaces(const std::vector<Patch>& patches, vtkUnstructuredGrid* grid,
                   vtkIntArray* patchOfCell) {
    std::vector<vtkIdType> nodes;
    for (std::size_t p = 0; p < patches.size(); ++p) {
        for (int f = 0; f < patches[p].faces.count(); ++f) {
            nodes.assign(patches[p].faces[f].begin(), patches[p].faces[f].end());
            grid->InsertNextCell(typeOf(nodes.size()), static_cast<vtkIdType>(nodes.size()),
                                 nodes.data());
            patchOfCell->InsertNextValue(static_cast<int>(p));
        }
    }
}

}  // namespace

void writeFillTime(const std::string& file, const CellMesh& mesh, const std::vector<Patch>& patches,
                   const std::vector<double>& fillTime) {
    const VtkMessages messages;
    vtkNew<vtkUnstructuredGrid> grid;
    addMesh(mesh, grid);
    vtkNew<vtkIntArray> patchOfCell;
    patchOfCell->SetName("PatchId");
    for (int c = 0; c < mesh.cellCount(); ++c) {
        patchOfCell->InsertNextValue(-1);
    }
    addPatchFaces(patches, grid, patchOfCell);
    vtkNew<vtkDoubleArray> times;
    times->SetName("FillTime");
    for (vtkIdType c = 0; c < grid->GetNumberOfCells(); ++c) {
        const bool isVolume = c < mesh.cellCount();
        times->InsertNextValue(isVolume ? fillTime[static_cast<std::size_t>(c)]
                                        : std::numeric_limits<double>::quiet_NaN());
    }
    grid->GetCellData()->AddArray(times);
    if (!patches.empty()) {
        vtkNew<vtkStringArray> names;
        names->SetName("PatchNames");
        for (const Patch& patch : patches) {
            names->InsertNextValue(patch.name);
        }
        grid->GetCellData()->AddArray(patchOfCell);
        grid->GetFieldData()->AddArray(names);
    }
    writeWholeFile(file, gridBytes(file, grid, messages));
}

}  // namespace weldline
