// Writes a mesh of the measurements with its fill time as a .vtu file.

#include <vtkNew.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <iostream>

#include "ReadChoice.h"
#include "VtkGrid.h"
#include "base/Errors.h"

using namespace weldline::performance;

int main(int argc, char** argv) {
    try {
        if (argc < 2) throw weldline::UsageError("the file is missing");
        const MeshChoice choice = readChoice(argc - 2, argv + 2);
        vtkNew<vtkUnstructuredGrid> grid;
        {
            const weldline::CellMesh cells = boxCells(choice);
            const weldline::FvMesh mesh = weldline::buildFvMesh(cells);
            fillGrid(cells, fill(mesh, choice.edge).fillTime.data(), grid);
        }
        vtkNew<vtkXMLUnstructuredGridWriter> writer;
        writer->SetFileName(argv[1]);
        writer->SetInputData(grid);
        return writer->Write() == 1 ? 0 : 1;
    } catch (const weldline::UsageError& error) {
        std::cerr << error.what() << "\nusage: weldline_write_case FILE.vtu [MESH]\n"
                  << kChoiceUsage;
        return 2;
    }
}
