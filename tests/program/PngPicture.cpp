#include "PngPicture.h"

#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPNGReader.h>

namespace weldline::test {

std::array<int, 4> PngPicture::at(int x, int y) const {
    const auto begin = static_cast<std::size_t>(parts * (y * width + x));
    std::array<int, 4> pixel{0, 0, 0, 255};
    for (int p = 0; p < parts; ++p) pixel[p] = bytes[begin + p];
    return pixel;
}

PngPicture readPng(const std::string& file) {
    vtkNew<vtkPNGReader> reader;
    reader->SetFileName(file.c_str());
    reader->Update();
    vtkImageData* image = reader->GetOutput();
    PngPicture picture;
    picture.width = image->GetDimensions()[0];
    picture.height = image->GetDimensions()[1];
    picture.parts = image->GetNumberOfScalarComponents();
    for (int y = picture.height - 1; y >= 0; --y) {
        const auto* row = static_cast<const unsigned char*>(image->GetScalarPointer(0, y, 0));
        picture.bytes.insert(picture.bytes.end(), row, row + picture.width * picture.parts);
    }
    return picture;
}

}  // namespace weldline::test
