#include "CellGeometry.h"

namespace weldline {

CellGeometry cellGeometry(const FvMesh& mesh, int cell, std::span<const int> faces) {
    CellGeometry result;
    Vec3 middle;
    const auto outward = [&](int face) {
        const auto f = static_cast<std::size_t>(face);
        return mesh.owner[f] == cell ? mesh.faceArea[f] : -1.0 * mesh.faceArea[f];
    };
    for (const int face : faces) {
        middle = middle + mesh.faceCentre[static_cast<std::size_t>(face)];
        result.gap = result.gap + outward(face);
        result.surface += norm(outward(face));
    }
    middle = (1.0 / static_cast<double>(faces.size())) * middle;

    Vec3 moment;  // about the middle
    for (const int face : faces) {
        // The centre of a pyramid lies at three quarters of the way from its tip to its base.
        const Vec3 height = mesh.faceCentre[static_cast<std::size_t>(face)] - middle;
        const double pyramid = dot(outward(face), height) / 3.0;
        result.volume += pyramid;
        moment = moment + (0.75 * pyramid) * height;
    }
    result.centre = middle + (1.0 / result.volume) * moment;
    return result;
}

double weightOfNeighbour(Vec3 faceCentre, Vec3 faceArea, Vec3 nearCell, Vec3 farCell) {
    // The length of the area vector cancels in the quotient.
    const double near = std::abs(dot(faceArea, faceCentre - nearCell));
    const double far = std::abs(dot(faceArea, faceCentre - farCell));
    const double sum = near + far;
    return sum > 0.0 ? near / sum : 0.5;
}

}  // namespace weldline
