// A gmsh .msh file as a grid: volume elements, surface elements of physical groups as patches, and
// the fields that the elements have at each time, which stay in the file until they are asked for.
#include <vtkCellData.h>
#include <vtkDoubleArray.h>
#include <vtkFieldData.h>
#include <vtkIdList.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkStringArray.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <unordered_map>

#include "GmshMesh.h"
#include "GridCheck.h"
#include "TimeReader.h"

namespace weldline {
namespace {

vtkSmartPointer<vtkUnstructuredGrid> gridOf(const GmshMesh& mesh) {
    auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
    vtkNew<vtkPoints> points;
    points->SetDataTypeToDouble();
    for (const Vec3& p : mesh.points) {
        points->InsertNextPoint(p.x, p.y, p.z);
    }
    grid->SetPoints(points);
    vtkNew<vtkIntArray> patchIds;
    patchIds->SetName("PatchId");
    vtkNew<vtkIdList> nodes;
    for (std::size_t e = 0; e < mesh.elements.size(); ++e) {
        nodes->Reset();
        for (const int node : mesh.nodes[static_cast<int>(e)]) {
            nodes->InsertNextId(node);
        }
        grid->InsertNextCell(mesh.types[e], nodes);
        patchIds->InsertNextValue(mesh.patches[e]);
    }
    if (mesh.patchNames.empty()) {
        return grid;
    }
    grid->GetCellData()->AddArray(patchIds);
    vtkNew<vtkStringArray> names;
    names->SetName("PatchNames");
    for (const std::string& name : mesh.patchNames) {
        names->InsertNextValue(name);
    }
    grid->GetFieldData()->AddArray(names);
    return grid;
}

class GmshReader : public TimeReader {
  public:
    explicit GmshReader(const std::string& file) : cursor_(file) {
        GmshMesh mesh = readGmshMesh(cursor_);
        grid_ = gridOf(mesh);
        checkGrid(file, grid_);
        for (std::size_t e = 0; e < mesh.elements.size(); ++e) {
            cellOf_.emplace(mesh.elements[e], static_cast<vtkIdType>(e));
        }
        data_ = std::move(mesh.data);
        std::set<double> times;
        for (const GmshData& data : data_) {
            times.insert(data.time);
        }
        times_.assign(times.begin(), times.end());
    }

    const std::vector<double>& times() const override { return times_; }

    void readOnly(const std::string& field) override { only_ = field; }

    void read(std::optional<double> time, OpenedDataSet& opened) override {
        vtkNew<vtkUnstructuredGrid> grid;
        grid->ShallowCopy(grid_);
        for (const auto& [name, data] : fieldsAt(time)) {
            addField(*data, grid);
        }
        opened.volumes.push_back({"", grid});
    }

  private:
    // Of each field what it holds at the time. Fields may be written at times of their own, so the
    // last one before counts, too, except in a series, which needs the times as they are.
    std::map<std::string, const GmshData*> fieldsAt(std::optional<double> time) const {
        std::map<std::string, const GmshData*> fields;
        for (const GmshData& data : data_) {
            const bool isWanted =
                only_.empty() ? data.time <= time : data.name == only_ && data.time == time;
            const GmshData*& known = fields[data.name];
            if (isWanted && (known == nullptr || data.time >= known->time)) {
                known = &data;
            }
        }
        std::erase_if(fields, [](const auto& field) { return field.second == nullptr; });
        return fields;
    }

    // Elements without a value have none: NaN.
    void addField(const GmshData& data, vtkUnstructuredGrid* grid) {
        vtkNew<vtkDoubleArray> array;
        array->SetName(data.name.c_str());
        array->SetNumberOfComponents(data.components);
        array->SetNumberOfTuples(grid->GetNumberOfCells());
        array->Fill(std::numeric_limits<double>::quiet_NaN());
        readElementData(cursor_, data, [&](std::int64_t element, const double* values) {
            const auto cell = cellOf_.find(element);
            if (cell != cellOf_.end()) {
                array->SetTuple(cell->second, values);
            }
        });
        grid->GetCellData()->AddArray(array);
    }

    GmshCursor cursor_;
    std::vector<GmshData> data_;
    vtkSmartPointer<vtkUnstructuredGrid> grid_;
    std::unordered_map<std::int64_t, vtkIdType> cellOf_;
    std::vector<double> times_;
    std::string only_;  // the field that is read; empty: all
};

}  // namespace

std::unique_ptr<TimeReader> openGmshFile(const std::string& file) {
    return std::make_unique<GmshReader>(file);
}

}  // namespace weldline
