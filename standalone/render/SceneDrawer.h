#pragma once

#include <vtkActor.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkSmartPointer.h>

#include <vector>

#include "Canvas.h"
#include "Palette.h"
#include "PictureScene.h"
#include "SheetLayout.h"

namespace weldline {

// Draws the part and its weld lines by OpenGL, tile by tile, so that a picture may be larger than
// what OpenGL draws at once. Every pixel is the mean of several samples.
class SceneDrawer {
  public:
    // `pixel` is the length in the data set's unit that a pixel of the sheet stands for, `letter`
    // the height of a line of text in pixels: lines are as thick as letters ask for. Throws
    // RunError where nothing can be drawn.
    SceneDrawer(const PictureScene& scene, const PictureStyle& style, double pixel, double letter);

    // The middle of the part's box, as seen in the view, comes to the middle of the sheet's box.
    void draw(const View& view, const SheetBox& box, Canvas& canvas);

  private:
    void addLights();
    void place(const View& view);
    void drawTiles(const View& view, const SheetBox& box, double opacity, Canvas& canvas);
    void drawTile(const SheetBox& tile, double opacity, Canvas& canvas);

    const PictureScene& m_scene;
    double m_pixel;
    double m_lift = 0.0;     // of the lines towards the viewer
    double m_rimLift = 0.0;  // of the edges
    int m_samples;           // per pixel, along one side
    int m_tile = 0;          // side of the window in pixels of the sheet
    bool m_seesThrough;
    vtkSmartPointer<vtkRenderWindow> m_window;
    vtkSmartPointer<vtkRenderer> m_renderer;
    std::vector<vtkSmartPointer<vtkActor>> m_skin;
    vtkSmartPointer<vtkActor> m_rims;
    std::vector<vtkSmartPointer<vtkActor>> m_skinLines;
    std::vector<vtkSmartPointer<vtkActor>> m_buriedLines;
    std::vector<vtkSmartPointer<vtkActor>> m_innerLines;
};

}  // namespace weldline
