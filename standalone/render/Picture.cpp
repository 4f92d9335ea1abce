#include "Picture.h"

#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPNGWriter.h>
#include <vtkPointData.h>
#include <vtkUnsignedCharArray.h>

#include <algorithm>

#include "Canvas.h"
#include "ChildProcess.h"
#include "Legends.h"
#include "Palette.h"
#include "SceneDrawer.h"
#include "SheetLayout.h"
#include "VtkThreads.h"

namespace weldline {

namespace {

// Length that a pixel stands for, the same in all views, so that each part fits into its box.
double pixelLength(const PictureScene& scene, const std::vector<View>& views,
                   const std::vector<SheetBox>& boxes) {
    constexpr double filled = 0.93;  // of a box; the rest is margin
    double length = 0.0;
    for (std::size_t v = 0; v < views.size(); ++v) {
        const Vec3 size = boxIn(views[v], scene.skin.points).size();
        length = std::max(
            {length, size.x / (filled * boxes[v].width), size.y / (filled * boxes[v].height)});
    }
    return length > 0.0 ? length : 1.0;
}

// Where the parts stand: above the directions of the axes.
std::vector<SheetBox> partBoxes(const SheetLayout& layout) {
    constexpr double axesLines = 2.6;  // most of their height; parts seldom fill their corner
    std::vector<SheetBox> boxes = layout.views;
    for (SheetBox& box : boxes)
        box.height = std::max(1, box.height - static_cast<int>(axesLines * layout.letter));
    return boxes;
}

Canvas drawSheet(const PictureScene& scene, const PictureStyle& style) {
    const bool hasLines =
        !scene.skinLines.empty() || !scene.buriedLines.empty() || !scene.innerLines.empty();
    const SheetLayout layout =
        layOut(style.width, style.height,
               {static_cast<int>(style.views.size()), scene.bands.has_value(), hasLines});
    const Palette palette = paletteOf(style.background);
    const std::vector<SheetBox> boxes = partBoxes(layout);
    const double pixel = pixelLength(scene, style.views, boxes);
    Canvas canvas(style.width, style.height, palette.background, palette.opacity);
    SceneDrawer drawer(scene, style, pixel, layout.letter);
    for (std::size_t v = 0; v < style.views.size(); ++v)
        drawer.draw(style.views[v], boxes[v], canvas);
    if (layout.letter == 0.0) return canvas;
    for (std::size_t v = 0; v < style.views.size(); ++v)
        drawViewNotes(canvas, layout.views[v], layout.letter, palette, style.views[v]);
    drawCaption(canvas, layout, palette, scene.title, scene.subtitle);
    const std::vector<bool>& reached = scene.skin.isReached;
    if (scene.bands)
        drawTimeLegend(canvas, layout, palette, *scene.bands,
                       std::find(reached.begin(), reached.end(), false) != reached.end());
    if (hasLines) drawAngleLegend(canvas, layout, palette);
    drawScaleBar(canvas, layout, palette, pixel);
    return canvas;
}

// Red, green and blue of each pixel; its opacity only where the background lets something through.
std::string pngBytes(const Canvas& canvas, bool isOpaque) {
    const std::vector<std::uint8_t>& bytes = canvas.bytes();
    const int parts = isOpaque ? 3 : 4;
    vtkNew<vtkUnsignedCharArray> pixels;
    pixels->SetNumberOfComponents(parts);
    pixels->SetNumberOfTuples(static_cast<vtkIdType>(bytes.size() / 4));
    unsigned char* to = pixels->GetPointer(0);
    for (std::size_t at = 0; at < bytes.size(); at += 4, to += parts)
        std::copy_n(bytes.data() + at, parts, to);
    vtkNew<vtkImageData> image;
    image->SetDimensions(canvas.width(), canvas.height(), 1);
    image->GetPointData()->SetScalars(pixels);
    vtkNew<vtkPNGWriter> writer;
    writer->SetInputData(image);
    writer->WriteToMemoryOn();
    writer->Write();
    vtkUnsignedCharArray* file = writer->GetResult();
    return {reinterpret_cast<const char*>(file->GetPointer(0)),
            static_cast<std::size_t>(file->GetNumberOfTuples())};
}

}  // namespace

std::string pictureBytes(const PictureScene& scene, const PictureStyle& style) {
    return bytesFromChild([&] {
        keepVtkInOneThread();
        return pngBytes(drawSheet(scene, style), style.background != Background::Transparent);
    });
}

}  // namespace weldline
