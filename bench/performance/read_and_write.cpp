// VTK's share of what the program does: reads a .vtu file and writes the same grid again.

#include <vtkNew.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <iostream>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: weldline_read_and_write FROM.vtu TO.vtu\n";
        return 2;
    }
    vtkNew<vtkXMLUnstructuredGridReader> reader;
    reader->SetFileName(argv[1]);
    vtkNew<vtkXMLUnstructuredGridWriter> writer;
    writer->SetFileName(argv[2]);
    writer->SetInputConnection(reader->GetOutputPort());
    return writer->Write() == 1 ? 0 : 1;
}
