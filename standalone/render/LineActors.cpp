#include "LineActors.h"

#include <vtkCellArray.h>
#include <vtkGlyph3D.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkSphereSource.h>
#include <vtkTubeFilter.h>
#include <vtkUnsignedCharArray.h>

#include <cmath>

namespace weldline {

namespace {

// Points with a colour each.
class ColouredPoints {
  public:
    ColouredPoints() {
        m_points->SetDataTypeToDouble();
        m_colours->SetNumberOfComponents(3);
    }

    vtkIdType add(Vec3 place, double angle) {
        const Colour colour = angleColour(angle);
        m_colours->InsertNextTuple3(std::round(255.0 * colour.red),
                                    std::round(255.0 * colour.green),
                                    std::round(255.0 * colour.blue));
        return m_points->InsertNextPoint(place.x, place.y, place.z);
    }

    void putInto(vtkPolyData* data) const {
        data->SetPoints(m_points);
        data->GetPointData()->SetScalars(m_colours);
    }

  private:
    vtkNew<vtkPoints> m_points;
    vtkNew<vtkUnsignedCharArray> m_colours;
};

// Polylines; a tube needs neighbours that differ.
vtkSmartPointer<vtkPolyData> polylines(const std::vector<LineCurve>& curves) {
    ColouredPoints points;
    vtkNew<vtkCellArray> cells;
    std::vector<vtkIdType> ids;
    for (const LineCurve& curve : curves) {
        ids.clear();
        const std::size_t count = curve.points.size();
        Vec3 before;
        for (std::size_t i = 0; i < count + (curve.isClosed ? 1 : 0); ++i) {
            const Vec3 place = curve.points[i % count];
            if (i > 0 && norm(place - before) == 0.0) continue;
            ids.push_back(points.add(place, curve.angle[i % count]));
            before = place;
        }
        if (ids.size() > 1) cells->InsertNextCell(static_cast<vtkIdType>(ids.size()), ids.data());
    }
    auto data = vtkSmartPointer<vtkPolyData>::New();
    points.putInto(data);
    data->SetLines(cells);
    return data;
}

// Where tubes end, or turn.
vtkSmartPointer<vtkPolyData> joints(const std::vector<LineCurve>& curves) {
    ColouredPoints points;
    for (const LineCurve& curve : curves)
        for (std::size_t i = 0; i < curve.points.size(); ++i)
            points.add(curve.points[i], curve.angle[i]);
    auto data = vtkSmartPointer<vtkPolyData>::New();
    points.putInto(data);
    return data;
}

constexpr int sides = 20;

vtkSmartPointer<vtkPolyDataMapper> tubes(vtkPolyData* lines, double radius) {
    vtkNew<vtkTubeFilter> tube;
    tube->SetInputData(lines);
    tube->SetRadius(radius);
    tube->SetNumberOfSides(sides);
    auto mapper = vtkSmartPointer<vtkPolyDataMapper>::New();
    mapper->SetInputConnection(tube->GetOutputPort());
    return mapper;
}

vtkSmartPointer<vtkPolyDataMapper> balls(vtkPolyData* points, double radius) {
    vtkNew<vtkSphereSource> ball;
    ball->SetRadius(radius);
    ball->SetThetaResolution(sides);
    ball->SetPhiResolution(sides / 2);
    vtkNew<vtkGlyph3D> glyphs;
    glyphs->SetInputData(points);
    glyphs->SetSourceConnection(ball->GetOutputPort());
    glyphs->SetScaleModeToDataScalingOff();
    glyphs->SetColorModeToColorByScalar();
    auto mapper = vtkSmartPointer<vtkPolyDataMapper>::New();
    mapper->SetInputConnection(glyphs->GetOutputPort());
    return mapper;
}

vtkSmartPointer<vtkActor> lineActor(vtkPolyDataMapper* mapper) {
    auto actor = vtkSmartPointer<vtkActor>::New();
    actor->SetMapper(mapper);
    actor->GetProperty()->SetInterpolationToPhong();
    actor->GetProperty()->SetAmbient(0.55);
    actor->GetProperty()->SetDiffuse(0.45);
    return actor;
}

vtkSmartPointer<vtkActor> haloActor(vtkPolyDataMapper* mapper, Colour colour) {
    mapper->ScalarVisibilityOff();
    auto actor = vtkSmartPointer<vtkActor>::New();
    actor->SetMapper(mapper);
    actor->GetProperty()->SetColor(colour.red, colour.green, colour.blue);
    actor->GetProperty()->LightingOff();
    actor->GetProperty()->FrontfaceCullingOn();
    return actor;
}

}  // namespace

std::vector<vtkSmartPointer<vtkActor>> lineActors(const std::vector<LineCurve>& curves,
                                                  const Palette& palette, TubeRadii radii) {
    if (curves.empty()) return {};
    const vtkSmartPointer<vtkPolyData> lines = polylines(curves);
    const vtkSmartPointer<vtkPolyData> points = joints(curves);
    return {lineActor(tubes(lines, radii.line)), lineActor(balls(points, radii.line)),
            haloActor(tubes(lines, radii.halo), palette.halo),
            haloActor(balls(points, radii.halo), palette.halo)};
}

}  // namespace weldline
