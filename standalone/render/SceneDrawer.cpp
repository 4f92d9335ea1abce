#include "SceneDrawer.h"

#include <vtkCamera.h>
#include <vtkLight.h>
#include <vtkNew.h>
#include <vtkUnsignedCharArray.h>

#include <algorithm>

#include "LineActors.h"
#include "SceneWindow.h"
#include "SkinActors.h"

namespace weldline {

namespace {

// Samples per pixel along one side: more where a picture is small enough to take them quickly.
int samplesOf(const PictureStyle& style) {
    constexpr double small = 4e6;
    return static_cast<double>(style.width) * style.height <= small ? 3 : 2;
}

void show(const std::vector<vtkSmartPointer<vtkActor>>& actors, bool visible) {
    for (const auto& actor : actors) actor->SetVisibility(visible ? 1 : 0);
}

void addLight(vtkRenderer* renderer, double x, double y, double intensity) {
    vtkNew<vtkLight> light;
    light->SetLightTypeToCameraLight();
    light->SetPosition(x, y, 1.0);
    light->SetFocalPoint(0.0, 0.0, 0.0);
    light->SetIntensity(intensity);
    renderer->AddLight(light);
}

}  // namespace

SceneDrawer::SceneDrawer(const PictureScene& scene, const PictureStyle& style, double pixel,
                         double letter)
    : m_scene(scene),
      m_pixel(pixel),
      m_samples(samplesOf(style)),
      m_seesThrough(style.seesThrough) {
    constexpr int mostSamples = 1536;  // a multiple of 2 and of 3
    m_tile = std::min(mostSamples / m_samples, std::max(style.width, style.height));
    m_window = openWindow(m_tile * m_samples);
    m_renderer = vtkSmartPointer<vtkRenderer>::New();
    m_renderer->SetBackground(0.0, 0.0, 0.0);
    m_renderer->SetBackgroundAlpha(0.0);
    m_window->AddRenderer(m_renderer);
    addLights();

    const Palette palette = paletteOf(style.background);
    const double thickness = std::max(2.0, 0.38 * letter);  // of a line, in pixels
    const TubeRadii radii{0.5 * thickness * pixel,
                          (0.5 * thickness + std::max(0.8, 0.07 * letter)) * pixel};
    const double rimWidth = std::max(0.8, 0.055 * letter);
    m_rimLift = 2.0 * rimWidth * pixel;
    m_lift = m_rimLift + 1.2 * radii.halo;
    m_skin = skinActors(scene, palette);
    m_rims = rimActor(scene.skin, palette, rimWidth * m_samples);
    m_skinLines = lineActors(scene.skinLines, palette, radii);
    m_buriedLines = lineActors(scene.buriedLines, palette, radii);
    if (m_seesThrough) m_innerLines = lineActors(scene.innerLines, palette, radii);
    for (const auto& actors : {m_skin, m_skinLines, m_buriedLines, m_innerLines})
        for (const auto& actor : actors) m_renderer->AddActor(actor);
    m_renderer->AddActor(m_rims);
}

// One light from the left above the viewer, one from the viewer.
void SceneDrawer::addLights() {
    m_renderer->AutomaticLightCreationOff();
    addLight(m_renderer, -0.55, 0.75, 0.62);
    addLight(m_renderer, 0.0, 0.0, 0.50);
}

// Without perspective a step towards the viewer moves nothing in the picture: so lines and edges
// that lie in the skin are lifted out of it.
void SceneDrawer::place(const View& view) {
    const auto lift = [&](vtkActor* actor, double length) {
        const Vec3 step = length * view.towardsViewer;
        actor->SetPosition(step.x, step.y, step.z);
    };
    for (const auto& actors : {m_skinLines, m_buriedLines, m_innerLines})
        for (const auto& actor : actors) lift(actor, m_lift);
    lift(m_rims, m_rimLift);
}

void SceneDrawer::draw(const View& view, const SheetBox& box, Canvas& canvas) {
    place(view);
    show(m_skin, true);
    show({m_rims}, true);
    show(m_skinLines, true);
    show(m_buriedLines, false);
    show(m_innerLines, false);
    drawTiles(view, box, 1.0, canvas);
    if (m_buriedLines.empty() && !m_seesThrough) return;
    constexpr double shine = 0.85;
    show(m_skin, false);
    show({m_rims}, false);
    show(m_skinLines, m_seesThrough);
    show(m_buriedLines, true);
    show(m_innerLines, m_seesThrough);
    drawTiles(view, box, shine, canvas);
}

void SceneDrawer::drawTiles(const View& view, const SheetBox& box, double opacity, Canvas& canvas) {
    const ViewBox seen = boxIn(view, m_scene.skin.points);
    const double depth = norm(seen.size()) + 4.0 * m_lift;
    vtkCamera* camera = m_renderer->GetActiveCamera();
    camera->ParallelProjectionOn();
    camera->SetParallelScale(0.5 * m_tile * m_pixel);
    for (int top = 0; top < box.height; top += m_tile)
        for (int left = 0; left < box.width; left += m_tile) {
            const double x = seen.centre().x + (left + 0.5 * (m_tile - box.width)) * m_pixel;
            const double y = seen.centre().y - (top + 0.5 * (m_tile - box.height)) * m_pixel;
            const Vec3 focus = x * view.right + y * view.up + seen.centre().z * view.towardsViewer;
            const Vec3 eye = focus + depth * view.towardsViewer;
            camera->SetFocalPoint(focus.x, focus.y, focus.z);
            camera->SetPosition(eye.x, eye.y, eye.z);
            camera->SetViewUp(view.up.x, view.up.y, view.up.z);
            camera->SetClippingRange(0.1 * depth, 2.0 * depth);
            drawTile({box.left + left, box.top + top, std::min(m_tile, box.width - left),
                      std::min(m_tile, box.height - top)},
                     opacity, canvas);
        }
}

void SceneDrawer::drawTile(const SheetBox& tile, double opacity, Canvas& canvas) {
    m_window->Render();
    const int side = m_tile * m_samples;
    vtkNew<vtkUnsignedCharArray> bytes;
    m_window->GetRGBACharPixelData(0, 0, side - 1, side - 1, 0, bytes);
    for (int y = 0; y < tile.height; ++y)
        for (int x = 0; x < tile.width; ++x) {
            double red = 0.0;
            double green = 0.0;
            double blue = 0.0;
            double cover = 0.0;
            for (int j = 0; j < m_samples; ++j) {
                // Rows come from the bottom.
                const vtkIdType row = side - 1 - (y * m_samples + j);
                const unsigned char* sample =
                    bytes->GetPointer(4 * (row * side + x * static_cast<vtkIdType>(m_samples)));
                for (int i = 0; i < m_samples; ++i, sample += 4) {
                    red += sample[0] * sample[3];
                    green += sample[1] * sample[3];
                    blue += sample[2] * sample[3];
                    cover += sample[3];
                }
            }
            if (cover == 0.0) continue;
            const double full = 255.0 * cover;
            canvas.blend(tile.left + x, tile.top + y, {red / full, green / full, blue / full},
                         opacity * cover / (255.0 * m_samples * m_samples));
        }
}

}  // namespace weldline
