#include "Lettering.h"

#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkStdString.h>
#include <vtkTextProperty.h>
#include <vtkTextRenderer.h>

#include <array>
#include <cmath>

namespace weldline {

namespace {

// At this resolution a point is a pixel.
constexpr int pointsPerInch = 72;

vtkNew<vtkTextProperty> propertyOf(const TextStyle& style) {
    vtkNew<vtkTextProperty> property;
    property->SetFontFamilyToArial();
    property->SetFontSize(static_cast<int>(std::lround(style.size)));
    property->SetBold(style.isBold ? 1 : 0);
    property->SetItalic(0);
    property->SetShadow(0);
    property->SetColor(style.colour.red, style.colour.green, style.colour.blue);
    property->SetVerticalJustificationToBottom();
    if (style.align == TextAlign::Left) property->SetJustificationToLeft();
    if (style.align == TextAlign::Centre) property->SetJustificationToCentered();
    if (style.align == TextAlign::Right) property->SetJustificationToRight();
    return property;
}

// A letter of several bytes starts with a byte that says so; the others look like this.
bool isWithinLetter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0u) == 0x80u;
}

// Bytes of the letter that starts with this one, by UTF-8; 0: none does.
std::size_t letterLength(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte < 0x20u || byte == 0x7fu) return 0;
    if (byte < 0x80u) return 1;
    if (byte >= 0xc2u && byte < 0xe0u) return 2;
    if (byte >= 0xe0u && byte < 0xf0u) return 3;
    return byte >= 0xf0u && byte < 0xf5u ? 4 : 0;
}

}  // namespace

std::string printable(const std::string& text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = letterLength(text[at]);
        std::size_t whole = length > 0 ? 1 : 0;
        while (whole > 0 && whole < length && at + whole < text.size() &&
               isWithinLetter(text[at + whole]))
            ++whole;
        const bool isLetter = whole > 0 && whole == length;
        result += isLetter ? text.substr(at, length) : "?";
        at += isLetter ? length : 1;
    }
    return result;
}

void writeText(Canvas& canvas, const std::string& text, double x, double y,
               const TextStyle& style) {
    const vtkNew<vtkTextProperty> property = propertyOf(style);
    vtkNew<vtkImageData> image;
    std::array<int, 2> size{};
    // On purpose not the backend of VTK's choice: a "$" in a file name starts no formula.
    if (text.empty() || !vtkTextRenderer::GetInstance()->RenderString(
                            property, vtkStdString(text), image, size.data(), pointsPerInch,
                            vtkTextRenderer::FreeType))
        return;
    std::array<int, 6> extent{};
    image->GetExtent(extent.data());
    const int left = static_cast<int>(std::lround(x));
    const int foot = static_cast<int>(std::lround(y));
    for (int row = extent[2]; row <= extent[3]; ++row)
        for (int column = extent[0]; column <= extent[1]; ++column) {
            const auto* pixel =
                static_cast<const unsigned char*>(image->GetScalarPointer(column, row, 0));
            canvas.blend(left + column, foot - row, style.colour, pixel[3] / 255.0);
        }
}

double textWidth(const std::string& text, const TextStyle& style) {
    const vtkNew<vtkTextProperty> property = propertyOf(style);
    std::array<int, 4> box{};
    vtkTextRenderer::GetInstance()->GetBoundingBox(property, vtkStdString(text), box.data(),
                                                   pointsPerInch, vtkTextRenderer::FreeType);
    return box[1] - box[0] + 1.0;
}

std::string fitted(const std::string& text, double width, const TextStyle& style) {
    std::string left = text.substr(0, text.size() / 2);
    std::string right = text.substr(text.size() / 2);
    std::string whole = text;
    while (!(left.empty() && right.empty()) && textWidth(whole, style) > width) {
        while (!left.empty() && isWithinLetter(left.back())) left.pop_back();
        if (!left.empty()) left.pop_back();
        if (!right.empty()) right.erase(0, 1);
        while (!right.empty() && isWithinLetter(right.front())) right.erase(0, 1);
        whole = left;
        whole.append("...").append(right);
    }
    return whole;
}

}  // namespace weldline
