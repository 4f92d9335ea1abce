"""Draws a result of `weldline analyze`: the part in bands of fill time, weld nodes by meeting angle.

Usage: xvfb-run /usr/bin/python3 docs/pictures/draw_result.py RESULT.vtu PICTURE.png
Needs the Debian packages python3-vtk9 and xvfb; only the documentation's pictures are made with it.
"""

import sys

import vtk

WIDTH, HEIGHT = 1400, 700


def lookup_table(low, high, colours):
    """Colours spread evenly from low to high."""
    transfer = vtk.vtkColorTransferFunction()
    for i, (r, g, b) in enumerate(colours):
        transfer.AddRGBPoint(low + (high - low) * i / (len(colours) - 1), r, g, b)
    return transfer


def scalar_bar(title, table, x):
    bar = vtk.vtkScalarBarActor()
    bar.SetTitle(title + "\n ")
    bar.SetLookupTable(table)
    bar.SetOrientationToHorizontal()
    bar.SetPosition(x, 0.03)
    bar.SetPosition2(0.38, 0.14)
    bar.SetNumberOfLabels(5)
    bar.SetLabelFormat("%.3g")
    bar.UnconstrainedFontSizeOn()
    for text in (bar.GetTitleTextProperty(), bar.GetLabelTextProperty()):
        text.SetColor(0.1, 0.1, 0.1)
        text.SetFontSize(18)
        text.ItalicOff()
        text.ShadowOff()
        text.BoldOff()
    return bar


def part_actor(grid, table):
    surface = vtk.vtkDataSetSurfaceFilter()
    surface.SetInputData(grid)
    mapper = vtk.vtkPolyDataMapper()
    mapper.SetInputConnection(surface.GetOutputPort())
    mapper.SetScalarModeToUseCellFieldData()
    mapper.SelectColorArray("FillTime")
    mapper.SetLookupTable(table)
    actor = vtk.vtkActor()
    actor.SetMapper(mapper)
    actor.GetProperty().SetAmbient(0.55)
    actor.GetProperty().SetDiffuse(0.45)
    return actor


def weld_actor(grid, table):
    nodes = vtk.vtkThresholdPoints()
    nodes.SetInputData(grid)
    nodes.ThresholdByLower(179.999)
    nodes.SetInputArrayToProcess(0, 0, 0, vtk.vtkDataObject.FIELD_ASSOCIATION_POINTS, "MeetingAngle")
    sphere = vtk.vtkSphereSource()
    sphere.SetRadius(grid.GetLength() / 130)
    sphere.SetThetaResolution(16)
    sphere.SetPhiResolution(12)
    glyphs = vtk.vtkGlyph3D()
    glyphs.SetInputConnection(nodes.GetOutputPort())
    glyphs.SetSourceConnection(sphere.GetOutputPort())
    glyphs.ScalingOff()
    mapper = vtk.vtkPolyDataMapper()
    mapper.SetInputConnection(glyphs.GetOutputPort())
    mapper.SetScalarModeToUsePointFieldData()
    mapper.SelectColorArray("MeetingAngle")
    mapper.SetLookupTable(table)
    actor = vtk.vtkActor()
    actor.SetMapper(mapper)
    return actor


def main(result, picture):
    reader = vtk.vtkXMLUnstructuredGridReader()
    reader.SetFileName(result)
    reader.Update()
    grid = reader.GetOutput()
    times = grid.GetCellData().GetArray("FillTime").GetRange()
    grey_blue = [(0.93, 0.95, 0.97), (0.72, 0.81, 0.90), (0.45, 0.60, 0.76), (0.25, 0.38, 0.55)]
    red_yellow = [(0.60, 0.0, 0.10), (0.90, 0.30, 0.10), (0.99, 0.75, 0.25), (1.0, 0.95, 0.6)]
    time_table = lookup_table(times[0], times[1], grey_blue)
    angle_table = lookup_table(0.0, 135.0, red_yellow)

    renderer = vtk.vtkRenderer()
    renderer.SetBackground(1, 1, 1)
    renderer.AddActor(part_actor(grid, time_table))
    renderer.AddActor(weld_actor(grid, angle_table))
    renderer.AddViewProp(scalar_bar("fill time (s)", time_table, 0.08))
    renderer.AddViewProp(scalar_bar("meeting angle (degrees)", angle_table, 0.54))
    window = vtk.vtkRenderWindow()
    window.SetOffScreenRendering(1)
    window.SetSize(WIDTH, HEIGHT)
    window.SetMultiSamples(8)
    window.AddRenderer(renderer)
    camera = renderer.GetActiveCamera()
    camera.ParallelProjectionOn()
    renderer.ResetCamera()
    camera.Elevation(-28)
    x0, x1, y0, y1, _, _ = grid.GetBounds()
    camera.SetParallelScale(max(0.66 * (y1 - y0), 0.56 * (x1 - x0) * HEIGHT / WIDTH))
    camera.SetWindowCenter(0.0, -0.16)
    window.Render()

    image = vtk.vtkWindowToImageFilter()
    image.SetInput(window)
    image.ReadFrontBufferOff()
    writer = vtk.vtkPNGWriter()
    writer.SetFileName(picture)
    writer.SetInputConnection(image.GetOutputPort())
    writer.Write()


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
