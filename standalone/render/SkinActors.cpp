#include "SkinActors.h"

#include <vtkCellArray.h>
#include <vtkFloatArray.h>
#include <vtkLookupTable.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>

#include "CornerNormals.h"

namespace weldline {

namespace {

// The triangles that the melt reached, or the others. Every corner is a point of its own, because
// normals differ on the two sides of an edge.
vtkSmartPointer<vtkPolyData> triangles(const Skin& skin, bool reached) {
    const std::vector<std::array<Vec3, 3>> directions = cornerNormals(skin);
    vtkNew<vtkPoints> points;
    points->SetDataTypeToDouble();
    vtkNew<vtkFloatArray> normals;
    normals->SetNumberOfComponents(3);
    vtkNew<vtkFloatArray> times;
    vtkNew<vtkCellArray> cells;
    for (std::size_t t = 0; t < skin.triangles.size(); ++t) {
        if (skin.isReached[t] != reached) continue;
        cells->InsertNextCell(3);
        for (std::size_t c = 0; c < 3; ++c) {
            const int corner = skin.triangles[t][c];
            const Vec3 place = skin.points[corner];
            const Vec3 normal = directions[t][c];
            cells->InsertCellPoint(points->InsertNextPoint(place.x, place.y, place.z));
            normals->InsertNextTuple3(normal.x, normal.y, normal.z);
            times->InsertNextValue(skin.time[corner]);
        }
    }
    auto data = vtkSmartPointer<vtkPolyData>::New();
    data->SetPoints(points);
    data->SetPolys(cells);
    data->GetPointData()->SetNormals(normals);
    data->GetPointData()->SetScalars(times);
    return data;
}

vtkSmartPointer<vtkLookupTable> tableOf(const TimeBands& bands) {
    auto table = vtkSmartPointer<vtkLookupTable>::New();
    table->SetNumberOfTableValues(bands.count());
    for (int b = 0; b < bands.count(); ++b) {
        const Colour colour = timeColour((b + 0.5) / bands.count());
        table->SetTableValue(b, colour.red, colour.green, colour.blue);
    }
    // All of one time: its one band needs a width.
    const double widening = bands.high() > bands.low() ? 0.0 : 1.0;
    table->SetTableRange(bands.low() - widening, bands.high() + widening);
    return table;
}

vtkSmartPointer<vtkActor> litActor(vtkPolyDataMapper* mapper, Colour colour) {
    auto actor = vtkSmartPointer<vtkActor>::New();
    actor->SetMapper(mapper);
    vtkProperty* property = actor->GetProperty();
    property->SetColor(colour.red, colour.green, colour.blue);
    property->SetInterpolationToPhong();
    property->SetAmbient(0.62);
    property->SetDiffuse(0.40);
    property->SetSpecular(0.0);
    return actor;
}

}  // namespace

std::vector<vtkSmartPointer<vtkActor>> skinActors(const PictureScene& scene,
                                                  const Palette& palette) {
    vtkNew<vtkPolyDataMapper> reached;
    reached->SetInputData(triangles(scene.skin, true));
    if (scene.bands) {
        const vtkSmartPointer<vtkLookupTable> table = tableOf(*scene.bands);
        reached->SetLookupTable(table);
        reached->SetScalarRange(table->GetTableRange());
        // The time is interpolated, not its colour: so bands have sharp edges within polygons.
        reached->InterpolateScalarsBeforeMappingOn();
    } else {
        reached->ScalarVisibilityOff();
    }
    vtkNew<vtkPolyDataMapper> others;
    others->SetInputData(triangles(scene.skin, false));
    others->ScalarVisibilityOff();
    return {litActor(reached, palette.part), litActor(others, palette.notReached)};
}

vtkSmartPointer<vtkActor> rimActor(const Skin& skin, const Palette& palette, double width) {
    vtkNew<vtkPoints> points;
    points->SetDataTypeToDouble();
    vtkNew<vtkCellArray> cells;
    for (const std::array<int, 2>& rim : skin.edges) {
        cells->InsertNextCell(2);
        for (const int end : rim) {
            const Vec3 place = skin.points[end];
            cells->InsertCellPoint(points->InsertNextPoint(place.x, place.y, place.z));
        }
    }
    vtkNew<vtkPolyData> data;
    data->SetPoints(points);
    data->SetLines(cells);
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputData(data);
    auto actor = vtkSmartPointer<vtkActor>::New();
    actor->SetMapper(mapper);
    actor->GetProperty()->SetColor(palette.rim.red, palette.rim.green, palette.rim.blue);
    actor->GetProperty()->SetLineWidth(static_cast<float>(width));
    actor->GetProperty()->LightingOff();
    return actor;
}

}  // namespace weldline
