#include "WriteLines.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkDoubleArray.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkXMLPolyDataWriter.h>

#include <map>

#include "VtkMessages.h"
#include "base/Errors.h"

namespace weldline {
namespace {

enum Place { OnSkin = 0, ThroughPart = 1, Surface = 2 };

template <class Array>
vtkNew<Array> named(const char* name) {
    vtkNew<Array> array;
    array->SetName(name);
    return array;
}

// Gathers points and cells with their values.
class LineGeometry {
  public:
    LineGeometry() {
        points_->SetDataTypeToDouble();
        for (vtkDataArray* array :
             {static_cast<vtkDataArray*>(id_), static_cast<vtkDataArray*>(place_),
              static_cast<vtkDataArray*>(kind_), static_cast<vtkDataArray*>(length_),
              static_cast<vtkDataArray*>(smallest_), static_cast<vtkDataArray*>(mean_)}) {
            data_->GetCellData()->AddArray(array);
        }
        data_->GetPointData()->AddArray(angle_);
        data_->GetPointData()->AddArray(time_);
    }

    void addCurve(const WeldLine& line, const LineCurve& curve, Place place) {
        if (curve.points.size() < 2) {
            return;
        }
        std::vector<vtkIdType> cell;
        for (std::size_t p = 0; p < curve.points.size(); ++p) {
            cell.push_back(addPoint(curve.points[p], curve.angle[p], curve.time[p]));
        }
        if (curve.isClosed) {
            cell.push_back(cell.front());
        }
        lines_->InsertNextCell(static_cast<vtkIdType>(cell.size()), cell.data());
        describe(line, place);
    }

    void addSurface(const std::map<int, const WeldLine*>& lines, const LineMesh& mesh) {
        std::map<int, vtkIdType> pointOf;
        std::vector<vtkIdType> cell;
        for (int s = 0; s < mesh.surface.count(); ++s) {
            const auto corners = mesh.surface[s];
            const auto line = lines.find(mesh.line[static_cast<std::size_t>(corners.front())]);
            if (line == lines.end()) {
                continue;
            }
            cell.clear();
            for (const int corner : corners) {
                const auto at = static_cast<std::size_t>(corner);
                const auto [known, isNew] = pointOf.try_emplace(corner, 0);
                if (isNew) {
                    known->second = addPoint(mesh.points[at], mesh.angle[at], mesh.time[at]);
                }
                cell.push_back(known->second);
            }
            polygons_->InsertNextCell(static_cast<vtkIdType>(cell.size()), cell.data());
            describe(*line->second, Surface);
        }
    }

    vtkPolyData* finish() {
        data_->SetPoints(points_);
        data_->SetLines(lines_);
        data_->SetPolys(polygons_);
        return data_;
    }

  private:
    vtkIdType addPoint(Vec3 x, double angle, double time) {
        angle_->InsertNextValue(angle);
        time_->InsertNextValue(time);
        return points_->InsertNextPoint(x.x, x.y, x.z);
    }

    void describe(const WeldLine& line, Place place) {
        id_->InsertNextValue(line.id);
        place_->InsertNextValue(place);
        kind_->InsertNextValue(line.kind == LineClass::Weld ? 0 : 1);
        length_->InsertNextValue(line.length);
        smallest_->InsertNextValue(line.smallestAngle);
        mean_->InsertNextValue(line.meanAngle);
    }

    vtkNew<vtkPolyData> data_;
    vtkNew<vtkPoints> points_;
    vtkNew<vtkCellArray> lines_;
    vtkNew<vtkCellArray> polygons_;
    vtkNew<vtkIntArray> id_ = named<vtkIntArray>("WeldLine");
    vtkNew<vtkIntArray> place_ = named<vtkIntArray>("Place");
    vtkNew<vtkIntArray> kind_ = named<vtkIntArray>("Class");
    vtkNew<vtkDoubleArray> length_ = named<vtkDoubleArray>("Length");
    vtkNew<vtkDoubleArray> smallest_ = named<vtkDoubleArray>("SmallestAngle");
    vtkNew<vtkDoubleArray> mean_ = named<vtkDoubleArray>("MeanAngle");
    vtkNew<vtkDoubleArray> angle_ = named<vtkDoubleArray>("MeetingAngle");
    vtkNew<vtkDoubleArray> time_ = named<vtkDoubleArray>("FormationTime");
};

}  // namespace

std::string lineBytes(const std::string& file, const WeldLines& lines,
                      const std::vector<LineShape>& shapes, const LineMesh& mesh) {
    const VtkMessages messages;
    std::map<int, const WeldLine*> lineOfId;
    for (const WeldLine& line : lines.lines) {
        lineOfId[line.id] = &line;
    }
    LineGeometry geometry;
    for (const LineShape& shape : shapes) {
        const auto line = lineOfId.find(shape.id);
        if (line == lineOfId.end()) {
            continue;
        }
        for (const LineCurve& curve : shape.skin) {
            geometry.addCurve(*line->second, curve, OnSkin);
        }
        for (const LineCurve& curve : shape.path) {
            geometry.addCurve(*line->second, curve, ThroughPart);
        }
    }
    geometry.addSurface(lineOfId, mesh);

    vtkNew<vtkXMLPolyDataWriter> writer;
    writer->SetInputData(geometry.finish());
    writer->SetDataModeToAppended();
    writer->EncodeAppendedDataOff();
    writer->SetHeaderTypeToUInt64();
    writer->WriteToOutputStringOn();
    if (writer->Write() == 0 || messages.hasError()) {
        throw RunError("cannot write '" + file + "': " + messages.firstError());
    }
    return writer->GetOutputString();
}

}  // namespace weldline
